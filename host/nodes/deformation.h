#pragma once

#include <map>
#include <memory>
#include <vector>

#include "graph/graph.h"
#include "nodes/meshData.h"

/// What all deformers share: everything around the arithmetic of a particular one.
namespace host::nodes {

/// One evaluation of one geometry of a deformer.
struct Deformation {
    graph::Graph& graph;
    graph::NodeRef node;
    int geometryIndex = 0;
    double envelope = 1.0;
    const MeshData& input;
    std::vector<float>& points;  // of the result, x y z per vertex; starts as the points of the input
};

/// Moves `points`. It ignores membership: vertices that the deformer does not own are restored afterwards.
using DeformFunction = void (*)(Deformation&);

/// Value of a deformer's outputGeometry element. It is the input mesh itself if the deformer changes nothing
/// (envelope 0, nodeState HasNoEffect, or equal points), and the last result if the new one is equal to it.
graph::ComputedValue computeDeformer(graph::Graph& graph, const graph::Plug& output, DeformFunction deform);

/// What a deformer remembers between evaluations. It is kept in the node's extension.
struct DeformerMemory {
    std::map<int, MeshPtr> lastOutputs;  // by geometry index
    std::shared_ptr<void> own;           // private data of the deformer's type
};
DeformerMemory& deformerMemory(graph::Node& node);

}  // namespace host::nodes
