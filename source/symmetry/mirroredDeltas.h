#pragma once

#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>

#include "scene/targetDeltas.h"

/// What the mirroring of deltas makes of the two sides of the symmetry plane.
struct MirrorRule {
    int axis = 0;  // 0, 1 or 2
    /// Whether the source side is the one with positive coordinates.
    bool isPositiveSource = true;
    /// Whether vertices beside the source side pass their deltas to their partners, too.
    bool mirrorsBothSides = false;
    /// Whether the source is the target that is written: then the source side keeps its own deltas,
    /// and vertices on the plane lose the part of theirs that leads away from it.
    bool isInPlace = false;
    double tolerance = 0.0;  // how far beside the plane a vertex counts as lying on it, in object space
};

/// Deltas after mirroring, and how many vertices had no partner to pass theirs to.
struct MirroredDeltas {
    TargetDeltas deltas;
    unsigned int skippedCount = 0;
};

/// Mirrors deltas over the symmetry plane.
///
/// Each partner is listed as often as a vertex passes its delta to it; in place, vertices of the
/// source side follow that no vertex passed a delta to. Entries beyond the mesh have no side: in
/// place they stay as they are. Linear.
/// @param partners   one entry per vertex of `source`; -1, or any number beyond the mesh, for none
/// @param positions  object-space points of the undeformed mesh
MirroredDeltas mirrorDeltas(const MirrorRule& rule, const TargetDeltas& source, const MIntArray& partners,
                            const MFloatPointArray& positions);
