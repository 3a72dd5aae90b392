#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "graph/graph.h"
#include "nodes/meshData.h"

/// Deformer chains: an intermediate shape (<shape>Orig) is connected to the first deformer, each deformer to
/// the next, and the last one to the visible shape's inMesh. The Orig shape's outMesh is connected to the
/// originalGeometry of every deformer.
namespace host::nodes {

/// Makes a deformer at the end of the chain of each shape. A shape without an Orig shape gets one:
/// construction history and pnts move to it, so that nothing seems to change. With legacy chains
/// (graph::Variants), a shape first gets a tweak node, which takes the pnts, and each deformer gets a
/// groupParts, a groupId and an objectSet of its own.
/// @param typeName  a node type derived from geometryFilter
/// @param shapes    mesh shapes; their positions are the deformer's geometry indices
/// @param name      empty means <type>1, ...
graph::NodeRef createDeformer(graph::Graph& graph, std::string_view typeName,
                              const std::vector<graph::NodeRef>& shapes, const std::string& name = {});

/// Makes a tweak node at the front of the shape's chain and moves the shape's pnts into it. The shape's
/// tweakLocation names the node. If the shape already has one, that one is returned.
graph::NodeRef createTweakNode(graph::Graph& graph, const graph::NodeRef& shape);
/// The geometry before a deformer's chain: its originalGeometry, or the input of the deformer if that has no
/// connection, as in a legacy chain. Null if there is none.
MeshPtr undeformedMesh(graph::Graph& graph, const graph::NodeRef& deformer, int geometryIndex);
/// Where a shape's chain enters a deformer: the deformer's input, or that of the groupParts node before it.
graph::Plug chainEntry(const graph::Graph& graph, const graph::NodeRef& deformer, int geometryIndex);
/// The tweak node that stores the shape's vertex edits; null if there is none.
graph::NodeRef tweakNodeOf(const graph::Graph& graph, const graph::NodeRef& shape);

/// The intermediate shape at the start of the shape's chain; null if there is none.
graph::NodeRef originalShape(const graph::Graph& graph, const graph::NodeRef& shape);
/// Deformers of a shape, starting with the one next to the shape. Only meshes have any.
std::vector<graph::NodeRef> deformersOf(const graph::Graph& graph, const graph::NodeRef& shape);
/// The shape at the end of the chain after a deformer's output; null if there is none.
graph::NodeRef deformedShape(const graph::Graph& graph, const graph::NodeRef& deformer, int geometryIndex);
/// Geometry index under which a deformer deforms a shape; -1 if it does not deform it.
int geometryIndexOf(const graph::Graph& graph, const graph::NodeRef& deformer, const graph::NodeRef& shape);

}  // namespace host::nodes
