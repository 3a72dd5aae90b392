#include "blendShapeSetInbetweenPosition.h"

#include <maya/MArgDatabase.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MString.h>

#include "commandSupport.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{blendShapeSetInbetweenPosition::kName,
                                     "Moves an in-between target to a new position.",
                                     {{"-i", "-index", MSyntax::kLong, "index of the source target channel"},
                                      {"-sp", "-sourcePosition", MSyntax::kLong, "current position"},
                                      {"-tp", "-targetPosition", MSyntax::kLong, "result position"}},
                                     "dv_blendShapeSetInbetweenPosition -i <int> -sp <int> -tp <int>",
                                     "int"};
    return command;
}

}  // namespace

void* blendShapeSetInbetweenPosition::creator() {
    return new blendShapeSetInbetweenPosition();
}

MSyntax blendShapeSetInbetweenPosition::newSyntax() {
    return makeSyntax(info());
}

MStatus blendShapeSetInbetweenPosition::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    readFlag(database, "-i", target_);
    readFlag(database, "-sp", oldItem_);
    readFlag(database, "-tp", newItem_);
    MObject blendShape;
    const MStatus status = getBlendShapeNode(database, ErrorResult::kZero, blendShape);
    if (!status) return status;
    blendShape_ = blendShape;
    isChecked_ = true;
    return redoIt();
}

MStatus blendShapeSetInbetweenPosition::redoIt() {
    // A call that answered -help or failed a check may still be queued.
    if (!isChecked_) return MS::kSuccess;
    hasMoved_ = false;
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull()) {
        return reportError(kBlendShapeGone, ErrorResult::kZero, ErrorSink::kGlobal, MS::kFailure);
    }
    deltas_ = readDeltas(blendShape, target_, oldItem_);
    const MStatus status = initialiseEmptyDeltas(blendShape, target_, oldItem_, deltas_, ErrorResult::kZero);
    if (!status) return status;
    removeItem(blendShape, oldItem_);
    hasMoved_ = true;
    // A failure is not passed on: the host would not queue the call, and nothing could bring the deltas back.
    if (writeDeltas(blendShape, target_, newItem_, deltas_, ErrorResult::kZero)) setResult(1);
    return MS::kSuccess;
}

/// Whether that worked is not known.
void blendShapeSetInbetweenPosition::removeItem(const MObject& blendShape, int item) const {
    MGlobal::executeCommand("removeMultiInstance -b 1 " + MFnDependencyNode(blendShape).name() +
                                ".it[0].itg[" + target_ + "].iti[" + item + "]",
                            false, false);
}

MStatus blendShapeSetInbetweenPosition::undoIt() {
    const MObject blendShape = aliveObject(blendShape_);
    if (!hasMoved_ || blendShape.isNull()) return MS::kSuccess;
    hasMoved_ = false;
    removeItem(blendShape, newItem_);
    return writeDeltas(blendShape, target_, oldItem_, deltas_, ErrorResult::kZero);
}

bool blendShapeSetInbetweenPosition::isUndoable() const {
    return true;
}
