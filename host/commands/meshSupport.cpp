#include "commands/meshSupport.h"

#include <algorithm>
#include <utility>

#include "graph/instances.h"
#include "nodes/meshNode.h"
#include "nodes/sets.h"

namespace host::commands {

namespace {

/// The component without the elements from `count` on.
graph::Component clipped(graph::Component component, int count) {
    const int runs = component.runCount();
    if (runs > 0 && component.run(runs - 1).last >= count)
        component.remove(graph::Component(component.kind(), {count, component.run(runs - 1).last}));
    return component;
}

}  // namespace

Found<graph::NodeRef> meshShapeOf(const graph::Graph& graph, const graph::NodeRef& node) {
    const graph::NodeRef shape = nodes::shapeOf(graph, node);
    if (shape == nullptr || !shape->isA("mesh"))
        return {nullptr, graph.uniqueName(*node) + " is no polygonal object."};
    return {shape, {}};
}

Found<graph::NodeRef> findMeshShape(const graph::Graph& graph, const std::string& name) {
    const Found<graph::NodeRef> node = findOneNode(graph, name);
    return node.ok() ? meshShapeOf(graph, node.value) : node;
}

Found<nodes::MeshPtr> evaluatedMesh(graph::Graph& graph, const graph::NodeRef& shape) {
    nodes::MeshPtr mesh = nodes::meshOf(graph, shape);
    if (mesh == nullptr) return {nullptr, graph.uniqueName(*shape) + " has no geometry."};
    return {std::move(mesh), {}};
}

geometry::Mesh meshInWorld(graph::Graph& graph, const Placed& shape, const geometry::Mesh& mesh) {
    return geometry::transformed(mesh, worldMatrix(graph, shape));
}

Found<std::vector<graph::SelectionItem>> placedMeshObjects(CommandContext& context,
                                                           const ParsedArguments& arguments,
                                                           const std::string& command) {
    Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return items;
    graph::InstanceNumbers numbers;
    graph::Selection joined;
    for (const graph::SelectionItem& item : items.value) {
        const Found<graph::NodeRef> shape = meshShapeOf(context.graph, item.node);
        if (item.plug || !shape.ok())
            return {{}, command + ": " + graph::itemName(context.graph, item) + " is no polygonal object."};
        graph::SelectionItem entry{shape.value, {}, item.component, item.path};
        if (shape.value != item.node)
            entry.path = numbers.childOf({item.node.get(), item.path}, *shape.value).number;
        if (entry.component) {
            const graph::ComponentKind kind = entry.component->kind();
            entry.component = clipped(*entry.component, context.graph.componentCount(shape.value, kind));
            if (entry.component->empty()) continue;
        }
        joined.add(entry);
    }
    if (joined.empty()) return {{}, command + ": Nothing is currently selected."};
    return {joined.items(), {}};
}

Found<std::vector<graph::SelectionItem>> meshObjects(CommandContext& context,
                                                     const ParsedArguments& arguments,
                                                     const std::string& command) {
    Found<std::vector<graph::SelectionItem>> items = placedMeshObjects(context, arguments, command);
    if (!context.graph.hasInstances()) return items;
    graph::Selection joined;
    for (graph::SelectionItem& item : items.value) {
        item.path = 0;
        joined.add(item);
    }
    return {joined.items(), std::move(items.error)};
}

int componentCount(const geometry::Topology& topology, graph::ComponentKind kind) {
    switch (kind) {
        case graph::ComponentKind::Vertex:
            return topology.vertexCount();
        case graph::ComponentKind::Edge:
            return topology.edgeCount();
        case graph::ComponentKind::Face:
            return topology.faceCount();
        case graph::ComponentKind::ControlVertex:
            break;
    }
    return 0;
}

std::vector<int> verticesOf(const nodes::MeshPtr& mesh, const graph::Component& component) {
    if (mesh == nullptr) return {};
    const geometry::Topology& topology = mesh->mesh.topology();
    const std::vector<int> elements =
        clipped(component, componentCount(topology, component.kind())).elements();
    if (component.kind() == graph::ComponentKind::Vertex) return elements;
    std::vector<int> vertices;
    for (const int element : elements) {
        if (component.kind() == graph::ComponentKind::Edge) {
            const geometry::Edge& edge = topology.edge(element);
            vertices.insert(vertices.end(), edge.begin(), edge.end());
        } else {
            const geometry::IntSpan corners = topology.faceVertices(element);
            vertices.insert(vertices.end(), corners.begin(), corners.end());
        }
    }
    std::sort(vertices.begin(), vertices.end());
    vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
    return vertices;
}

void visitMeshes(graph::Graph& graph, const Placed& node,
                 const std::function<void(const Placed&, const geometry::Mesh&)>& visit) {
    graph::InstanceNumbers numbers;
    std::vector<graph::Instance> ahead{{node.node.get(), node.path}};
    while (!ahead.empty()) {
        const graph::Instance at = ahead.back();
        ahead.pop_back();
        if (at.number >= graph::kMaxPaths) continue;
        for (graph::Node* child : at.node->children())
            ahead.push_back(numbers.childOf(at, *child));
        if (!at.node->isA("mesh") || nodes::isIntermediate(graph, *at.node)) continue;
        const graph::SelectionItem shape{at.node->ref(), {}, {}, at.number};
        if (const nodes::MeshPtr mesh = nodes::meshOf(graph, shape.node)) visit(shape, mesh->mesh);
    }
}

graph::NodeRef createEmptyMesh(graph::Graph& graph, const std::string& transformName) {
    const graph::NodeRef transform = graph.createNode(*graph.types().find("transform"), transformName);
    return graph.createNode(*graph.types().find("mesh"), nodes::shapeNameFor(transform->name()),
                            transform.get());
}

void shadeInitially(graph::Graph& graph, const graph::NodeRef& shape) {
    nodes::addToSet(graph, graph::findNode(graph, "initialShadingGroup"), {shape, {}, {}});
}

}  // namespace host::commands
