#pragma once

#include <cstddef>
#include <vector>

#include "symmetry/plainPoints.h"

/// Mirror partners by position, as far as they follow from the positions alone. No host types.
///
/// The partner of a vertex is found on the mirror image of its mesh: take the face of the image that is
/// closest to the vertex. The partner is the first of its corners, in face order, whose image is at the same
/// place as the vertex: no farther from it than the tolerance. Only the host knows which of several faces it
/// takes as the closest. Mostly that does not matter, and no face need be asked for.

/// A mesh, the axis of its mirror plane and a tolerance. Refers to what the caller owns.
struct PartnerSpace {
    PlainMesh mesh;    // in object space
    std::size_t axis;  // 0, 1 or 2: the coordinate that changes its sign
    double tolerance;  // in object space; may be infinite, negative or not a number
};

/// The answer for a vertex that has no partner.
constexpr int kNoPartner = -1;
/// The answer for a vertex whose partner depends on the closest face.
constexpr int kUndecided = -2;

/// The partners of the listed vertices. A partner or kNoPartner is what the host would find, whichever of
/// several equally close faces it takes. One exception: where a face touches the image of a partner without
/// having it as a corner, or comes closer than the host can measure, the host may take that face, and find
/// nothing or another of its corners.
///
/// Linear cost, except that the corners of a face are sorted if they are many, and at most 60 bytes a vertex.
/// Where points crowd together so much that it would cost more, the vertices there are undecided.
/// @param asked  may be in any order; numbers that are not vertices have no partner
/// @return one answer per listed vertex: the partner, kNoPartner or kUndecided
std::vector<int> lookUpPartners(const PartnerSpace& space, const std::vector<int>& asked);
