#pragma once

#include <maya/MStatus.h>

#include <array>
#include <vector>

#include "symmetry/symmetryMesh.h"
#include "symmetry/symmetryTraversal.h"

/// Starts from edges that the user selected.

/// The start at one edge on the symmetry plane: both passes begin at it, each in one of its faces. The
/// counts of the shell are left at 0.
/// @return a failure, after a warning, for an edge that has not two faces
MStatus centreEdgeStart(const MDagPath& mesh, int edge, SymmetryStart& start);

/// Appends the start at two edges that mirror each other, one on either half.
///
/// Of each edge's faces the one is taken that lies on the same side of its edge as the other's, seen from
/// the plane; an edge that lies nearer the plane than both its faces, or farther from it, is judged along
/// the direction from one face to the other. When no start is found, one with -1 is appended, and
/// `hasErrors` is set.
/// @return a failure, after an error, when neither edge has a face
MStatus addEdgePairStart(SymmetryMesh& mesh, const std::array<int, 2>& edges, const SymmetryOptions& options,
                         std::vector<SymmetryStart>& starts, bool& hasErrors);

/// How the second pass has to turn: +1 when end 1 follows end 0 around the face, -1 when it precedes it, 0
/// when they are no neighbours in it.
int orientationInFace(IndexRange vertices, const EdgeEnds& ends);
