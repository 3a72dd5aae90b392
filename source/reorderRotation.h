#pragma once

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

/// dv_reorderRotation: the angles that give a rotation in another rotate order.
///
/// Angles are in degrees, orders as rotateOrder attributes number them; any other number stands for
/// xyz, and what is not given is 0. The result is a double array: x, y and z. Not undoable: nothing
/// changes.
class reorderRotation : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_reorderRotation";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    int inOrder_ = 0;
    int outOrder_ = 0;
    double angles_[3] = {0.0, 0.0, 0.0};
};
