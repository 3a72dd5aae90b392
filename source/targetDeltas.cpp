#include "targetDeltas.h"

#include <maya/MPoint.h>
#include <maya/MString.h>

#include "common.h"

void TargetDeltas::append(int vertex, const MPoint& delta) {
    vertices.append(vertex);
    points.append(delta);
}

MPoint TargetDeltas::pointAt(unsigned int position) const {
    return position < points.length() ? points[position] : MPoint::origin;
}

TargetDeltas readDeltas(const MObject& blendShape, int target, int item) {
    return {getTargetComponents(blendShape, target, item), getTargetPoints(blendShape, target, item)};
}

MStatus initialiseEmptyDeltas(const MObject& blendShape, int target, int item, const TargetDeltas& deltas,
                              ErrorResult result) {
    if (deltas.vertices.length() == 0) {
        const MStatus status = setTargetComponents(blendShape, target, item, MIntArray(1, 0));
        if (!status) {
            return reportError("Error setting components for empty target.", result, ErrorSink::kGlobal,
                               status);
        }
    }
    if (deltas.points.length() == 0) {
        const MStatus status = setTargetPoints(blendShape, target, item, MPointArray(1, MPoint::origin));
        if (!status) {
            return reportError("Error setting points for empty target.", result, ErrorSink::kGlobal, status);
        }
    }
    return MS::kSuccess;
}

MStatus completeEmptyDeltas(const MObject& blendShape, int target, int item, TargetDeltas& deltas,
                            ErrorResult result) {
    const MStatus status = initialiseEmptyDeltas(blendShape, target, item, deltas, result);
    if (!status) return status;
    if (deltas.vertices.length() == 0) deltas.vertices.append(0);
    if (deltas.points.length() == 0) deltas.points.append(MPoint::origin);
    return status;
}

MStatus writeDeltas(const MObject& blendShape, int target, int item, const TargetDeltas& deltas,
                    ErrorResult result, const char* kind) {
    const MString start = MString("Error setting ") + kind;
    MStatus status = setTargetComponents(blendShape, target, item, deltas.vertices);
    if (!status) return reportError(start + "components.", result, ErrorSink::kGlobal, status);
    status = setTargetPoints(blendShape, target, item, deltas.points);
    if (!status) return reportError(start + "points.", result, ErrorSink::kGlobal, status);
    return status;
}
