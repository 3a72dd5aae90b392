#include "nodes/blendShapeNode.h"

#include <algorithm>

#include "graph/names.h"
#include "graph/namespaces.h"
#include "nodes/deformers.h"
#include "nodes/meshNode.h"
#include "nodes/plugs.h"

namespace host::nodes {

namespace {

bool haveSameCounts(const MeshPtr& a, const MeshPtr& b) {
    return a->mesh.vertexCount() == b->mesh.vertexCount() && a->mesh.edgeCount() == b->mesh.edgeCount() &&
           a->mesh.faceCount() == b->mesh.faceCount();
}

bool isAliasFree(const graph::Node& node, const std::string& name) {
    return node.findAttribute(name) == nullptr && node.aliases().find(name) == nullptr;
}

/// The wanted alias, or the wanted alias with the lowest number that makes it unique.
std::string freeAlias(const graph::Node& node, const std::string& wanted) {
    if (isAliasFree(node, wanted)) return wanted;
    for (int number = 1;; ++number) {
        std::string name = wanted + std::to_string(number);
        if (isAliasFree(node, name)) return name;
    }
}

/// Why a target cannot be added; empty if it can.
std::string obstacle(graph::Graph& graph, const graph::NodeRef& blendShape, const graph::Plug& item,
                     const graph::NodeRef& targetShape, bool inBetween) {
    const int baseIndex = item.key().indices[0];
    const int weightIndex = item.key().indices[1];
    const std::string& name = blendShape->name();
    if (item.logicalIndex() == 0) return "The full weight is out of range";
    if (item.logicalIndex() == itemIndex(0.0)) return "A target cannot have a full weight of 0";
    if (!graph.hasElement(blendShape->plug("outputGeometry").element(baseIndex)))
        return name + " has no base object of index " + std::to_string(baseIndex);
    const MeshPtr target = targetShape->isA("mesh") ? meshOf(graph, targetShape) : nullptr;
    if (target == nullptr) return targetShape->name() + " has no mesh to be a target";
    if (inBetween && !graph.hasElement(blendShape->plug("weight").element(weightIndex)))
        return name + " has no target of index " + std::to_string(weightIndex) + " for an in-between";
    // The mesh of a disconnected target is kept, even if its deltas were not made.
    if (graph.source(childPlug(item, kGeomTarget)) || graph.data(childPlug(item, kGeomTarget)) != nullptr ||
        graph.data(childPlug(item, kPointsTarget)) != nullptr)
        return name + " has a target at weight index " + std::to_string(weightIndex) +
               " and this weight already";
    // The input mesh has the same topology as the deformed shape, and reading it does not evaluate the
    // targets.
    const graph::Plug input = childPlug(blendShape->plug("input").element(baseIndex), "inputGeometry");
    const MeshPtr baseMesh = graph::dataAs<MeshData>(graph.data(input));
    const bool checksTopology = graph.number(blendShape->plug("topologyCheck")) != 0.0;
    if (checksTopology && baseMesh != nullptr && !haveSameCounts(baseMesh, target))
        return targetShape->name() + " has not the same topology as the base object";
    return {};
}

void nameInBetween(graph::Graph& graph, const graph::NodeRef& blendShape, int weightIndex, int item,
                   const std::string& name) {
    const graph::Plug group = blendShape->plug("inbetweenInfoGroup").element(weightIndex);
    const graph::Plug info = childPlug(group, "inbetweenInfo").element(item);
    graph.setData(childPlug(info, "inbetweenTargetName"), std::make_shared<graph::StringData>(name));
}

}  // namespace

graph::Plug targetGroupPlug(const graph::NodeRef& blendShape, int baseIndex, int weightIndex) {
    const graph::Plug base = blendShape->plug("inputTarget").element(baseIndex);
    return childPlug(base, "inputTargetGroup").element(weightIndex);
}

graph::Plug targetItemPlug(const graph::NodeRef& blendShape, int baseIndex, int weightIndex, int item) {
    return childPlug(targetGroupPlug(blendShape, baseIndex, weightIndex), "inputTargetItem").element(item);
}

TargetResult addTarget(graph::Graph& graph, const graph::NodeRef& blendShape, int baseIndex, int weightIndex,
                       const graph::NodeRef& targetShape, double fullWeight, bool inBetween) {
    const int index = itemIndex(fullWeight);
    const graph::Plug item = targetItemPlug(blendShape, baseIndex, weightIndex, index);
    if (std::string error = obstacle(graph, blendShape, item, targetShape, inBetween); !error.empty())
        return {false, std::move(error)};
    const graph::Node& named = targetShape->parent() != nullptr ? *targetShape->parent() : *targetShape;
    const std::string name(graph::baseName(named.name()));
    const graph::Plug weight = blendShape->plug("weight").element(weightIndex);
    const bool isNew = !graph.hasElement(weight);
    graph.connect(targetShape->plug("worldMesh").element(0), childPlug(item, kGeomTarget));
    if (isNew) {
        graph.setNumber(weight, 0.0);
        graph.setAlias(weight, freeAlias(*blendShape, name));
    } else if (inBetween) {
        nameInBetween(graph, blendShape, weightIndex, index, name);
    }
    return {true, {}};
}

std::vector<graph::NodeRef> baseShapes(graph::Graph& graph, const graph::NodeRef& blendShape) {
    std::vector<graph::NodeRef> shapes;
    for (const int index : graph.elements(blendShape->plug("outputGeometry"))) {
        if (graph::NodeRef shape = deformedShape(graph, blendShape, index))
            shapes.push_back(std::move(shape));
    }
    return shapes;
}

std::vector<int> weightIndices(graph::Graph& graph, const graph::NodeRef& blendShape) {
    return graph.elements(blendShape->plug("weight"));
}

std::vector<int> targetItems(graph::Graph& graph, const graph::NodeRef& blendShape, int baseIndex,
                             int weightIndex) {
    return graph.elements(childPlug(targetGroupPlug(blendShape, baseIndex, weightIndex), "inputTargetItem"));
}

}  // namespace host::nodes
