#pragma once

#include <maya/MObjectHandle.h>

#include "commandSupport.h"
#include "common.h"
#include "targets/targetEditor.h"

/// dv_blendShapeRemoveDeltas: takes the deltas of the selected vertices, edges or faces out of a target item.
///
/// The components of the first selected object count, whatever mesh it is; with none selected the item is
/// reset to a single zero delta. A redo goes by what is selected then. The result is 1, or 0 after an error.
/// Undo puts back the deltas that the item had; a full item that was empty is empty then, but there.
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
