#pragma once

#include <maya/MArgList.h>
#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MObjectArray.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

/// dv_meshEvaluate: the full path name of the visible shape of a mesh, or of the intermediate shape that
/// feeds its deformers; the shape itself where there are none. Not undoable.
///
/// An intermediate shape below another transform is found up the chain of deformers, with and without a tweak
/// node and groupParts nodes, and moves back below its own transform, for good. A chain that begins with
/// anything else has none: an error where there is a tweak node, otherwise the shape itself. That is also the
/// answer, without a tweak node, where the intermediate shape lies beside another mesh that is made from it.
class meshEvaluate : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_meshEvaluate";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    MStatus findShape(MObject& found) const;
    MStatus findIntermediate(MObject& found) const;
    MStatus findDistantIntermediate(const MObject& shape, MObject& found) const;
    MStatus takeIntermediate(const MObject& original, MObject& found) const;
    MStatus findCandidate(const MObject& shape, const MObjectArray& children, MObject& found) const;

    bool isIntermediate_ = false;
    MDagPath shape_;
    MDagPath transform_;
};
