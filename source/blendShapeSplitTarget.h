#pragma once

#include <maya/MArgList.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include "meshObject.h"
#include "targetDeltas.h"

/// dv_blendShapeSplitTarget: keeps one side of a target, by the target's weights.
///
/// Vertices on the kept side get weight 1, those on the other side 0, with a linear blend between.
/// The deltas stay; only a hard split of the base weights halves those of target 0 on the plane and
/// puts them into it. The result is 1, or 0 after an error. Undo restores these deltas and nothing
/// else: painted weights stay.
class blendShapeSplitTarget : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_blendShapeSplitTarget";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    bool isBase() const;
    bool isHard() const;
    MStatus readVertices(const MObject& blendShape, MIntArray& vertices);
    MStatus readVerticesOfItems(const MObject& blendShape, MIntArray& vertices) const;
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

    bool isChecked_ = false;  // all checks of doIt have passed
    bool hasHalved_ = false;  // the last redoIt wrote deltas
    MObjectHandle blendShape_;
    MeshObject originalMesh_;
    TargetDeltas deltas_;  // of target 0, where the base weights are split
};
