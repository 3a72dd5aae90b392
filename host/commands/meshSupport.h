#pragma once

#include <string>
#include <vector>

#include "commands/commandSupport.h"
#include "geometry/mesh.h"
#include "nodes/meshData.h"

/// What the commands that work on meshes share.
namespace host::commands {

/// The visible mesh shape that a transform or shape stands for.
Found<graph::NodeRef> meshShapeOf(const graph::Graph& graph, const graph::NodeRef& node);
/// The same by name.
Found<graph::NodeRef> findMeshShape(const graph::Graph& graph, const std::string& name);

/// The mesh of a shape, evaluated; an error for a shape without geometry.
Found<nodes::MeshPtr> evaluatedMesh(graph::Graph& graph, const graph::NodeRef& shape);

/// The objects of a command line, or the selection, as mesh shapes: each whole shape once, and components of
/// one kind of one shape as one item, without those that the mesh has no more. Fails when there is none and
/// for what is no mesh.
/// @param command  name of the calling command, for its own error texts
Found<std::vector<graph::SelectionItem>> meshObjects(CommandContext& context,
                                                     const ParsedArguments& arguments,
                                                     const std::string& command);

/// How many components of a kind there are.
int componentCount(const geometry::Topology& topology, graph::ComponentKind kind);

/// Vertices of components, ascending: vertices themselves, ends of edges, corners of faces. What the mesh,
/// which may be null, does not have is left out: a selection can be older than the mesh.
std::vector<int> verticesOf(const nodes::MeshPtr& mesh, const graph::Component& component);

/// A mesh shape below a new transform, with its geometry still to come.
/// @param transformName  made unique
graph::NodeRef createEmptyMesh(graph::Graph& graph, const std::string& transformName);

/// What every command that makes a mesh does at its end: the shape goes into initialShadingGroup.
void shadeInitially(graph::Graph& graph, const graph::NodeRef& shape);

}  // namespace host::commands
