#include "nodes/deformers.h"

#include <algorithm>

#include "nodes/meshNode.h"
#include "nodes/plugs.h"

namespace host::nodes {

namespace {

bool isMesh(const graph::NodeRef& node) {
    return node->isA("mesh");
}

/// The geometry input that belongs to a geometry output of a deformer or groupParts node; empty for other
/// nodes.
graph::Plug chainInput(const graph::Plug& output) {
    const graph::NodeRef& node = output.node();
    if (output.attribute().longName() != "outputGeometry") return {};
    if (node->isA("geometryFilter"))
        return childPlug(node->plug("input").element(output.logicalIndex()), "inputGeometry");
    return node->isA("groupParts") ? node->plug("inputGeometry") : graph::Plug();
}

/// The geometry outputs of a chain, from the shape upwards. The last one does not belong to a deformer: it
/// belongs to the Orig shape or to construction history, or is empty.
std::vector<graph::Plug> chainOf(const graph::Graph& graph, const graph::NodeRef& shape) {
    std::vector<graph::Plug> outputs;
    if (!shape->isA("mesh")) return outputs;
    for (graph::Plug at = graph.source(shape->plug("inMesh")); at;) {
        // A chain that leads back to itself ends where it would start again.
        if (std::find(outputs.begin(), outputs.end(), at) != outputs.end()) break;
        outputs.push_back(at);
        const graph::Plug input = chainInput(at);
        at = input ? graph.source(input) : graph::Plug();
    }
    return outputs;
}

/// Moves a shape's pnts to another array of three floats.
void moveOffsets(graph::Graph& graph, const graph::NodeRef& shape, const graph::Plug& target) {
    const graph::Plug offsets = shape->plug("pnts");
    for (const int vertex : graph.elements(offsets)) {
        const graph::Plug from = offsets.element(vertex);
        const graph::Plug to = target.element(vertex);
        for (int axis = 0; axis < 3; ++axis) {
            const double sum = graph.number(to.child(axis)) + graph.number(from.child(axis));
            graph.setNumber(to.child(axis), sum);
        }
    }
    graph.clearElements(offsets);
}

/// Puts an Orig shape between a shape and the source of its chain.
graph::NodeRef insertOriginal(graph::Graph& graph, const graph::NodeRef& shape) {
    const MeshPtr stored = incomingMesh(graph, shape);
    graph::NodeRef original = graph.createNode(shape->type(), shape->name() + "Orig", shape->parent());
    setIntermediate(graph, original, true);
    const std::vector<graph::Plug> chain = chainOf(graph, shape);
    const graph::Plug in = original->plug("inMesh");
    const graph::Plug out = original->plug("worldMesh").element(0);
    if (chain.empty()) {
        if (stored != nullptr) graph.setData(in, stored);
        graph.connect(out, shape->plug("inMesh"));
        return original;
    }
    const bool endsInHistory = !chainInput(chain.back());
    const graph::Plug start = chain.size() == 1 ? shape->plug("inMesh") : chainInput(chain[chain.size() - 2]);
    if (endsInHistory) {
        graph.connect(chain.back(), in);
        graph.connect(out, start);
    } else {
        graph.connect(out, chainInput(chain.back()));
    }
    return original;
}

graph::NodeRef obtainOriginal(graph::Graph& graph, const graph::NodeRef& shape) {
    if (graph::NodeRef original = originalShape(graph, shape)) return original;
    return insertOriginal(graph, shape);
}

/// Puts a deformer's geometry between `destination` and its source.
void insertDeformer(graph::Graph& graph, const graph::NodeRef& deformer, int index,
                    const graph::NodeRef& original, const graph::Plug& destination) {
    const graph::Plug before = graph.source(destination);
    graph.connect(before, childPlug(deformer->plug("input").element(index), "inputGeometry"));
    graph.connect(original->plug("outMesh"), deformer->plug("originalGeometry").element(index));
    graph.connect(deformer->plug("outputGeometry").element(index), destination);
}

graph::NodeRef makeNode(graph::Graph& graph, std::string_view type, const std::string& name = {}) {
    return graph.createNode(*graph.types().find(type), name);
}

graph::DataPtr vertexRun(int first, int last) {
    auto list = std::make_shared<graph::ComponentListData>();
    list->appendRun(graph::ComponentKind::Vertex, first, last);
    return list;
}

void connectNext(graph::Graph& graph, const graph::Plug& source, const graph::Plug& array) {
    graph.connect(source, array.element(graph.nextIndex(array)));
}

/// What a legacy chain has besides a deformer: a set of what it deforms, and the names of the helper nodes.
struct LegacyGroup {
    graph::NodeRef set;
    std::string partsName;
    std::string idName;
};

LegacyGroup makeLegacyGroup(graph::Graph& graph, const graph::NodeRef& deformer) {
    const bool isTweak = deformer->isA("tweak");
    const std::string& name = deformer->name();
    LegacyGroup group{makeNode(graph, "objectSet", isTweak ? "tweakSet1" : name + "Set"), {}, {}};
    if (!isTweak) {
        group.partsName = name + "GroupParts";
        group.idName = name + "GroupId";
    }
    graph.connect(deformer->plug("message"), group.set->plug("usedBy").element(0));
    return group;
}

/// Like insertDeformer, with a groupParts node before the deformer, a groupId for both, and the shape in the
/// deformer's set. originalGeometry gets no connection.
void insertGrouped(graph::Graph& graph, const graph::NodeRef& deformer, int index,
                   const graph::NodeRef& shape, const graph::Plug& destination, const LegacyGroup& group) {
    const graph::Plug before = graph.source(destination);
    const graph::NodeRef parts = makeNode(graph, "groupParts", group.partsName);
    const graph::NodeRef id = makeNode(graph, "groupId", group.idName);
    const graph::Plug input = deformer->plug("input").element(index);
    graph.setData(parts->plug("inputComponents"), vertexRun(0, -1));
    graph.connect(before, parts->plug("inputGeometry"));
    graph.connect(id->plug("groupId"), parts->plug("groupId"));
    graph.connect(id->plug("groupId"), childPlug(input, "groupId"));
    graph.connect(parts->plug("outputGeometry"), childPlug(input, "inputGeometry"));
    graph.connect(deformer->plug("outputGeometry").element(index), destination);

    const graph::Plug objects = childPlug(shape->plug("instObjGroups").element(0), "objectGroups");
    const graph::Plug object = objects.element(graph.nextIndex(objects));
    const MeshPtr mesh = graph::dataAs<MeshData>(graph.data(before));
    if (mesh != nullptr)
        graph.setData(childPlug(object, "objectGrpCompList"), vertexRun(0, mesh->mesh.vertexCount() - 1));
    connectNext(graph, object, group.set->plug("dagSetMembers"));
    connectNext(graph, id->plug("message"), group.set->plug("groupNodes"));
}

/// Makes a tweak node at the front of the chain, after the shape's original.
graph::NodeRef insertTweak(graph::Graph& graph, const graph::NodeRef& shape, const graph::NodeRef& original) {
    const graph::NodeRef tweak = makeNode(graph, "tweak");
    const std::vector<graph::Plug> chain = chainOf(graph, shape);
    const graph::Plug first = chain.size() == 1 ? shape->plug("inMesh") : chainInput(chain[chain.size() - 2]);
    if (graph.variants().hasLegacyChains) {
        insertGrouped(graph, tweak, 0, shape, first, makeLegacyGroup(graph, tweak));
    } else {
        insertDeformer(graph, tweak, 0, original, first);
    }
    const graph::Plug offsets = childPlug(tweak->plug("vlist").element(0), "vertex");
    moveOffsets(graph, shape, offsets);
    graph.connect(offsets.element(0), shape->plug("tweakLocation"));
    return tweak;
}

}  // namespace

graph::NodeRef createDeformer(graph::Graph& graph, std::string_view typeName,
                              const std::vector<graph::NodeRef>& shapes, const std::string& name) {
    const graph::NodeRef deformer = makeNode(graph, typeName, name);
    const bool isLegacy = graph.variants().hasLegacyChains;
    const LegacyGroup group = isLegacy ? makeLegacyGroup(graph, deformer) : LegacyGroup();
    for (std::size_t k = 0; k < shapes.size(); ++k) {
        const graph::NodeRef& shape = shapes[k];
        const graph::NodeRef original = obtainOriginal(graph, shape);
        const graph::Plug end = shape->plug("inMesh");
        if (isLegacy) {
            if (tweakNodeOf(graph, shape) == nullptr) insertTweak(graph, shape, original);
            insertGrouped(graph, deformer, static_cast<int>(k), shape, end, group);
            continue;
        }
        if (chainOf(graph, shape).size() == 1) moveOffsets(graph, shape, original->plug("pnts"));
        insertDeformer(graph, deformer, static_cast<int>(k), original, end);
    }
    return deformer;
}

graph::NodeRef createTweakNode(graph::Graph& graph, const graph::NodeRef& shape) {
    if (graph::NodeRef present = tweakNodeOf(graph, shape)) return present;
    return insertTweak(graph, shape, obtainOriginal(graph, shape));
}

MeshPtr undeformedMesh(graph::Graph& graph, const graph::NodeRef& deformer, int geometryIndex) {
    const graph::Plug original = deformer->plug("originalGeometry").element(geometryIndex);
    if (graph.source(original)) return graph::dataAs<MeshData>(graph.data(original));
    const graph::Plug input = deformer->plug("input").element(geometryIndex);
    return graph::dataAs<MeshData>(graph.data(childPlug(input, "inputGeometry")));
}

graph::Plug chainEntry(const graph::Graph& graph, const graph::NodeRef& deformer, int geometryIndex) {
    const graph::Plug input = childPlug(deformer->plug("input").element(geometryIndex), "inputGeometry");
    const graph::Plug source = graph.source(input);
    return source && source.node()->isA("groupParts") ? source.node()->plug("inputGeometry") : input;
}

graph::NodeRef tweakNodeOf(const graph::Graph& graph, const graph::NodeRef& shape) {
    const graph::Plug source = graph.source(shape->plug("tweakLocation"));
    return source && source.node()->isA("tweak") ? source.node() : nullptr;
}

graph::NodeRef originalShape(const graph::Graph& graph, const graph::NodeRef& shape) {
    const std::vector<graph::Plug> chain = chainOf(graph, shape);
    if (chain.empty()) return nullptr;
    const graph::NodeRef& start = chain.back().node();
    return isMesh(start) && isIntermediate(graph, *start) ? start : nullptr;
}

std::vector<graph::NodeRef> deformersOf(const graph::Graph& graph, const graph::NodeRef& shape) {
    std::vector<graph::NodeRef> deformers;
    for (const graph::Plug& output : chainOf(graph, shape)) {
        if (output.node()->isA("geometryFilter")) deformers.push_back(output.node());
    }
    return deformers;
}

graph::NodeRef deformedShape(const graph::Graph& graph, const graph::NodeRef& deformer, int geometryIndex) {
    std::vector<graph::Plug> open{deformer->plug("outputGeometry").element(geometryIndex)};
    // The first path that leads to a shape is taken: a chain has only one.
    for (std::size_t next = 0; next < open.size(); ++next) {
        for (const graph::Plug& fed : graph.destinations(open[next])) {
            const graph::NodeRef& node = fed.node();
            if (isMesh(node)) return node;
            graph::Plug output;
            if (node->isA("geometryFilter") && fed.attribute().longName() == "inputGeometry") {
                output = node->plug("outputGeometry").element(fed.key().indices[0]);
            } else if (node->isA("groupParts")) {
                output = node->plug("outputGeometry");
            }
            if (output && std::find(open.begin(), open.end(), output) == open.end()) open.push_back(output);
        }
    }
    return nullptr;
}

int geometryIndexOf(const graph::Graph& graph, const graph::NodeRef& deformer, const graph::NodeRef& shape) {
    for (const graph::Plug& output : chainOf(graph, shape)) {
        if (output.node() == deformer) return output.logicalIndex();
    }
    return -1;
}

}  // namespace host::nodes
