#pragma once

#include <maya/MStatus.h>

#include "commandSupport.h"

/// dv_reorderRotation: gives the angles of a rotation in another rotate order.
///
/// Angles are in degrees. Orders are the numbers of rotateOrder attributes; any other number means xyz.
/// Values that are not given are 0. The result is a double array: x, y and z. Not undoable; nothing changes.
class reorderRotation : public CommandOf<reorderRotation> {
  public:
    static constexpr const char* kName = "dv_reorderRotation";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;

  private:
    int inOrder_ = 0;
    int outOrder_ = 0;
    double angles_[3] = {0.0, 0.0, 0.0};
};
