#pragma once

#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include "commandSupport.h"
#include "common.h"
#include "scene/meshObject.h"
#include "symmetry/mirrorPartners.h"
#include "symmetry/mirroredDeltas.h"
#include "targets/targetEditor.h"

/// dv_blendShapeMirrorTarget: mirrors the deltas of a target over the symmetry plane of the mesh.
///
/// Onto the target itself, into a new target, or into another existing one; on request the
/// mirrored deltas become tweaks of a further mesh, too. The result is 1, or 0 after an error.
/// Partners are found by position or through the vertex order map; by position every vertex must
/// have one.
///
/// Undo puts back what was written: in place, the deltas that were mirrored, without those of skipped
/// components, also where they were written to another target; a new target and an in-between that
/// did not exist are removed. Each redo of a flip turns the direction round. A zero delta that an
/// empty target got stays.
class blendShapeMirrorTarget : public CommandOf<blendShapeMirrorTarget> {
  public:
    static constexpr const char* kName = "dv_blendShapeMirrorTarget";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome restore() override;

  private:
    // Other types read the destination as it is and restore nothing.
    enum Type { kInPlace = 0, kNewTarget = 1, kOtherTarget = 2 };

    void readFlags(const MArgDatabase& arguments);
    CallOutcome checkTargets(const TargetEditor& targets) const;
    CallOutcome readSource(TargetEditor& targets);
    void removeSkippedComponents();
    CallOutcome addTarget(const MObject& blendShape);
    MirroredDeltas mirror(const MIntArray& partners) const;
    CallOutcome write(TargetEditor& targets, const TargetDeltas& mirrored);
    CallOutcome writeTweaks(const TargetDeltas& mirrored);
    CallOutcome restoreTarget(const MObject& blendShape);
    CallOutcome removeTarget(const MObject& blendShape) const;

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

    bool hasWritten_ = false;  // the last edit came as far as the target
    bool hadGroup_ = false;    // the destination, before the last edit
    bool hasNewItem_ = false;  // by an in-between that did not exist before
    MObjectHandle blendShape_;
    MeshObject tweakMesh_;
    TargetDeltas source_;    // without the skipped components
    SavedItem destination_;  // of kOtherTarget
    MIntArray tweakedVertices_;
    MPointArray tweaks_;  // of these, before the command
};
