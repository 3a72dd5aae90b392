#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "graph/graph.h"
#include "nodes/meshData.h"

/// Deformer chains: an intermediate shape (<shape>Orig) feeds the first deformer, each deformer the next, the
/// last one the visible shape's inMesh. The Orig shape's outMesh goes to every deformer's originalGeometry.
namespace host::nodes {

/// Makes a deformer at the end of the chain of each shape, which gets an Orig shape when it has none.
/// Construction history and pnts move to the Orig shape, so that nothing seems to change. With legacy chains
/// (graph::Variants) a shape gets a tweak node first, which takes the pnts, and each deformer a groupParts, a
/// groupId and an objectSet of its own.
/// @param typeName  a node type derived from geometryFilter
/// @param shapes    mesh shapes; their positions are the deformer's geometry indices
/// @param name      empty means <type>1, ...
graph::NodeRef createDeformer(graph::Graph& graph, std::string_view typeName,
                              const std::vector<graph::NodeRef>& shapes, const std::string& name = {});

/// Makes a tweak node at the front of the shape's chain and moves the shape's pnts into it. The shape's
/// tweakLocation names it. When the shape has one already that one is returned.
graph::NodeRef createTweakNode(graph::Graph& graph, const graph::NodeRef& shape);
/// The geometry before a deformer's chain: its originalGeometry, or where nothing feeds that, as in a legacy
/// chain, what comes into the deformer. Null when there is none.
MeshPtr undeformedMesh(graph::Graph& graph, const graph::NodeRef& deformer, int geometryIndex);
/// Where a shape's chain enters a deformer: its input, or that of the groupParts node in front of it.
graph::Plug chainEntry(const graph::Graph& graph, const graph::NodeRef& deformer, int geometryIndex);
/// The tweak node that edits of the shape go into; null when there is none.
graph::NodeRef tweakNodeOf(const graph::Graph& graph, const graph::NodeRef& shape);

/// The intermediate shape at the start of the shape's chain; null when there is none.
graph::NodeRef originalShape(const graph::Graph& graph, const graph::NodeRef& shape);
/// Deformers of a shape, the one next to the shape first.
std::vector<graph::NodeRef> deformersOf(const graph::Graph& graph, const graph::NodeRef& shape);
/// The shape at the end of the chain that a deformer's output feeds; null when it feeds none.
graph::NodeRef deformedShape(const graph::Graph& graph, const graph::NodeRef& deformer, int geometryIndex);
/// Geometry index under which a deformer deforms a shape; -1 when it does not.
int geometryIndexOf(const graph::Graph& graph, const graph::NodeRef& deformer, const graph::NodeRef& shape);

}  // namespace host::nodes
