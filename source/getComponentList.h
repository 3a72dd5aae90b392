#pragma once

#include <maya/MIntArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include "commandSupport.h"

/// dv_getComponentList: the elements of a component list attribute as an int array, in stored order; or, on
/// request, these elements selected on a mesh, without a result. Not undoable.
///
/// Shows no message: an attribute or a mesh that is not there makes the command fail.
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
    MString mesh_;                 // on which to select
};
