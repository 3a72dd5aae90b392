#pragma once

#include <maya/MArgList.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

#include "common.h"
#include "targetDeltas.h"

/// dv_blendShapeSetInbetweenPosition: moves the deltas of a target to another item of it, and with that an
/// in-between to another weight.
///
/// What the new position held is overwritten. The result is 1, or 0 after an error. One that leaves the move
/// half done counts as success: the call is queued, and its undo puts the deltas back.
///
/// Undo removes the item at the new position, also one that was there before, and puts the deltas back to
/// the old one.
class blendShapeSetInbetweenPosition : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_blendShapeSetInbetweenPosition";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    void removeItem(const MObject& blendShape, int item) const;

    int target_ = 0;
    int oldItem_ = kFullItem;
    int newItem_ = kFullItem;
    bool isChecked_ = false;  // all checks of doIt have passed
    bool hasMoved_ = false;   // the last redoIt removed the old item
    MObjectHandle blendShape_;
    TargetDeltas deltas_;  // of the old item, before the last redoIt
};
