#pragma once

#include <maya/MArgList.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

#include "common.h"
#include "targetDeltas.h"

/// dv_blendShapeRemoveDeltas: takes the deltas of the selected vertices, edges or faces out of a target item.
///
/// The components of the first selected object count, whatever mesh it is; with none selected the item is
/// reset to a single zero delta. A redo goes by what is selected then. The result is 1, or 0 after an error.
/// Undo puts back the deltas that the item had; one that was empty is empty then, but there.
class blendShapeRemoveDeltas : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_blendShapeRemoveDeltas";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    int target_ = 0;
    int item_ = kFullItem;
    bool isChecked_ = false;   // all checks of doIt have passed
    bool hasWritten_ = false;  // the last redoIt came as far as the target
    MObjectHandle blendShape_;
    TargetDeltas saved_;  // of the item, before the last redoIt
};
