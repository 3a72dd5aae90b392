#pragma once

#include <functional>
#include <string>
#include <vector>

#include "commands/commandSupport.h"
#include "commands/transformSupport.h"
#include "geometry/mesh.h"
#include "nodes/meshData.h"

/// What the commands that work on meshes share.
namespace host::commands {

/// The visible mesh shape of a transform, or the shape itself.
Found<graph::NodeRef> meshShapeOf(const graph::Graph& graph, const graph::NodeRef& node);
/// The same by name.
Found<graph::NodeRef> findMeshShape(const graph::Graph& graph, const std::string& name);

/// The mesh of a shape, evaluated; an error for a shape without geometry.
Found<nodes::MeshPtr> evaluatedMesh(graph::Graph& graph, const graph::NodeRef& shape);

/// A copy of a shape's mesh in world space, at one of the shape's places.
geometry::Mesh meshInWorld(graph::Graph& graph, const Placed& shape, const geometry::Mesh& mesh);

/// The objects of a command line, or the selection, as mesh shapes: each whole shape once, components of one
/// kind of one shape as one item, without components that the mesh no longer has. Fails if there are none,
/// and for objects that are not meshes.
/// @param command  name of the calling command, for its own error texts
Found<std::vector<graph::SelectionItem>> meshObjects(CommandContext& context,
                                                     const ParsedArguments& arguments,
                                                     const std::string& command);

/// The same, where each of a shape's places counts as a shape of its own.
Found<std::vector<graph::SelectionItem>> placedMeshObjects(CommandContext& context,
                                                           const ParsedArguments& arguments,
                                                           const std::string& command);

/// Number of components of a kind.
int componentCount(const geometry::Topology& topology, graph::ComponentKind kind);

/// Vertices of components, ascending: vertices themselves, ends of edges, corners of faces. Components that
/// the mesh, which may be null, does not have are left out: a selection can be older than the mesh.
std::vector<int> verticesOf(const nodes::MeshPtr& mesh, const graph::Component& component);

/// Calls `visit(shape, mesh)` for each visible mesh at and below a node, at each of its places there. Places
/// that are not told apart (graph::kMaxPaths) are left out.
void visitMeshes(graph::Graph& graph, const Placed& node,
                 const std::function<void(const Placed&, const geometry::Mesh&)>& visit);

/// A mesh shape below a new transform, still without geometry.
/// @param transformName  made unique
graph::NodeRef createEmptyMesh(graph::Graph& graph, const std::string& transformName);

/// The last step of every command that makes a mesh: puts the shape into initialShadingGroup.
void shadeInitially(graph::Graph& graph, const graph::NodeRef& shape);

}  // namespace host::commands
