#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MObjectArray.h>

#include "commandSupport.h"

/// dv_meshEvaluate: the full path name of the visible shape of a mesh, or of the intermediate shape that
/// feeds its deformers; the shape itself where there are none. Not undoable.
///
/// An intermediate shape below another transform is found up the chain of deformers, with and without a tweak
/// node and groupParts nodes, and moves back below its own transform, for good. A chain that begins with
/// anything else has none: an error where there is a tweak node, otherwise the shape itself. That is also the
/// answer, without a tweak node, where the intermediate shape lies beside another mesh that is made from it.
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
