#pragma once

#include <maya/MObjectHandle.h>
#include <maya/MString.h>

#include "commandSupport.h"
#include "common.h"
#include "scene/meshObject.h"
#include "targets/targetEditor.h"

/// dv_blendShapeReplaceTarget: makes the deltas of a target item the difference between two meshes.
///
/// Only vertices that differ are stored, but these however little they do. Vertices count by the original
/// mesh; the new one may have more. No geometry is connected. The result is 1, or 0 after an error.
///
/// Undo puts back the deltas that the item had. A full item that was empty is empty then, but there; an
/// in-between that did not exist is removed.
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
