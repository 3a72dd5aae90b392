#pragma once

#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>

#include "commandSupport.h"

/// The deltas of a target item as the commands edit them: with the errors that they share.

/// Deltas of an item: vertex indices and points (dx, dy, dz, 1), aligned by position.
struct TargetDeltas {
    MIntArray vertices;
    MPointArray points;

    void append(int vertex, const MPoint& delta);
    /// The delta at a position; zero beyond the points, of which damaged items have too few.
    MPoint pointAt(unsigned int position) const;
};

/// The deltas of an item; empty for one that was never written.
TargetDeltas readDeltas(const MObject& blendShape, int target, int item);

/// Gives an item what its lists lack to be valid: a list that is empty in `deltas` becomes vertex
/// 0, or one zero delta, in the deformer.
/// @param deltas  what readDeltas gave for the item; stays as it is
/// @param result  set after an error
/// @return the status of the write that failed, after the error was shown
MStatus initialiseEmptyDeltas(const MObject& blendShape, int target, int item, const TargetDeltas& deltas,
                              ErrorResult result);

/// The same, for deltas that are to be worked on: `deltas` becomes what the deformer holds then.
MStatus completeEmptyDeltas(const MObject& blendShape, int target, int item, TargetDeltas& deltas,
                            ErrorResult result);

/// Replaces the deltas of an item.
/// @param kind    which deltas these are, for the errors: "" or a word with a blank after it
/// @param result  set after an error
/// @return the status of the write that failed, after the error was shown
MStatus writeDeltas(const MObject& blendShape, int target, int item, const TargetDeltas& deltas,
                    ErrorResult result, const char* kind = "");
