#pragma once

#include <vector>

#include "symmetry/positionPartners.h"

/// The check of a mesh for symmetry by position.

/// What a check found.
struct SymmetryFindings {
    std::vector<int> tested;      // the vertices whose partners were searched for, ascending
    std::vector<int> partners;    // of the tested vertices, as PositionPartners finds them
    std::vector<int> asymmetric;  // tested vertices without partner, ascending
    /// The smallest distance between neighbours, rounded to five decimals, at the tested vertices that are
    /// not on the target side. 0 if there is none.
    double neighbourDistance = 0.0;
};

/// Searches for the partners of vertices: all of the target side, and those of the others that have no
/// neighbour on the target side. Does not tell yet which are asymmetric.
/// @param targetSide  1 or -1, as planeSide returns it
/// @param restricted  the vertices that may be tested, ascending; empty for all
/// @return a failure if the host cannot search
MStatus checkPositions(PositionPartners& search, int targetSide, const std::vector<int>& restricted,
                       SymmetryFindings& findings);

/// Enters the pairs of a check in a map, in the order of the tested vertices. If the host has no answer for a
/// vertex, an error is shown; the vertex is then neither paired nor listed as asymmetric.
/// @param map  one entry per vertex of the mesh; where a partner is found, the entries of both are set
void enterPartners(SymmetryFindings& findings, std::vector<int>& map);
