#pragma once

#include <maya/MStatus.h>

#include <array>
#include <vector>

#include "symmetry/symmetryMesh.h"
#include "symmetry/symmetryTraversal.h"

/// Starts from edges that the user selected.

/// The start at one edge on the symmetry plane. Both passes begin at this edge, each in one of its faces. The
/// counts of the shell stay 0.
/// @return a failure, after a warning, for an edge with fewer than two faces
MStatus centreEdgeStart(const MDagPath& mesh, int edge, SymmetryStart& start);

/// Appends the start at two edges that mirror each other, one on each half.
///
/// The first edge uses its first face. The second edge uses the face on the same side of the edge, seen from
/// the plane. If both faces of an edge are nearer to the plane than the edge, or both farther, the sides are
/// compared along the axis in which the two faces differ most. If no start is found, a start with -1 is
/// appended and `hasErrors` is set.
/// @return a failure, after an error, if neither edge has a face
MStatus addEdgePairStart(SymmetryMesh& mesh, const std::array<int, 2>& edges, const SymmetryOptions& options,
                         std::vector<SymmetryStart>& starts, bool& hasErrors);

/// The direction of an edge in a face: +1 if end 1 follows end 0 around the face, -1 if end 0 follows end 1,
/// 0 if the ends are not neighbours in the face.
int orientationInFace(IndexRange vertices, const EdgeEnds& ends);
