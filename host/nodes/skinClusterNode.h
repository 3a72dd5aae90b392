#pragma once

#include <string>
#include <vector>

#include "geometry/math.h"
#include "graph/graph.h"

/// Skin clusters: which nodes influence them, and how they come about.
namespace host::nodes {

/// A DAG node that feeds an element of a skinCluster's `matrix`.
struct Influence {
    int index = 0;  // logical index of the element
    graph::NodeRef node;
};

/// Ascending by index: the order in which influences are counted. Elements that no DAG node feeds are none.
std::vector<Influence> influencesOf(const graph::NodeRef& skinCluster);
/// Logical index of a node's influence; -1 when it is none.
int influenceIndex(const graph::NodeRef& skinCluster, const graph::NodeRef& node);
bool isInfluenceLocked(graph::Graph& graph, const graph::NodeRef& skinCluster, int index);
/// Locks the weights of an influence, on the node that says so where one is connected.
void setInfluenceLocked(graph::Graph& graph, const graph::NodeRef& skinCluster, int index, bool isLocked);
/// Whether edits of weights keep the sum of a vertex at 1.
bool normalizesEdits(graph::Graph& graph, const graph::NodeRef& skinCluster);

/// The skin cluster in the deformer chain of a shape that stands nearest to it; null when there is none.
graph::NodeRef skinClusterOf(const graph::Graph& graph, const graph::NodeRef& shape);
/// The shape that a skin cluster deforms; null when there is none.
graph::NodeRef skinnedShape(const graph::Graph& graph, const graph::NodeRef& skinCluster);

struct SkinOptions {
    int maxInfluences = 5;  // of the first weights of a vertex
    bool keepsMaxInfluences = false;
    double dropoff = 4.0;
};

/// Binds a mesh shape to joints or other transforms as they stand now: a skinCluster at the end of the
/// shape's deformer chain, weights by distance, and the shape's transform locked in its place.
/// @param name  empty means skinCluster1, ...
graph::NodeRef createSkinCluster(graph::Graph& graph, const graph::NodeRef& shape,
                                 const std::vector<graph::NodeRef>& joints, const SkinOptions& options,
                                 const std::string& name);

/// Adds an influence, bound as it stands now, without weights. @return its logical index
int addInfluence(graph::Graph& graph, const graph::NodeRef& skinCluster, const graph::NodeRef& joint);
/// Takes an influence out; the others of each vertex share its weight as far as they are not locked.
void removeInfluence(graph::Graph& graph, const graph::NodeRef& skinCluster, int index);

/// Where influences and vertices stood when they were bound, in world space.
struct BindPose {
    std::vector<geometry::Vec3> influences;  // one per element of `matrix`
    std::vector<geometry::Vec3> vertices;    // without deformation
    double dropoff = 4.0;

    /// Of a vertex from each influence.
    std::vector<double> distances(int vertex) const;
};
BindPose bindPoseOf(graph::Graph& graph, const graph::NodeRef& skinCluster);

}  // namespace host::nodes
