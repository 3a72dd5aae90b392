#pragma once

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include "commandSupport.h"
#include "common.h"
#include "scene/createdMesh.h"
#include "targets/targetEditor.h"

/// dv_blendShapeExtractTarget: makes a mesh from one item of a target: the original mesh plus the item's
/// deltas.
///
/// The result is the name that the command asks for: the host's name for a copy of the original, "_" and the
/// item index. The user's deformer is evaluated only if the item may need it (TargetEditor::read). An item
/// that lacks vertices or points gets a zero delta on vertex 0, which stays after undo.
///
/// Undo removes the mesh. Redo brings the same mesh back and extracts its points again.
class blendShapeExtractTarget : public CommandOf<blendShapeExtractTarget> {
  public:
    static constexpr const char* kName = "dv_blendShapeExtractTarget";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome redo() override;
    CallOutcome restore() override;

  private:
    CallOutcome readTarget(TargetDeltas& deltas) const;
    CallOutcome extract(bool bringsBack);
    CallOutcome create(const MObject& deformed);

    int target_ = 0;
    int item_ = kFullItem;
    MObjectHandle blendShape_;
    MObjectHandle originalMesh_;
    CreatedMesh extracted_;
};
