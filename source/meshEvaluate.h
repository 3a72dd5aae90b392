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
/// An intermediate shape below another transform is found through a tweak node that takes its geometry from a
/// groupParts node, as deformers were chained before there were component tags, and moves back below its own
/// transform, for good. In a chain with a tweak node but without groupParts it is not found there, and in one
/// without tweak node the shape passes for one without deformers.
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
    MStatus findCandidate(const MObject& shape, const MObjectArray& children, MObject& found) const;

    bool isIntermediate_ = false;
    MDagPath shape_;
    MDagPath transform_;
};
