#pragma once

#include <maya/MArgList.h>
#include <maya/MIntArray.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

/// dv_getComponentList: the elements of a component list attribute as an int array, in stored order; or, on
/// request, these elements selected on a mesh, without a result. Not undoable.
///
/// Shows no message: an attribute or a mesh that is not there makes the command fail.
class getComponentList : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_getComponentList";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    MStatus select(MIntArray& elements) const;

    static constexpr int kNoType = -1;

    MString attribute_;
    int componentType_ = kNoType;  // 0 vertices, 1 edges, 2 faces
    MString mesh_;                 // on which to select
};
