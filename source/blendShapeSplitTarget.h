#pragma once

#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MString.h>

#include "commandSupport.h"
#include "scene/meshObject.h"
#include "targets/targetEditor.h"

/// dv_blendShapeSplitTarget: restricts a target to one side by painting its weights, with a soft transition
/// at the centre.
///
/// Vertices on the kept side get weight 1, those on the other side 0, and those between a linear blend. The
/// deltas do not change, with one exception: a hard split (no blend) of the base weights halves the deltas of
/// target 0 on the symmetry plane and removes the part that leads away from the plane. The result is 1, or 0
/// after an error. Undo restores these deltas and nothing else: the weights stay.
class blendShapeSplitTarget : public CommandOf<blendShapeSplitTarget> {
  public:
    static constexpr const char* kName = "dv_blendShapeSplitTarget";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome restore() override;

  private:
    bool isBase() const;
    bool isHard() const;
    CallOutcome readVertices(TargetEditor& targets, MIntArray& vertices);
    CallOutcome readVerticesOfItems(TargetEditor& targets, MIntArray& vertices) const;
    bool isOnPlane(const MFloatPoint& position) const;
    double weightAt(const MFloatPoint& position) const;
    TargetDeltas halvedDeltas(const MFloatPointArray& positions) const;

    MString axis_ = "x";
    unsigned int axisIndex_ = 0;
    double blend_ = 0.0;
    double center_ = 0.0;
    int target_ = 0;
    int sideFactor_ = 0;  // multiplies the coordinate: 1 keeps the positive side, -1 the negative side
    double tolerance_ = 0.001;

    bool hasHalved_ = false;  // the last edit wrote deltas
    MObjectHandle blendShape_;
    MeshObject originalMesh_;
    TargetDeltas deltas_;  // of target 0, if the base weights are split
};
