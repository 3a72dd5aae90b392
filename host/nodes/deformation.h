#pragma once

#include <map>
#include <memory>
#include <vector>

#include "graph/graph.h"
#include "nodes/meshData.h"

/// What all deformers share: the frame around the arithmetic of one of them.
namespace host::nodes {

/// One evaluation of one geometry of a deformer.
struct Deformation {
    graph::Graph& graph;
    graph::NodeRef node;
    int geometryIndex = 0;
    double envelope = 1.0;
    const MeshData& input;
    std::vector<float>& points;  // of the result, x y z per vertex; the input's to begin with
};

/// Moves `points`. Looks at no membership: vertices that the deformer does not own are put back afterwards.
using DeformFunction = void (*)(Deformation&);

/// Value of a deformer's outputGeometry element. The input mesh itself when the deformer changes nothing
/// (envelope 0, nodeState HasNoEffect, or equal points), the last result where that is still true.
graph::ComputedValue computeDeformer(graph::Graph& graph, const graph::Plug& output, DeformFunction deform);

/// What a deformer remembers between evaluations; lives in its node's extension.
struct DeformerMemory {
    std::map<int, MeshPtr> lastOutputs;  // by geometry index
    std::shared_ptr<void> own;           // of the deformer's type
};
DeformerMemory& deformerMemory(graph::Node& node);

/// Which of a mesh's vertices a component list names; runs that end before they start ("vtx[*]") name all.
std::vector<bool> verticesIn(const graph::ComponentListData& components, int vertexCount);

}  // namespace host::nodes
