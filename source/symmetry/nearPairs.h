#pragma once

#include <functional>
#include <vector>

#include "symmetry/plainPoints.h"

/// What two distances must differ by, as a part of the coordinates, to tell which is smaller: the host may
/// measure in single precision.
constexpr double kPrecision = 1e-5;

/// A point with one vertex near it. No host types.
struct NearPair {
    int number;  // of the point
    int vertex;
    float distance;       // between them, with all margins
    bool isAlone = true;  // no face without the vertex is within the distance of the point
};

/// Gives the point of a number.
using PointOfNumber = std::function<PlainPoint(int number)>;

/// Sets isAlone for all pairs: looks for faces that could be closer to a point than the faces around its
/// vertex are. Where faces or points crowd together so much that this is not found in linear time, a pair
/// does not count as alone.
void judgeNearPairs(const PlainMesh& mesh, const PointOfNumber& pointOf, std::vector<NearPair>& pairs);
