#pragma once

#include <maya/MObjectHandle.h>

#include "commandSupport.h"
#include "common.h"
#include "targets/itemCompanions.h"
#include "targets/targetEditor.h"

/// dv_blendShapeSetInbetweenPosition: moves the deltas of a target to another item of it, and with that an
/// in-between to another weight. What else belongs to the item moves along: its relative deltas, its name and
/// interpolation, its target mesh.
///
/// What the new position held is overwritten. The result is 1, or 0 after an error. One that leaves the move
/// half done counts as success: the call is queued, and its undo puts the deltas back.
///
/// Undo removes the item at the new position, also one that existed before, and puts everything back to the
/// old one.
class blendShapeSetInbetweenPosition : public CommandOf<blendShapeSetInbetweenPosition> {
  public:
    static constexpr const char* kName = "dv_blendShapeSetInbetweenPosition";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome restore() override;

  private:
    void removeDestination(const MObject& blendShape) const;

    int target_ = 0;
    int oldItem_ = kFullItem;
    int newItem_ = kFullItem;
    bool hasMoved_ = false;  // the last edit removed the old item
    MObjectHandle blendShape_;
    TargetDeltas deltas_;        // of the old item, before the last edit
    ItemCompanions companions_;  // likewise
};
