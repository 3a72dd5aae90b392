#pragma once

#include <maya/MArgList.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include "common.h"
#include "targetDeltas.h"

/// dv_blendShapeExtractTarget: makes a mesh of one target item, the original mesh plus the item's deltas.
///
/// The result is the name asked for the new mesh: that of a copy of the original, "_" and the item index. The
/// user's deformer is not evaluated; an item without deltas gets a single zero delta on vertex 0, which stays
/// after an undo. Undo deletes the mesh.
class blendShapeExtractTarget : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_blendShapeExtractTarget";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    MStatus extract(const TargetDeltas& deltas, MObject& extracted);
    void present(const MObject& extracted);

    int target_ = 0;
    int item_ = kFullItem;
    bool isChecked_ = false;  // all checks of doIt have passed
    MObjectHandle blendShape_;
    MObjectHandle originalMesh_;
    MObjectHandle extracted_;  // transform of the mesh that the last redoIt made
};
