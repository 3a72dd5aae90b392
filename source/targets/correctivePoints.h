#pragma once

#include <maya/MFloatPointArray.h>

/// A deformation as probing shows it: its points, and where they go when every rest point moves by one unit.
/// All arrays have one entry per vertex of the deformed mesh.
struct ProbedDeformation {
    MFloatPointArray deformed;
    MFloatPointArray moved[3];  // the deformed points after a step along x, along y, along z
};

/// Moves rest points to where the deformation takes them to the points of a sculpt.
///
/// The deformation is taken as linear around each vertex. A vertex whose sculpted point is the deformed one
/// stays. Where the deformation is singular (a flat scale, weights that cancel out, a point that does not
/// follow the rest shape) the host's inverse of a singular matrix is used, whose result means nothing; where
/// that is not finite the vertex stays. Linear.
/// @param sculpt  wanted points; vertices that it or the deformation lacks stay
/// @param points  rest points before, corrective points after
/// @return number of vertices with a sculpted offset that no inverse leads back
unsigned int solveCorrective(const ProbedDeformation& deformation, const MFloatPointArray& sculpt,
                             MFloatPointArray& points);
