#pragma once

#include <vector>

#include "symmetry/mirroredMesh.h"

/// The check of a mesh for symmetry by position.

/// What a check found.
struct SymmetryFindings {
    std::vector<int> asymmetric;  // vertices without partner, ascending
    /// The smallest distance between neighbours, rounded to five decimals, at the searched vertices that are
    /// not on the target side. 0 if there is none.
    double neighbourDistance = 0.0;
};

/// Searches for the partners of vertices on the mirror image of their mesh. Searches for all vertices of the
/// target side, and for those of the others that have no neighbour on the target side.
///
/// If the host has no answer for a vertex, an error is shown; the vertex is then neither paired nor listed.
/// @param targetSide  1 or -1, as planeSide returns it
/// @param restricted  the vertices to search for, ascending; empty for all
/// @param map         one entry per vertex of the mesh; where a partner is found, the entries of both are set
SymmetryFindings checkPositions(const MirroredMesh& image, int targetSide, const std::vector<int>& restricted,
                                std::vector<int>& map);
