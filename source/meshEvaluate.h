#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MObjectArray.h>

#include "commandSupport.h"

/// dv_meshEvaluate: the full path name of the visible shape of a mesh, or of the intermediate shape that
/// feeds its deformers. For a mesh without deformers, the latter is the shape itself. Not undoable.
///
/// If there are several meshes below the transform, the intermediate shape is the one there that feeds
/// something and has the vertex count of the visible shape. More than one is an error; if there is none, it
/// is the visible shape itself.
///
/// If the visible shape is the only mesh below the transform, the intermediate shape is found along the chain
/// of deformers, with and without a tweak node and groupParts nodes. It is then moved below the transform of
/// the visible shape, for good. If the chain does not begin with an intermediate shape, a mesh with a tweak
/// node gives an error, and a mesh without one gives the shape itself. A mesh without a tweak node also gives
/// the shape itself if a visible mesh with the same transform as the intermediate shape is made from it.
class meshEvaluate : public CommandOf<meshEvaluate> {
  public:
    static constexpr const char* kName = "dv_meshEvaluate";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;

  private:
    CallOutcome findShape(MObject& found) const;
    CallOutcome findIntermediate(MObject& found) const;
    CallOutcome findDistantIntermediate(const MObject& shape, MObject& found) const;
    CallOutcome takeIntermediate(const MObject& original, MObject& found) const;
    CallOutcome findCandidate(const MObject& shape, const MObjectArray& children, MObject& found) const;

    bool isIntermediate_ = false;
    MDagPath shape_;
    MDagPath transform_;
};
