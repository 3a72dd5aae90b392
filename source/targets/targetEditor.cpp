#include "targets/targetEditor.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MString.h>

#include "common.h"
#include "scene/aliveObject.h"

CallOutcome TargetEditor::checkTarget(int target) const {
    if (target >= 0 && hasTarget(blendShape_, target)) return CallOutcome();
    return CallOutcome::refused(MFnDependencyNode(blendShape_).name() + " has no target " + target + ".");
}

CallOutcome TargetEditor::checkItem(int target, int item) const {
    CallOutcome outcome = checkTarget(target);
    if (!outcome.isDone() || item == kFullItem || hasTargetItem(blendShape_, target, item)) return outcome;
    return CallOutcome::refused(MFnDependencyNode(blendShape_).name() + " has no item " + item +
                                " in target " + target + ".");
}

TargetDeltas TargetEditor::read(int target, int item) {
    if (isTargetItemLive(blendShape_, target, item)) evaluate();
    TargetDeltas deltas{getTargetComponents(blendShape_, target, item),
                        getTargetPoints(blendShape_, target, item)};
    const bool mayComeLate = deltas.vertices.length() == 0 && hasTargetItem(blendShape_, target, item);
    if (hasEvaluated_ || !mayComeLate) return deltas;
    evaluate();
    return {getTargetComponents(blendShape_, target, item), getTargetPoints(blendShape_, target, item)};
}

/// Once is enough: what this object writes does not change target meshes.
void TargetEditor::evaluate() {
    if (!hasEvaluated_) evaluateDeformer(blendShape_);
    hasEvaluated_ = true;
}

CallOutcome TargetEditor::initialiseEmpty(int target, int item, const TargetDeltas& deltas) {
    if (deltas.vertices.length() > 0 && deltas.points.length() > 0) return CallOutcome();
    warnOfLiveMesh(target, item);
    if (deltas.vertices.length() == 0) {
        const MStatus status = setTargetComponents(blendShape_, target, item, MIntArray(1, 0));
        if (!status) return CallOutcome::failed("Error setting components for empty target.", status);
    }
    if (deltas.points.length() == 0) {
        const MStatus status = setTargetPoints(blendShape_, target, item, MPointArray(1, MPoint::origin));
        if (!status) return CallOutcome::failed("Error setting points for empty target.", status);
    }
    return CallOutcome();
}

CallOutcome TargetEditor::completeEmpty(int target, int item, TargetDeltas& deltas) {
    CallOutcome outcome = initialiseEmpty(target, item, deltas);
    if (!outcome.isDone()) return outcome;
    if (deltas.vertices.length() == 0) deltas.vertices.append(0);
    if (deltas.points.length() == 0) deltas.points.append(MPoint::origin);
    return outcome;
}

CallOutcome TargetEditor::write(int target, int item, const TargetDeltas& deltas, const char* kind) {
    warnOfLiveMesh(target, item);
    const MString start = MString("Error setting ") + kind;
    MStatus status = setTargetComponents(blendShape_, target, item, deltas.vertices);
    if (!status) return CallOutcome::failed(start + "components.", status);
    status = setTargetPoints(blendShape_, target, item, deltas.points);
    return status ? CallOutcome() : CallOutcome::failed(start + "points.", status);
}

void TargetEditor::warnOfLiveMesh(int target, int item) {
    if (hasWarned_ || !isTargetItemLive(blendShape_, target, item)) return;
    hasWarned_ = true;
    MGlobal::displayWarning(
        MString("A mesh is connected to item ") + item + " of target " + target + " of " +
        MFnDependencyNode(blendShape_).name() +
        ". The new deltas last until that mesh changes, and are not saved with the scene. Delete " +
        "the target mesh first to keep them.");
}

void SavedItem::save(TargetEditor& targets, int target, int item) {
    MObject blendShape = targets.blendShape();
    blendShape_ = blendShape;
    target_ = target;
    item_ = item;
    existed_ = hasTargetItem(blendShape, target, item);
    hadGroup_ = hasTargetGroup(blendShape, target);
    deltas_ = targets.read(target, item);
    isSaved_ = true;
}

CallOutcome SavedItem::restore() {
    const MObject blendShape = aliveObject(blendShape_);
    if (!isSaved_ || blendShape.isNull()) return CallOutcome();
    isSaved_ = false;
    if (!existed_ && item_ != kFullItem) {
        removeTargetItem(blendShape, target_, item_);
        if (!hadGroup_) removeTargetGroup(blendShape, target_);
        return CallOutcome();
    }
    TargetEditor targets(blendShape);
    targets.keepQuiet();
    return targets.write(target_, item_, deltas_);
}
