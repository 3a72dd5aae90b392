#pragma once

#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPointArray.h>

#include "common.h"

/// Bare loops of host calls on an item of target 0: what access to target data costs at least.

/// The plug inputTarget[0].inputTargetGroup[0].
MPlug targetGroup(const MObject& blendShape);

void writeDeltasBare(const MObject& blendShape, const MIntArray& vertices, const MPointArray& points,
                     int item = kFullItem);

/// Appends the deltas of the full item to both lists.
void readDeltasBare(const MObject& blendShape, MIntArray& vertices, MPointArray& points);
