#pragma once

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>

/// The vertex order map of a mesh: a hidden integer array on the shape, one entry per vertex.
///
/// Entry v is the vertex that mirrors v, v itself for a vertex on the symmetry plane, -1 for one without
/// partner. A map whose length is not the mesh's vertex count is of no use. Neither of these is recorded
/// for undo.

/// The entry of a vertex without partner.
constexpr int kUnmapped = -1;

/// The plug that holds the map.
/// @return a failure for a mesh without a map
MStatus findVertexOrderMap(const MDagPath& mesh, MPlug& plug);

/// The stored map; empty when the attribute was never set.
MIntArray readVertexOrderMap(const MPlug& plug);

/// Replaces the map; a mesh that has none gets the attribute first.
MStatus writeVertexOrderMap(const MDagPath& mesh, const MIntArray& map);
