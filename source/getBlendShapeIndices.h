#pragma once

#include <maya/MArgList.h>
#include <maya/MObject.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

/// dv_getBlendShapeIndices: the weight indices in use on a blend-shape node, as an int array. Not undoable.
///
/// Errors set no result.
class getBlendShapeIndices : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_getBlendShapeIndices";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    MObject blendShape_;
};
