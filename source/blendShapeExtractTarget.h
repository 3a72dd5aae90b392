#pragma once

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include "commandSupport.h"
#include "common.h"
#include "scene/createdMesh.h"
#include "targets/targetEditor.h"

/// dv_blendShapeExtractTarget: makes a mesh of one target item, the original mesh plus the item's deltas.
///
/// The result is the name asked for the new mesh: that of a copy of the original, "_" and the item index. The
/// user's deformer is evaluated only where a target mesh is connected to the item; a full item without deltas
/// gets a single zero delta on vertex 0, which stays after an undo. Undo removes the mesh; redo brings the
/// same mesh back, with its points extracted anew.
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
