#pragma once

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

/// The vertex order map of a mesh: a hidden integer array on the shape, one entry per vertex.
///
/// Entry v is the vertex that mirrors v, v itself for a vertex on the symmetry plane, -1 for one
/// without partner. A map whose length is not the mesh's vertex count is of no use. Writing one is
/// not recorded for undo.

/// The entry of a vertex without partner.
constexpr int kUnmapped = -1;

/// The error of commands that need the map of a mesh without one.
constexpr const char* kMapError = "Vertex order map attribute is not available.";

/// The name of the plug that holds the map, whether the mesh has one or not.
MString vertexOrderMapName(const MDagPath& mesh);

/// The plug that holds the map.
/// @return a failure for a mesh without a map
MStatus findVertexOrderMap(const MDagPath& mesh, MPlug& plug);

/// The stored map; empty when the attribute was never set.
MIntArray readVertexOrderMap(const MPlug& plug);

/// The partner of each listed vertex by a map, in the order given.
/// @return one entry per listed vertex; kUnmapped for a vertex without partner or outside the map
MIntArray partnersInMap(const MIntArray& map, const MIntArray& vertices);

/// Reads the map of a mesh for work on a mesh that has this many vertices.
/// @param error  that there is no map, or that it was made for another number of vertices
bool readUsableVertexOrderMap(const MDagPath& mesh, unsigned int vertexCount, MIntArray& map, MString& error);

/// Replaces the map; a mesh that has none gets the attribute first.
MStatus writeVertexOrderMap(const MDagPath& mesh, const MIntArray& map);
