#pragma once

#include <maya/MFloatPointArray.h>

/// A deformation found by probing: the deformed points, and where they go when all rest points move by one
/// unit. All arrays have one entry per vertex of the deformed mesh.
struct ProbedDeformation {
    MFloatPointArray deformed;
    MFloatPointArray moved[3];  // the deformed points after a step along x, y, z
};

/// Moves rest points so that the deformation takes them to the points of a sculpt.
///
/// The deformation is treated as linear around each vertex. A vertex whose sculpted point equals the deformed
/// point stays. The deformation can be singular: a flat scale, weights that cancel out, a point that does not
/// follow the rest shape. Then the host's inverse of the singular matrix is used, and the result has no
/// meaning; if it is not finite, the vertex stays. Cost is linear.
/// @param sculpt  wanted points; vertices that it or the deformation lacks stay
/// @param points  rest points before, corrective points after
/// @return number of vertices with a sculpted offset for which there is no inverse
unsigned int solveCorrective(const ProbedDeformation& deformation, const MFloatPointArray& sculpt,
                             MFloatPointArray& points);
