#include "nodes/meshNode.h"

#include <algorithm>
#include <cctype>

#include "graph/namespaces.h"
#include "nodes/deformers.h"
#include "nodes/meshColors.h"
#include "nodes/plugs.h"

namespace host::nodes {

namespace {

graph::NodeRef createEmptyShape(graph::Graph& graph, const std::string& name, graph::Node& transform) {
    return graph.createNode(*graph.types().find("mesh"), name.empty() ? shapeNameFor(transform.name()) : name,
                            &transform);
}

/// Where the number at the end of a name starts; the name's length if it has no number.
std::size_t numberStart(const std::string& name) {
    std::size_t start = name.size();
    while (start > 1 && std::isdigit(static_cast<unsigned char>(name[start - 1])) != 0)
        --start;
    return start;
}

/// Adds to the numbers of one element of an array of three floats.
void addToTriple(graph::Graph& graph, const graph::Plug& element, const geometry::Vec3& offset) {
    for (int axis = 0; axis < 3; ++axis) {
        if (offset[axis] == 0.0) continue;
        const graph::Plug part = element.child(axis);
        graph.setNumber(part, part.node()->storedNumber(part.key()) + offset[axis]);
    }
}

/// The name of a copied shape below a new transform.
std::string shapeCopyName(graph::Graph& graph, const graph::Node& shape, const graph::Node& transform) {
    if (graph.variants().copyNames == graph::CopyNames::Appended) return shape.name() + "_copy1";
    return shapeNameFor(transform.name());
}

}  // namespace

MeshPtr meshOf(graph::Graph& graph, const graph::NodeRef& shape) {
    return shape->isA("mesh") ? graph::dataAs<MeshData>(graph.data(shape->plug("outMesh"))) : nullptr;
}

MeshPtr incomingMesh(graph::Graph& graph, const graph::NodeRef& shape) {
    return graph::dataAs<MeshData>(graph.data(shape->plug("inMesh")));
}

std::string shapeNameFor(const std::string& transformName) {
    const std::size_t start = numberStart(transformName);
    return transformName.substr(0, start) + "Shape" + transformName.substr(start);
}

graph::NodeRef createMesh(graph::Graph& graph, geometry::Mesh mesh, const std::string& transformName,
                          graph::Node* parent) {
    const graph::NodeRef transform =
        graph.createNode(*graph.types().find("transform"),
                         transformName.empty() ? graph.wholeName("polySurface1") : transformName, parent);
    return createMeshShape(graph, std::move(mesh), {}, *transform);
}

graph::NodeRef createMeshShape(graph::Graph& graph, geometry::Mesh mesh, const std::string& shapeName,
                               graph::Node& transform) {
    const graph::NodeRef shape = createEmptyShape(graph, shapeName, transform);
    graph.setData(shape->plug("inMesh"), std::make_shared<MeshData>(std::move(mesh)));
    return shape;
}

void setMesh(graph::Graph& graph, const graph::NodeRef& shape, geometry::Mesh mesh) {
    graph.setData(shape->plug("inMesh"), std::make_shared<MeshData>(std::move(mesh)));
    graph.clearElements(shape->plug("pnts"));
}

void setMeshPoints(graph::Graph& graph, const graph::NodeRef& shape, std::vector<float> xyz) {
    const MeshPtr in = incomingMesh(graph, shape);
    if (in == nullptr || xyz.size() != in->mesh.points().size()) return;
    if (!graph.source(shape->plug("inMesh"))) {
        setMesh(graph, shape, geometry::Mesh(in->mesh.topologyPtr(), std::move(xyz)));
        return;
    }
    const graph::Plug offsets = shape->plug("pnts");
    graph.clearElements(offsets);
    const std::vector<float>& base = in->mesh.points();
    for (std::size_t k = 0; k < base.size(); ++k) {
        if (xyz[k] == base[k]) continue;
        const graph::Plug element = offsets.element(static_cast<int>(k / 3));
        graph.setNumber(element.child(static_cast<int>(k % 3)),
                        static_cast<double>(xyz[k]) - static_cast<double>(base[k]));
    }
}

void offsetVertices(graph::Graph& graph, const graph::NodeRef& shape, const std::vector<int>& vertices,
                    const std::vector<geometry::Vec3>& offsets) {
    const MeshPtr mesh = meshOf(graph, shape);
    if (mesh == nullptr) return;
    graph::Plug array = shape->plug("pnts");
    if (const graph::NodeRef tweak = tweakNodeOf(graph, shape)) {
        const int index = std::max(0, geometryIndexOf(graph, tweak, shape));
        array = childPlug(tweak->plug("vlist").element(index), "vertex");
    }
    for (std::size_t k = 0; k < vertices.size(); ++k) {
        if (vertices[k] < 0 || vertices[k] >= mesh->mesh.vertexCount()) continue;
        addToTriple(graph, array.element(vertices[k]), offsets[k]);
    }
}

std::string copyName(graph::Graph& graph, const graph::Node& original) {
    switch (graph.variants().copyNames) {
        case graph::CopyNames::Default:
            return graph.wholeName("polySurface1");
        case graph::CopyNames::Appended:
            return graph.wholeName(graph::baseName(original.name())) + "_copy1";
        case graph::CopyNames::NextNumber:
            break;
    }
    return graph.nextName(graph.wholeName(graph::baseName(original.name())));
}

graph::NodeRef copyMesh(graph::Graph& graph, const graph::NodeRef& shape, graph::Node* parentTransform) {
    const MeshPtr source = meshOf(graph, shape);
    geometry::Mesh mesh = source != nullptr ? source->mesh : geometry::Mesh();
    const graph::Node* owner = shape->parent();
    const graph::NodeRef transform =
        parentTransform != nullptr
            ? parentTransform->ref()
            : graph.createNode(*graph.types().find("transform"),
                               owner != nullptr ? copyName(graph, *owner) : graph.wholeName("polySurface1"),
                               nullptr);
    const std::string name =
        parentTransform != nullptr ? shape->name() : shapeCopyName(graph, *shape, *transform);
    graph::NodeRef copy = createMeshShape(graph, std::move(mesh), name, *transform);
    copyColorSets(graph, shape, copy);
    return copy;
}

bool isIntermediate(const graph::Graph&, const graph::Node& node) {
    const graph::Attribute* attribute = node.findAttribute("intermediateObject");
    return attribute != nullptr && node.storedNumber({attribute, {}, 0}) != 0.0;
}

void setIntermediate(graph::Graph& graph, const graph::NodeRef& shape, bool isIntermediate) {
    graph.setNumber(shape->plug("intermediateObject"), isIntermediate ? 1.0 : 0.0);
}

graph::NodeRef shapeOf(const graph::Graph& graph, const graph::NodeRef& node) {
    if (node->isA("shape")) return node;
    if (!node->type().isDag()) return nullptr;
    graph::Node* only = nullptr;
    for (graph::Node* child : node->children()) {
        if (!child->isA("shape") || isIntermediate(graph, *child)) continue;
        if (only != nullptr) return nullptr;
        only = child;
    }
    return only != nullptr ? only->ref() : nullptr;
}

}  // namespace host::nodes
