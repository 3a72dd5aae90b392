#include "nodes/liveTargets.h"

#include <array>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "nodes/blendShapeNode.h"
#include "nodes/blendShapeTargets.h"
#include "nodes/deformation.h"
#include "nodes/deformers.h"
#include "nodes/meshData.h"
#include "nodes/plugs.h"

namespace host::nodes {

namespace {

/// What is known about an item's mesh.
struct LiveTarget {
    MeshPtr seen;                // as it was when the deltas were made or written; null if they never were
    bool isOutstanding = false;  // the mesh was disconnected before an evaluation saw its last change
};

using ItemKey = std::array<int, 3>;  // base, weight and item index
using LiveTargets = std::map<ItemKey, LiveTarget>;

LiveTargets& liveTargets(graph::Node& blendShape) {
    auto& own = deformerMemory(blendShape).own;
    if (own == nullptr) own = std::make_shared<LiveTargets>();
    return *std::static_pointer_cast<LiveTargets>(own);
}

ItemKey keyOf(const graph::Plug& item) {
    const auto& indices = item.key().indices;
    return {indices[0], indices[1], indices[2]};
}

LiveTarget knownOf(const graph::Plug& item) {
    const LiveTargets& known = liveTargets(*item.node());
    const auto found = known.find(keyOf(item));
    return found != known.end() ? found->second : LiveTarget();
}

/// Changes what is known about an item. The change is recorded.
void know(graph::Graph& graph, const graph::Plug& item, const LiveTarget& now) {
    const auto remember = [item](const LiveTarget& target) {
        return [item, target](graph::Graph&) { liveTargets(*item.node())[keyOf(item)] = target; };
    };
    const LiveTarget old = knownOf(item);
    remember(now)(graph);
    graph.record(remember(old), remember(now));
}

/// Making deltas is not recorded. So undo restores the deltas from before a mesh was connected or
/// disconnected.
void recordDeltas(graph::Graph& graph, const graph::Plug& item) {
    graph.recordStored(childPlug(item, kPointsTarget));
    graph.recordStored(childPlug(item, kComponentsTarget));
}

graph::Plug itemOf(const graph::Plug& below) {
    return below.child(*below.attribute().parent());
}

bool isGeomTarget(const graph::Attribute& attribute) {
    return attribute.longName() == kGeomTarget;
}

/// The mesh at an item, connected or kept; null if there is none.
MeshPtr targetMesh(graph::Graph& graph, const graph::Plug& item) {
    return graph::dataAs<MeshData>(graph.data(childPlug(item, kGeomTarget)));
}

/// The items of a geometry whose deltas follow a mesh.
std::vector<ItemKey> followedItems(graph::Node& blendShape, int geometryIndex) {
    std::vector<ItemKey> items;
    for (const auto& entry : blendShape.incoming()) {
        const auto& indices = entry.first.indices;
        if (isGeomTarget(*entry.first.attribute) && indices[0] == geometryIndex)
            items.push_back({indices[0], indices[1], indices[2]});
    }
    for (const auto& [key, target] : liveTargets(blendShape)) {
        if (target.isOutstanding && key[0] == geometryIndex) items.push_back(key);
    }
    return items;
}

void storeDeltas(graph::Graph& graph, const graph::Plug& item, const MeshData& base, const MeshData& target) {
    auto [points, components] = sparseDeltas(base.mesh, target.mesh);
    graph.storeDerived(childPlug(item, kPointsTarget), std::move(points));
    graph.storeDerived(childPlug(item, kComponentsTarget), std::move(components));
}

void takeDeltas(graph::Graph& graph, const graph::Plug& item, const MeshPtr& base) {
    const MeshPtr target = targetMesh(graph, item);
    LiveTarget& known = liveTargets(*item.node())[keyOf(item)];
    known.isOutstanding = false;
    if (target == nullptr) return;
    const bool isSeen = isSameMesh(known.seen, target);
    known.seen = target;
    if (!isSeen) storeDeltas(graph, item, *base, *target);
}

}  // namespace

void takeLiveDeltas(graph::Graph& graph, const graph::NodeRef& blendShape, int geometryIndex) {
    const std::vector<ItemKey> items = followedItems(*blendShape, geometryIndex);
    if (items.empty()) return;
    const MeshPtr base = undeformedMesh(graph, blendShape, geometryIndex);
    if (base == nullptr) return;
    for (const ItemKey& key : items)
        takeDeltas(graph, targetItemPlug(blendShape, key[0], key[1], key[2]), base);
}

void liveTargetConnected(graph::Graph& graph, const graph::Plug& destination) {
    if (!isGeomTarget(destination.attribute())) return;
    const graph::Plug item = itemOf(destination);
    recordDeltas(graph, item);
    know(graph, item, {});
}

void liveTargetDisconnecting(graph::Graph& graph, const graph::Plug& destination) {
    if (!isGeomTarget(destination.attribute())) return;
    const graph::Plug item = itemOf(destination);
    recordDeltas(graph, item);
    LiveTarget known = knownOf(item);
    const MeshPtr target = targetMesh(graph, item);
    if (isSameMesh(known.seen, target)) return;
    const MeshPtr base = undeformedMesh(graph, item.node(), item.key().indices[0]);
    const bool isTaken = base != nullptr && target != nullptr && graph.variants().takesDeltasOnDisconnect;
    if (isTaken) {
        known.seen = target;
        auto [points, components] = sparseDeltas(base->mesh, target->mesh);
        const auto store = [item, points = std::move(points),
                            components = std::move(components)](graph::Graph& into) {
            into.storeDerived(childPlug(item, kPointsTarget), points);
            into.storeDerived(childPlug(item, kComponentsTarget), components);
        };
        store(graph);
        // Redo has no mesh to make them from.
        graph.record([](graph::Graph&) {}, store);
    }
    known.isOutstanding = !isTaken;
    know(graph, item, known);
}

void liveDeltasWriting(graph::Graph& graph, const graph::Plug& plug) {
    const graph::Plug item = itemOf(plug);
    const bool isConnected = static_cast<bool>(graph.source(childPlug(item, kGeomTarget)));
    const LiveTarget known = knownOf(item);
    if (!isConnected && !known.isOutstanding) return;
    if (isConnected && known.seen == nullptr && graph.variants().losesEarlyDeltas) return;
    know(graph, item, {targetMesh(graph, item), false});
}

}  // namespace host::nodes
