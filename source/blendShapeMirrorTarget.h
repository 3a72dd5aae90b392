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
/// It writes to the target itself, to a new target, or to another existing target. On request it also writes
/// the mirrored deltas as tweaks of another mesh. The result is 1, or 0 after an error. Partners are found by
/// position or through the vertex order map. By position, every vertex must have a partner.
///
/// Undo restores the tweaks. For the deltas it depends on the type. In place, it writes the source deltas,
/// without those of skipped components, to the destination, even if that is not the source. Another existing
/// target gets its deltas back. A new target, and an in-between that did not exist, are removed. A zero delta
/// that an empty target got stays. Each redo of a flip reverses the direction (deliberate:
/// docs/compatibility.md).
class blendShapeMirrorTarget : public CommandOf<blendShapeMirrorTarget> {
  public:
    static constexpr const char* kName = "dv_blendShapeMirrorTarget";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome restore() override;

  private:
    // Any other number means an existing target, too, but undo does not restore its deltas.
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

    bool hasWritten_ = false;  // the last edit began to write the target
    bool hadGroup_ = false;    // the destination had a group before the last edit
    bool hasNewItem_ = false;  // the destination is an in-between that did not exist
    MObjectHandle blendShape_;
    MeshObject tweakMesh_;
    TargetDeltas source_;    // without the skipped components
    SavedItem destination_;  // of kOtherTarget
    MIntArray tweakedVertices_;
    MPointArray tweaks_;  // of tweakedVertices_, before the last edit
};
