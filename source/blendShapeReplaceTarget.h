#pragma once

#include <maya/MArgList.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include "common.h"
#include "meshObject.h"
#include "targetDeltas.h"

/// dv_blendShapeReplaceTarget: makes the deltas of a target item the difference between two meshes.
///
/// Only vertices that differ are stored, but these however little they do. Vertices count by the original
/// mesh; the new one may have more. No geometry is connected. The result is 1, or 0 after an error.
///
/// Undo puts back the deltas that the item had; one that was empty is empty then, but there.
class blendShapeReplaceTarget : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_blendShapeReplaceTarget";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    bool readMeshes(const MString& newName, const MString& originalName, MString& error);
    bool findDifference(TargetDeltas& difference, MString& error) const;

    int target_ = 0;
    int item_ = kFullItem;
    bool isChecked_ = false;   // all checks have passed: there is something to redo
    bool hasWritten_ = false;  // the last redoIt came as far as the target
    MObjectHandle blendShape_;
    MeshObject newMesh_;
    MeshObject originalMesh_;
    TargetDeltas saved_;  // of the item, before the last redoIt
};
