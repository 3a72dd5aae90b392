#pragma once

#include <string>
#include <vector>

#include "graph/graph.h"
#include "nodes/meshData.h"

/// Mesh shapes. A shape's geometry is its `inMesh` (from a connection, or stored there) plus the offsets in
/// its `pnts`. Everything is in object space.
namespace host::nodes {

/// The evaluated mesh; null for a mesh without geometry, and for any other shape.
MeshPtr meshOf(graph::Graph& graph, const graph::NodeRef& shape);
/// The mesh of `inMesh`, without pnts.
MeshPtr incomingMesh(graph::Graph& graph, const graph::NodeRef& shape);

/// Makes a transform and its shape. The shape is named after the transform, with "Shape" before the number at
/// its end. It is in no shading group.
/// @param transformName  made unique; empty means polySurface1, polySurface2, ...
/// @return the shape
graph::NodeRef createMesh(graph::Graph& graph, geometry::Mesh mesh, const std::string& transformName,
                          graph::Node* parent);
/// Makes a shape below an existing transform. @param shapeName  empty means named after the transform
graph::NodeRef createMeshShape(graph::Graph& graph, geometry::Mesh mesh, const std::string& shapeName,
                               graph::Node& transform);
/// "pCubeShape1" for "pCube1".
std::string shapeNameFor(const std::string& transformName);

/// Replaces the geometry of a shape without incoming connection, topology included. Clears pnts.
void setMesh(graph::Graph& graph, const graph::NodeRef& shape, geometry::Mesh mesh);
/// Gives a shape new points, x y z per vertex, as many as it has. Without an incoming connection they replace
/// the stored ones, and pnts are cleared. With one, their difference to the incoming mesh is stored as pnts.
void setMeshPoints(graph::Graph& graph, const graph::NodeRef& shape, std::vector<float> xyz);
/// Adds object-space offsets to single vertices, as an edit of the shape does: in the tweak node of its
/// deformer chain if it has one, else in pnts. Numbers that are not vertices are left out.
/// @param offsets  one per entry of `vertices`
void offsetVertices(graph::Graph& graph, const graph::NodeRef& shape, const std::vector<int>& vertices,
                    const std::vector<geometry::Vec3>& offsets);

/// Copies the evaluated mesh with its colour sets: without history, intermediate flag and shading group. The
/// copy is below `parentTransform`. If that is null, it is below a new top-level transform, named like the
/// source's with the next free number.
/// @return the new shape
graph::NodeRef copyMesh(graph::Graph& graph, const graph::NodeRef& shape, graph::Node* parentTransform);

/// The name for a copy of a transform. It must still be made unique.
std::string copyName(graph::Graph& graph, const graph::Node& original);

bool isIntermediate(const graph::Graph& graph, const graph::Node& node);
void setIntermediate(graph::Graph& graph, const graph::NodeRef& shape, bool isIntermediate);
/// The only visible (not intermediate) shape below a transform, or the shape itself; null if there is none or
/// several.
graph::NodeRef shapeOf(const graph::Graph& graph, const graph::NodeRef& node);

}  // namespace host::nodes
