#pragma once

#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>

#include "scene/targetDeltas.h"

/// How deltas are mirrored from one side of the symmetry plane to the other.
struct MirrorRule {
    int axis = 0;  // 0, 1 or 2
    /// Whether the source side is the one with positive coordinates.
    bool isPositiveSource = true;
    /// Whether vertices outside the source side pass their deltas to their partners, too.
    bool mirrorsBothSides = false;
    /// Whether the result replaces the source. Then the source side keeps its own deltas, and a vertex on the
    /// plane passes its delta to its partner without the part that leads away from the plane.
    bool isInPlace = false;
    double tolerance = 0.0;  // largest distance of a vertex on the plane, in object space
};

/// Deltas after mirroring, and the number of vertices that could not pass theirs to a partner.
struct MirroredDeltas {
    TargetDeltas deltas;
    unsigned int skippedCount = 0;
};

/// Mirrors deltas over the symmetry plane.
///
/// A partner is listed once for each vertex that passes its delta to it. In place, these are followed by the
/// vertices of the source side that received no delta. Entries for vertices that the mesh does not have are
/// on no side; in place they are kept unchanged. Cost is linear.
/// @param partners   one entry per vertex of `source`; -1, or any number that is no vertex, for no partner
/// @param positions  object-space points of the undeformed mesh
MirroredDeltas mirrorDeltas(const MirrorRule& rule, const TargetDeltas& source, const MIntArray& partners,
                            const MFloatPointArray& positions);
