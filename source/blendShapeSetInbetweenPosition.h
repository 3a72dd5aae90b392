#pragma once

#include <maya/MObjectHandle.h>

#include "commandSupport.h"
#include "common.h"
#include "targets/itemCompanions.h"
#include "targets/targetEditor.h"

/// dv_blendShapeSetInbetweenPosition: moves an item of a target, usually an in-between, to another item
/// index, and so to another weight. All that belongs to the item moves with it: its deltas, its relative
/// deltas, its name and interpolation, and its target mesh.
///
/// What the new position held is removed. The result is 1, or 0 after an error. An error after the old item
/// was removed counts as success, so that the host queues the call and undo can restore the deltas.
///
/// Undo moves everything back to the old position. It removes the item at the new position, even one that
/// existed before.
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
    TargetDeltas deltas_;        // of the old item, read by the last edit
    ItemCompanions companions_;  // of the old item, too
};
