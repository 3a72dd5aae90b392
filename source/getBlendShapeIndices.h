#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>

#include "commandSupport.h"

/// dv_getBlendShapeIndices: lists the weight indices that a blend shape node uses, as an int array. Not
/// undoable. No result after an error.
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
