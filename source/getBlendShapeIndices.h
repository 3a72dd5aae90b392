#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>

#include "commandSupport.h"

/// dv_getBlendShapeIndices: the weight indices in use on a blend-shape node, as an int array. Not undoable.
///
/// Errors set no result.
class getBlendShapeIndices : public CommandOf<getBlendShapeIndices> {
  public:
    static constexpr const char* kName = "dv_getBlendShapeIndices";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;

  private:
    MObject blendShape_;
};
