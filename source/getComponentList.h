#pragma once

#include <maya/MIntArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include "commandSupport.h"

/// dv_getComponentList: lists the elements of a component list attribute as an int array, in stored order. On
/// request it selects these elements on a mesh instead, without a result. Not undoable.
///
/// Shows no message. If the attribute or the mesh does not exist, the command fails.
class getComponentList : public CommandOf<getComponentList> {
  public:
    static constexpr const char* kName = "dv_getComponentList";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;

  private:
    MStatus select(MIntArray& elements) const;

    static constexpr int kNoType = -1;

    MString attribute_;
    int componentType_ = kNoType;  // 0 vertices, 1 edges, 2 faces
    MString mesh_;                 // the elements are selected on this mesh
};
