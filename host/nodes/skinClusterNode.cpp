#include "nodes/skinClusterNode.h"

#include <algorithm>
#include <utility>

#include "nodes/deformers.h"
#include "nodes/meshNode.h"
#include "nodes/plugs.h"
#include "nodes/skinWeights.h"
#include "nodes/transformNode.h"

namespace host::nodes {

namespace {

constexpr const char* kLockAttribute = "lockInfluenceWeights";

/// No node has the attribute at first, not even a joint: the first skin cluster adds it.
graph::Plug obtainLock(graph::Graph& graph, const graph::NodeRef& influence) {
    if (graph::Plug present = influence->plug(kLockAttribute)) return present;
    graph::AttributeSpec lock = graph::number(kLockAttribute, "liw", graph::ValueKind::Bool);
    lock.minimum = 0.0;
    lock.maximum = 1.0;
    graph.addAttribute(*influence, std::move(lock));
    return influence->plug(kLockAttribute);
}

/// Where the vertices are that a skin cluster binds, in world space.
std::vector<geometry::Vec3> boundVertices(graph::Graph& graph, const graph::NodeRef& skinCluster) {
    std::vector<geometry::Vec3> vertices;
    const MeshPtr mesh = undeformedMesh(graph, skinCluster, 0);
    if (mesh == nullptr) return vertices;
    const geometry::Matrix4 toWorld = matrixOf(graph.data(skinCluster->plug("geomMatrix")));
    vertices.reserve(static_cast<std::size_t>(mesh->mesh.vertexCount()));
    for (int vertex = 0; vertex < mesh->mesh.vertexCount(); ++vertex)
        vertices.push_back(geometry::transformPoint(mesh->mesh.point(vertex), toWorld));
    return vertices;
}

/// The initial weights of all vertices. Influences are positions among the joints.
WeightRows weightsByDistance(graph::Graph& graph, const graph::NodeRef& skinCluster,
                             const std::vector<graph::NodeRef>& joints, const SkinOptions& options) {
    BindPose pose;
    for (const graph::NodeRef& joint : joints)
        pose.influences.push_back(worldMatrix(graph, joint).row(3));
    pose.vertices = boundVertices(graph, skinCluster);
    WeightRows rows;
    for (std::size_t vertex = 0; vertex < pose.vertices.size(); ++vertex) {
        const std::vector<double> weights =
            closestWeights(pose.distances(static_cast<int>(vertex)), options.dropoff, options.maxInfluences);
        for (std::size_t k = 0; k < weights.size(); ++k) {
            if (weights[k] == 0.0) continue;
            rows.influences.push_back(static_cast<int>(k));
            rows.weights.push_back(weights[k]);
        }
        rows.endRow(static_cast<int>(vertex));
    }
    return rows;
}

/// The joints that have weights. The rows get the positions among these.
std::vector<graph::NodeRef> usedJoints(const std::vector<graph::NodeRef>& joints, WeightRows& rows) {
    std::vector<int> places(joints.size(), -1);
    for (const int influence : rows.influences)
        places[static_cast<std::size_t>(influence)] = 0;
    std::vector<graph::NodeRef> used;
    for (std::size_t k = 0; k < joints.size(); ++k) {
        if (places[k] < 0) continue;
        places[k] = static_cast<int>(used.size());
        used.push_back(joints[k]);
    }
    for (int& influence : rows.influences)
        influence = places[static_cast<std::size_t>(influence)];
    return used;
}

/// Breaks the connections into an element of a multi and removes the element.
void dropElement(graph::Graph& graph, const graph::Plug& element) {
    for (const graph::Connection& connection : graph.connectionsBelow(element))
        graph.disconnect(connection.destination);
    graph.removeElement(element);
}

}  // namespace

std::vector<Influence> influencesOf(const graph::NodeRef& skinCluster) {
    std::vector<Influence> result;
    const graph::Plug matrices = skinCluster->plug("matrix");
    for (const auto& [key, link] : skinCluster->incoming()) {
        if (key.attribute != &matrices.attribute() || !link.node->type().isDag()) continue;
        result.push_back({key.indices[0], link.node->ref()});
    }
    return result;
}

int influenceIndex(const graph::NodeRef& skinCluster, const graph::NodeRef& node) {
    for (const Influence& influence : influencesOf(skinCluster)) {
        if (influence.node == node) return influence.index;
    }
    return -1;
}

bool isInfluenceLocked(graph::Graph& graph, const graph::NodeRef& skinCluster, int index) {
    return graph.number(skinCluster->plug("lockWeights").element(index)) != 0.0;
}

void setInfluenceLocked(graph::Graph& graph, const graph::NodeRef& skinCluster, int index, bool isLocked) {
    const graph::Plug lock = skinCluster->plug("lockWeights").element(index);
    const graph::Plug source = graph.source(lock);
    graph.setNumber(source ? source : lock, isLocked ? 1.0 : 0.0);
}

bool normalizesEdits(graph::Graph& graph, const graph::NodeRef& skinCluster) {
    return graph.number(skinCluster->plug("normalizeWeights")) != 0.0;
}

graph::NodeRef skinClusterOf(const graph::Graph& graph, const graph::NodeRef& shape) {
    for (const graph::NodeRef& deformer : deformersOf(graph, shape)) {
        if (deformer->isA("skinCluster")) return deformer;
    }
    return nullptr;
}

graph::NodeRef skinnedShape(const graph::Graph& graph, const graph::NodeRef& skinCluster) {
    return deformedShape(graph, skinCluster, 0);
}

graph::NodeRef createSkinCluster(graph::Graph& graph, const graph::NodeRef& shape,
                                 const std::vector<graph::NodeRef>& joints, const SkinOptions& options,
                                 const std::string& name) {
    graph::NodeRef skinCluster = createDeformer(graph, "skinCluster", {shape}, name);
    graph.setData(skinCluster->plug("geomMatrix"), matrixData(worldMatrix(graph, shape)));
    graph.setNumber(skinCluster->plug("maxInfluences"), options.maxInfluences);
    graph.setNumber(skinCluster->plug("maintainMaxInfluences"), options.keepsMaxInfluences ? 1.0 : 0.0);
    WeightRows rows = weightsByDistance(graph, skinCluster, joints, options);
    for (const graph::NodeRef& joint : options.leavesOutUnused ? usedJoints(joints, rows) : joints) {
        const int index = addInfluence(graph, skinCluster, joint);
        graph.setNumber(skinCluster->plug("dropoff").element(index), options.dropoff);
    }
    {
        // The node is new, and undo removes it as a whole.
        const graph::RecordingScope silent(graph, nullptr);
        setWeightRows(graph, skinCluster, rows);
    }
    if (shape->parent() != nullptr) setPlaceLocked(graph, *shape->parent(), true);
    return skinCluster;
}

void setPlaceLocked(graph::Graph& graph, graph::Node& transform, bool isLocked) {
    for (const char* name : {"translate", "rotate", "scale"}) {
        const graph::Plug triple = transform.plug(name);
        for (int axis = 0; axis < 3; ++axis) {
            graph::PlugState state = transform.state(triple.child(axis).key());
            state.isLocked = isLocked;
            graph.setState(triple.child(axis), state);
        }
    }
}

int addInfluence(graph::Graph& graph, const graph::NodeRef& skinCluster, const graph::NodeRef& joint) {
    const graph::Plug matrices = skinCluster->plug("matrix");
    const int index = graph.nextIndex(matrices);
    const geometry::Matrix4 toJoint = worldMatrix(graph, joint).inverse().matrix;
    graph.setData(skinCluster->plug("bindPreMatrix").element(index), matrixData(toJoint));
    graph.connect(joint->plug("worldMatrix").element(0), matrices.element(index));
    graph.connect(obtainLock(graph, joint), skinCluster->plug("lockWeights").element(index));
    if (const graph::Plug color = joint->plug("objectColorRGB"))
        graph.connect(color, skinCluster->plug("influenceColor").element(index));
    return index;
}

void removeInfluence(graph::Graph& graph, const graph::NodeRef& skinCluster, int index) {
    const bool normalizes = normalizesEdits(graph, skinCluster);
    std::vector<int> locked;
    for (const Influence& influence : influencesOf(skinCluster)) {
        if (isInfluenceLocked(graph, skinCluster, influence.index)) locked.push_back(influence.index);
    }
    const WeightRows before = weightRows(skinCluster);
    WeightRows after;
    for (std::size_t row = 0; row < before.vertices.size(); ++row) {
        std::vector<double> weights;
        std::vector<WeightRole> roles;
        std::vector<int> influences;
        for (std::size_t k = before.starts[row]; k < before.starts[row + 1]; ++k) {
            const int influence = before.influences[k];
            if (influence == index) continue;
            influences.push_back(influence);
            weights.push_back(before.weights[k]);
            const bool isLocked = std::binary_search(locked.begin(), locked.end(), influence);
            roles.push_back(isLocked ? WeightRole::Locked : WeightRole::Free);
        }
        if (influences.size() == before.starts[row + 1] - before.starts[row]) continue;
        if (normalizes) normalizeWeights(weights, roles, {});
        after.influences.insert(after.influences.end(), influences.begin(), influences.end());
        after.weights.insert(after.weights.end(), weights.begin(), weights.end());
        after.endRow(before.vertices[row]);
    }
    setWeightRows(graph, skinCluster, after);
    for (const char* name : {"matrix", "bindPreMatrix", "lockWeights", "influenceColor", "dropoff"})
        dropElement(graph, skinCluster->plug(name).element(index));
}

std::vector<double> BindPose::distances(int vertex) const {
    const geometry::Vec3& point = vertices[static_cast<std::size_t>(vertex)];
    std::vector<double> result;
    result.reserve(influences.size());
    for (const geometry::Vec3& influence : influences)
        result.push_back(geometry::length(influence - point));
    return result;
}

BindPose bindPoseOf(graph::Graph& graph, const graph::NodeRef& skinCluster) {
    BindPose pose;
    const std::vector<int> indices = graph.elements(skinCluster->plug("matrix"));
    for (const int index : indices) {
        const graph::DataPtr toInfluence = graph.data(skinCluster->plug("bindPreMatrix").element(index));
        pose.influences.push_back(matrixOf(toInfluence).inverse().matrix.row(3));
    }
    if (!indices.empty()) pose.dropoff = graph.number(skinCluster->plug("dropoff").element(indices.front()));
    pose.vertices = boundVertices(graph, skinCluster);
    return pose;
}

}  // namespace host::nodes
