#pragma once

#include <vector>

#include "symmetry/mirroredMesh.h"

/// The check of a mesh for symmetry by position.

/// What a check found.
struct SymmetryFindings {
    std::vector<int> asymmetric;  // vertices without partner, ascending
    /// How near neighbours stand, rounded, at the vertices that were looked up and do not lie on
    /// the target side; 0 when there is none.
    double neighbourDistance = 0.0;
};

/// Looks vertices up on the mirror image of their mesh. Those of the target side are looked up, and
/// of the others those without neighbour on it.
///
/// An error is shown for each vertex for which the host has no answer; it counts as nothing.
/// @param targetSide  1 or -1, as planeSide tells sides
/// @param restricted  which vertices may be looked up, ascending; empty for all
/// @param map         a number per vertex of the mesh: that of its partner, where one was found
SymmetryFindings checkPositions(const MirroredMesh& image, int targetSide, const std::vector<int>& restricted,
                                std::vector<int>& map);
