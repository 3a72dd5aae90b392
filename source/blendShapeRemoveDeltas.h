#pragma once

#include <maya/MObjectHandle.h>

#include "commandSupport.h"
#include "common.h"
#include "targets/targetEditor.h"

/// dv_blendShapeRemoveDeltas: removes the deltas of the selected vertices, edges or faces from a target item.
///
/// Only the components of the first selected object count; they may be on any mesh. If none are selected, the
/// item is reset to a single zero delta. Redo uses the selection at that time. The result is 1, or 0 after an
/// error. Undo restores the deltas; a full item that did not exist remains, empty.
class blendShapeRemoveDeltas : public CommandOf<blendShapeRemoveDeltas> {
  public:
    static constexpr const char* kName = "dv_blendShapeRemoveDeltas";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome restore() override;

  private:
    int target_ = 0;
    int item_ = kFullItem;
    MObjectHandle blendShape_;
    SavedItem saved_;
};
