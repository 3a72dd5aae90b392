#pragma once

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPointArray.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include "common.h"
#include "meshObject.h"
#include "mirrorPartners.h"
#include "targetDeltas.h"

/// dv_blendShapeMirrorTarget: mirrors the deltas of a target over the symmetry plane of the mesh.
///
/// Onto the target itself, into a new target, or into another one that is there; on request the
/// mirrored deltas become tweaks of a further mesh, too. The result is 1, or 0 after an error.
/// Partners are found by position or through the vertex order map; by position every vertex must
/// have one.
///
/// Undo puts back what was written: in place, the deltas without those of skipped components; for a
/// new target, it is removed. Each redo of a flip turns the direction round. A zero delta that an
/// empty target got stays.
class blendShapeMirrorTarget : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_blendShapeMirrorTarget";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    // Other types read the destination as it is and restore nothing.
    enum Type { kInPlace = 0, kNewTarget = 1, kOtherTarget = 2 };

    void readFlags(const MArgDatabase& arguments);
    MStatus readSource(const MObject& blendShape);
    void removeSkippedComponents();
    MStatus addTarget(const MObject& blendShape);
    MStatus write(const MObject& blendShape, const TargetDeltas& mirrored);
    MStatus writeTweaks(const TargetDeltas& mirrored);
    MStatus restoreTarget(const MObject& blendShape);

    int type_ = kInPlace;
    bool isPositiveSource_ = true;
    bool flips_ = false;
    bool isInBetween_ = false;
    MString mesh_;
    MString skippedComponents_;
    int sourceTarget_ = 0;
    int target_ = 0;
    int item_ = kFullItem;
    MString targetName_;
    PartnerSearch search_;

    bool isChecked_ = false;   // all checks have passed: there is something to redo
    bool hasWritten_ = false;  // the last redoIt came as far as the target
    MObjectHandle blendShape_;
    MeshObject tweakMesh_;
    TargetDeltas source_;       // without the skipped components
    TargetDeltas destination_;  // of kOtherTarget, before the command
    MIntArray tweakedVertices_;
    MPointArray tweaks_;  // of these, before the command
};
