// The node types of deformer chains: geometryFilter, tweak, groupParts, groupId.

#include <algorithm>

#include "nodes/deformation.h"
#include "nodes/plugs.h"
#include "nodes/schema.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::ValueKind;

AttributeSpec deformerInput() {
    return graph::compound(
               "input", "ip",
               {graph::typed("inputGeometry", "ig", "mesh"), graph::number("groupId", "gi", ValueKind::Int),
                graph::typed("componentTagExpression", "gtg", "string")
                    .withDefault(std::make_shared<graph::StringData>("*"))})
        .array();
}

AttributeSpec controlPoints() {
    return graph::compound(
               "controlPoints", "cp",
               {graph::number("xValue", "xv"), graph::number("yValue", "yv"), graph::number("zValue", "zv")})
        .array();
}

AttributeSpec vertexOffsets() {
    return graph::compound("vertex", "vt",
                           {graph::number("xVertex", "vx", ValueKind::Float),
                            graph::number("yVertex", "vy", ValueKind::Float),
                            graph::number("zVertex", "vz", ValueKind::Float)})
        .array();
}

void deformByTweak(Deformation& deformation) {
    const graph::NodeRef& node = deformation.node;
    const graph::NumberMulti* tweaks =
        numbersOf(childPlug(node->plug("vlist").element(deformation.geometryIndex), "vertex"));
    if (tweaks == nullptr) return;
    const bool isRelative = deformation.graph.number(node->plug("relativeTweak")) != 0.0;
    const std::vector<int>& vertices = tweaks->indices();
    const double* values = tweaks->find(vertices.front());
    const int vertexCount = deformation.input.mesh.vertexCount();
    for (std::size_t k = 0; k < vertices.size(); ++k, values += 3) {
        if (vertices[k] < 0 || vertices[k] >= vertexCount) continue;
        float* point = deformation.points.data() + 3 * static_cast<std::size_t>(vertices[k]);
        for (int axis = 0; axis < 3; ++axis) {
            const double from = static_cast<double>(point[axis]);
            const double offset = isRelative ? values[axis] : values[axis] - from;
            point[axis] = static_cast<float>(from + deformation.envelope * offset);
        }
    }
}

graph::ComputedValue computeTweak(graph::Graph& graph, const graph::Plug& output) {
    return computeDeformer(graph, output, deformByTweak);
}

/// The incoming mesh, with the node's group added to its groups.
graph::ComputedValue computeGroupParts(graph::Graph& graph, const graph::Plug& output) {
    const graph::NodeRef& node = output.node();
    MeshPtr in = graph::dataAs<MeshData>(graph.data(node->plug("inputGeometry")));
    if (in == nullptr) return graph::DataPtr();
    ComponentGroup group;
    group.id = static_cast<int>(graph.number(node->plug("groupId")));
    group.components = graph::dataAs<graph::ComponentListData>(graph.data(node->plug("inputComponents")));
    std::vector<ComponentGroup> groups = in->groups;
    const auto same = std::find_if(groups.begin(), groups.end(),
                                   [&](const ComponentGroup& other) { return other.id == group.id; });
    if (same != groups.end()) {
        *same = group;
    } else {
        groups.push_back(group);
    }
    auto& memory = node->extension();
    if (memory == nullptr) memory = std::make_shared<MeshPtr>();
    MeshPtr& last = *std::static_pointer_cast<MeshPtr>(memory);
    return last = keepAddress(last, std::make_shared<MeshData>(in->mesh, std::move(groups)));
}

/// Ids only have to differ between groups, and to be the same in every run.
graph::ComputedValue computeGroupId(graph::Graph&, const graph::Plug& output) {
    return static_cast<double>(output.node()->id());
}

/// A deformer that leaves a chain passes its input to the next one.
graph::Plug passDeformer(const graph::Plug& output) {
    if (output.attribute().longName() != "outputGeometry") return {};
    return childPlug(output.node()->plug("input").element(output.logicalIndex()), "inputGeometry");
}

graph::Plug passGroupParts(const graph::Plug& output) {
    if (output.attribute().longName() != "outputGeometry") return {};
    return output.node()->plug("inputGeometry");
}

graph::NodeTypeSpec service(graph::NodeTypeSpec spec) {
    spec.diesWithLastOutput = true;
    return spec;
}

}  // namespace

void addDeformerTypes(graph::NodeTypes& types) {
    graph::NodeBehaviour passing;
    passing.passThrough = passDeformer;
    types.add(service({"geometryFilter",
                       "node",
                       {deformerInput(), graph::typed("originalGeometry", "orggeom", "mesh").array(),
                        graph::typed("outputGeometry", "og", "mesh").output().array(),
                        graph::number("envelope", "en", ValueKind::Float).withDefault(1).keyable()},
                       passing,
                       true}));
    types.add({"weightGeometryFilter", "geometryFilter", {}, {}, true});
    graph::NodeBehaviour tweaking;
    tweaking.compute = computeTweak;
    types.add({"tweak",
               "geometryFilter",
               {graph::number("relativeTweak", "rtw", ValueKind::Bool).withDefault(1),
                // plist is for other geometry than meshes. It moves nothing here.
                graph::compound("plist", "pl", {controlPoints()}).array(),
                graph::compound("vlist", "vl", {vertexOffsets()}).array()},
               tweaking});
    graph::NodeBehaviour grouping;
    grouping.compute = computeGroupParts;
    grouping.passThrough = passGroupParts;
    grouping.isService = [](const graph::Node&) { return true; };
    types.add(
        {"groupParts",
         "node",
         {graph::typed("inputGeometry", "ig", "mesh"), graph::typed("inputComponents", "ic", "componentList"),
          graph::number("groupId", "gi", ValueKind::Int),
          graph::typed("outputGeometry", "og", "mesh").output()},
         grouping});
    graph::NodeBehaviour numbering;
    numbering.compute = computeGroupId;
    types.add(
        service({"groupId", "node", {graph::number("groupId", "id", ValueKind::Int).output()}, numbering}));
}

}  // namespace host::nodes
