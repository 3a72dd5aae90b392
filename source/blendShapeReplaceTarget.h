#pragma once

#include <maya/MObjectHandle.h>
#include <maya/MString.h>

#include "commandSupport.h"
#include "common.h"
#include "scene/meshObject.h"
#include "targets/targetEditor.h"

/// dv_blendShapeReplaceTarget: replaces the deltas of a target item by the difference between two meshes.
///
/// Every vertex that differs is stored, however small the difference. Vertices are matched by index. The new
/// mesh must have at least as many vertices as the original; more are ignored. No geometry is connected. The
/// result is 1, or 0 after an error.
///
/// Undo restores the deltas. A full item that did not exist remains, empty. An in-between that did not exist
/// is removed.
class blendShapeReplaceTarget : public CommandOf<blendShapeReplaceTarget> {
  public:
    static constexpr const char* kName = "dv_blendShapeReplaceTarget";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome restore() override;

  private:
    bool readMeshes(const MString& newName, const MString& originalName, MString& error);
    bool findDifference(TargetDeltas& difference, MString& error) const;

    int target_ = 0;
    int item_ = kFullItem;
    MObjectHandle blendShape_;
    MeshObject newMesh_;
    MeshObject originalMesh_;
    SavedItem saved_;
};
