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

/// dv_blendShapeSplitTarget: keeps one side of a target, by the target's weights.
///
/// Vertices on the kept side get weight 1, those on the other side 0, with a linear blend between.
/// The deltas stay; only a hard split of the base weights halves those of target 0 on the plane and
/// puts them into it. The result is 1, or 0 after an error. Undo restores these deltas and nothing
/// else: painted weights stay.
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
    int sideFactor_ = 0;  // times the coordinate: 1 keeps the positive side, -1 the negative one
    double tolerance_ = 0.001;

    bool hasHalved_ = false;  // the last edit wrote deltas
    MObjectHandle blendShape_;
    MeshObject originalMesh_;
    TargetDeltas deltas_;  // of target 0, where the base weights are split
};
