#pragma once

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPlug.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include <memory>
#include <vector>

#include "common.h"
#include "mirrorPartners.h"
#include "paintDisplay.h"
#include "skinInfluence.h"
#include "targetDeltas.h"
#include "weightList.h"

/// dv_blendShapeEditWeights: reads and rewrites the weights of one target, or the base weights.
///
/// One call does one thing: the first in the order of Mode that is asked for. Weights near 1 are
/// stored as no element. The result is the indices or weights asked for, or 1, or 0 where there was
/// nothing to work on or an error. Undo restores the weights, the deltas of the item in question,
/// the paint display or the skin weights; what flipping, adding, subtracting and importing a file
/// made stays.
class blendShapeEditWeights : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_blendShapeEditWeights";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    enum class Mode {
        kGetIndices,
        kGetWeights,
        kSetWeights,
        kInvert,
        kMirror,
        kFlip,
        kTrim,
        kFreeze,
        kFlush,
        kDelete,
        kExport,
        kImport,
        kAdd,
        kSubtract,
        kNone
    };

    /// What the last redoIt has changed and undoIt is to put back.
    enum class Undo { kNothing, kWeights, kFrozen, kPaint, kSkin };

    static Mode readMode(const MArgDatabase& arguments);
    void readFlags(const MArgDatabase& arguments);
    bool readObjects(const MObject& blendShape, const MString& meshName, const MString& orderName,
                     MString& error);
    static bool needsMesh(const MArgDatabase& arguments);
    bool isQuery() const;
    bool hasTarget(const MObject& blendShape) const;
    bool areWeightsComplete(MString& error) const;

    MStatus run(const MObject& blendShape);
    MStatus editStored(const MObject& blendShape);
    MStatus done(int result);
    void replaceWeights(const WeightList& weights, Undo undo);
    void setWeights(const WeightList& weights, Undo undo);

    WeightList inverted() const;
    WeightList trimmed() const;
    MStatus mirror();
    void passOn(int vertex, int partner, double weight, WeightList& weights) const;
    MStatus freeze(const MObject& blendShape);
    MStatus freezeItem(const MObject& blendShape, int item, const TargetDeltas& before);
    void scale(TargetDeltas& deltas) const;
    MStatus flush();

    bool readFile(WeightList& weights) const;
    MStatus exportWeights();
    MStatus importWeights();
    MStatus combine();
    MStatus exportToSkin();
    MStatus importFromSkin();

    float coordinate(int vertex) const { return positions_[static_cast<unsigned int>(vertex)][axisIndex_]; }
    bool isOnPlane(int vertex) const;

    Mode mode_ = Mode::kNone;
    bool keepsAll_ = false;
    bool isPositive_ = true;
    bool isPaint_ = false;
    bool isSkin_ = false;
    MString fileName_;
    double flushValue_ = 0.0;  // in the digits of single precision
    int target_ = 0;
    int item_ = kFullItem;
    WeightList given_;
    PartnerSearch search_;
    unsigned int axisIndex_ = 0;

    bool isChecked_ = false;  // all checks have passed: there is something to redo
    bool hasMesh_ = false;    // the search has a mesh
    MObjectHandle blendShape_;
    MIntArray selectedVertices_;
    SkinInfluence skin_;
    std::unique_ptr<PaintDisplay> paint_;
    MFloatPointArray positions_;  // of the original mesh, in object space; empty without one

    WeightList stored_;  // before the command
    Undo undo_ = Undo::kNothing;
    bool hasItem_ = false;  // freezing has changed the item in question
    TargetDeltas deltas_;   // of it, before the command
};
