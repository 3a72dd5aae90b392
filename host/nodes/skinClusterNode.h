#pragma once

#include <string>
#include <vector>

#include "geometry/math.h"
#include "graph/graph.h"

/// Skin clusters: which nodes influence them, and how they are made.
namespace host::nodes {

/// A DAG node that is connected to an element of a skinCluster's `matrix`.
struct Influence {
    int index = 0;  // logical index of the element
    graph::NodeRef node;
};

/// Ascending by index: the order in which influences are counted. Elements without a connected DAG node are
/// left out.
std::vector<Influence> influencesOf(const graph::NodeRef& skinCluster);
/// Logical index of a node's influence; -1 if it is not an influence.
int influenceIndex(const graph::NodeRef& skinCluster, const graph::NodeRef& node);
bool isInfluenceLocked(graph::Graph& graph, const graph::NodeRef& skinCluster, int index);
/// Locks or unlocks the weights of an influence. If a node is connected that holds the lock, it is set there.
void setInfluenceLocked(graph::Graph& graph, const graph::NodeRef& skinCluster, int index, bool isLocked);
/// Whether edits of weights keep the sum of a vertex at 1.
bool normalizesEdits(graph::Graph& graph, const graph::NodeRef& skinCluster);

/// The skin cluster of a shape's deformer chain that is nearest to the shape; null if there is none.
graph::NodeRef skinClusterOf(const graph::Graph& graph, const graph::NodeRef& shape);
/// The shape that a skin cluster deforms; null if there is none.
graph::NodeRef skinnedShape(const graph::Graph& graph, const graph::NodeRef& skinCluster);

struct SkinOptions {
    int maxInfluences = 5;  // of the initial weights of a vertex
    bool keepsMaxInfluences = false;
    double dropoff = 4.0;
    bool leavesOutUnused = false;  // joints that no vertex gets a weight of are not bound
};

/// Binds a mesh shape to joints or other transforms in their current positions. This adds a skinCluster at
/// the end of the shape's deformer chain, with weights by distance, and locks the shape's transform.
/// @param name  empty means skinCluster1, ...
graph::NodeRef createSkinCluster(graph::Graph& graph, const graph::NodeRef& shape,
                                 const std::vector<graph::NodeRef>& joints, const SkinOptions& options,
                                 const std::string& name);

/// Locks what moves the transform of a skinned shape, as binding does, or unlocks it.
void setPlaceLocked(graph::Graph& graph, graph::Node& transform, bool isLocked);

/// Adds an influence without weights, bound in its current position.
/// @return its logical index
int addInfluence(graph::Graph& graph, const graph::NodeRef& skinCluster, const graph::NodeRef& joint);
/// Removes an influence. The other influences of each vertex share its weight, except locked ones.
void removeInfluence(graph::Graph& graph, const graph::NodeRef& skinCluster, int index);

/// Where influences and vertices were when they were bound, in world space.
struct BindPose {
    std::vector<geometry::Vec3> influences;  // one per element of `matrix`
    std::vector<geometry::Vec3> vertices;    // without deformation
    double dropoff = 4.0;

    /// Distances of a vertex from each influence.
    std::vector<double> distances(int vertex) const;
};
BindPose bindPoseOf(graph::Graph& graph, const graph::NodeRef& skinCluster);

}  // namespace host::nodes
