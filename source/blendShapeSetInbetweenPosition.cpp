#include "blendShapeSetInbetweenPosition.h"

#include <maya/MArgDatabase.h>
#include <maya/MFnDependencyNode.h>

#include "scene/aliveObject.h"

const CommandInfo& blendShapeSetInbetweenPosition::info() {
    static const CommandInfo description{
        kName,
        "Moves an in-between target to a new position.",
        {{"-i", "-index", MSyntax::kLong, "index of the source target channel"},
         {"-sp", "-sourcePosition", MSyntax::kLong, "current position"},
         {"-tp", "-targetPosition", MSyntax::kLong, "result position"}},
        "dv_blendShapeSetInbetweenPosition -i <int> -sp <int> -tp <int>",
        "int",
        true,
        ErrorResult::kZero};
    return description;
}

CallOutcome blendShapeSetInbetweenPosition::read(const MArgDatabase& arguments) {
    readFlag(arguments, "-i", target_);
    readFlag(arguments, "-sp", oldItem_);
    readFlag(arguments, "-tp", newItem_);
    MObject blendShape;
    CallOutcome outcome = readBlendShape(arguments, blendShape);
    blendShape_ = blendShape;
    return outcome;
}

CallOutcome blendShapeSetInbetweenPosition::edit() {
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull()) return CallOutcome::failed(kBlendShapeGone);
    TargetEditor targets(blendShape);
    CallOutcome outcome = targets.checkItem(target_, oldItem_);
    if (!outcome.isDone()) return outcome;
    deltas_ = targets.read(target_, oldItem_);
    outcome = targets.initialiseEmpty(target_, oldItem_, deltas_);
    if (!outcome.isDone()) return outcome;
    companions_.read(blendShape, target_, oldItem_);
    removeTargetItem(blendShape, target_, oldItem_);
    if (hasTargetItem(blendShape, target_, oldItem_)) {
        return CallOutcome::refused(MString("Item ") + oldItem_ + " in target " + target_ + " of " +
                                    MFnDependencyNode(blendShape).name() +
                                    " cannot be removed. Unlock it first.");
    }
    hasMoved_ = true;
    ItemCompanions::removeInfo(blendShape, target_, oldItem_);
    removeDestination(blendShape);
    outcome = targets.write(target_, newItem_, deltas_);
    if (outcome.isDone()) {
        // The mesh is connected last, so that the deltas are not taken for those of another mesh.
        companions_.write(blendShape, target_, newItem_);
        setResult(1);
    } else {
        // The failure is shown but not returned: the host would not queue the call, and undo could not
        // restore the deltas.
        report(outcome);
    }
    return CallOutcome();
}

/// Removes all that the new position held, so that nothing of it mixes with the moved item.
void blendShapeSetInbetweenPosition::removeDestination(const MObject& blendShape) const {
    if (!hasTargetItem(blendShape, target_, newItem_)) return;
    removeTargetItem(blendShape, target_, newItem_);
    ItemCompanions::removeInfo(blendShape, target_, newItem_);
}

CallOutcome blendShapeSetInbetweenPosition::restore() {
    const MObject blendShape = aliveObject(blendShape_);
    if (!hasMoved_ || blendShape.isNull()) return CallOutcome();
    hasMoved_ = false;
    removeTargetItem(blendShape, target_, newItem_);
    ItemCompanions::removeInfo(blendShape, target_, newItem_);
    TargetEditor targets(blendShape);
    targets.keepQuiet();
    CallOutcome outcome = targets.write(target_, oldItem_, deltas_);
    // Even if the deltas could not be written, for example because they are locked by now.
    companions_.write(blendShape, target_, oldItem_);
    return outcome;
}
