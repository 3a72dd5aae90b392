#pragma once

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

/// The vertex order map of a mesh: a hidden integer array on the shape, with one entry per vertex.
///
/// Entry v is the mirror partner of vertex v. It is v itself for a vertex on the symmetry plane, and -1 for a
/// vertex without partner. A map whose length is not the vertex count of the mesh cannot be used. Writing a
/// map cannot be undone.

/// The entry of a vertex without partner.
constexpr int kUnmapped = -1;

/// The error of commands that need a map if the mesh has none.
constexpr const char* kMapError = "Vertex order map attribute is not available.";

/// The name of the plug that holds the map. The mesh need not have one.
MString vertexOrderMapName(const MDagPath& mesh);

/// The plug that holds the map.
/// @return a failure for a mesh without a map
MStatus findVertexOrderMap(const MDagPath& mesh, MPlug& plug);

/// The stored map; empty if the attribute was never set.
MIntArray readVertexOrderMap(const MPlug& plug);

/// The partner of each listed vertex in a map, in the order given.
/// @return one entry per listed vertex; kUnmapped for a vertex without partner or outside the map
MIntArray partnersInMap(const MIntArray& map, const MIntArray& vertices);

/// Reads the map of a mesh, to be used on a mesh with this many vertices.
/// @param error  there is no map, or it was made for another number of vertices
bool readUsableVertexOrderMap(const MDagPath& mesh, unsigned int vertexCount, MIntArray& map, MString& error);

/// Replaces the map. Adds the attribute first if the mesh has none.
MStatus writeVertexOrderMap(const MDagPath& mesh, const MIntArray& map);
