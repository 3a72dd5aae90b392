#pragma once

#include <maya/MFloatPointArray.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include "commandSupport.h"

/// dv_editTweakNode: removes the vertex edits that a tweak node holds for its first geometry. On request it
/// first adds them to the points of the original mesh. Not undoable.
///
/// The result is 1, or 0 after an error. After an error the edits stay in the node, unless they were removed
/// and only then the points could not be set.
class editTweakNode : public CommandOf<editTweakNode> {
  public:
    static constexpr const char* kName = "dv_editTweakNode";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;

  private:
    MStatus addEdits(MFloatPointArray& points, unsigned int& missing) const;

    bool isBaked_ = false;
    MString tweakNode_;
    MObject originalMesh_;
    MPlug edits_;  // an offset per vertex, sparse
};
