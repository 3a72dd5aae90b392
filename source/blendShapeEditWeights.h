#pragma once

#include <maya/MArgDatabase.h>
#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MString.h>

#include <memory>
#include <vector>

#include "commandSupport.h"
#include "common.h"
#include "symmetry/mirrorPartners.h"
#include "targets/targetEditor.h"
#include "weights/paintDisplay.h"
#include "weights/skinInfluence.h"
#include "weights/weightList.h"

/// dv_blendShapeEditWeights: reads and rewrites the weights of one target, or the base weights.
///
/// One call does one thing: the first in the table of modes that is asked for. Weights near 1 are
/// stored as no element. The result is the indices or weights asked for, or 1, or 0 where there was
/// nothing to work on or an error. Undo restores the weights, the deltas of the item in question,
/// the paint display or the skin weights; what flipping, adding, subtracting and importing a file
/// made stays. Redo writes what the call wrote.
class blendShapeEditWeights : public CommandOf<blendShapeEditWeights> {
  public:
    static constexpr const char* kName = "dv_blendShapeEditWeights";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome redo() override;
    CallOutcome restore() override;

  private:
    /// One thing that the command can do.
    struct Mode {
        const char* flag;
        CallOutcome (blendShapeEditWeights::*run)();
        /// Changes nothing, and so may ask for the weights of a target that does not exist: it has none.
        bool isQuery;
        /// The flag asks for the original mesh, also beside another flag that decides what is done.
        bool needsMesh;
        /// Without stored weights there is nothing to do.
        bool needsWeights;
        /// Whether undo puts back what was overwritten; not so where a file replaced the weights.
        bool isUndone;
    };

    /// What redo has to write again.
    enum class Change { kNothing, kWeights, kSelectedWeights, kFrozen, kPaint, kSkin };

    /// An item with the deltas that freezing gives it.
    struct FrozenItem {
        int item;
        TargetDeltas deltas;
    };

    static const std::vector<Mode>& modes();
    void readFlags(const MArgDatabase& arguments);
    CallOutcome readObjects(const MArgDatabase& arguments, const MObject& blendShape);
    bool readMeshes(const MString& meshName, const MString& orderName, MString& error);
    bool areWeightsComplete(MString& error) const;
    bool isQuery() const { return mode_ == nullptr || mode_->isQuery; }
    CallOutcome checkTarget(const MObject& blendShape) const;

    CallOutcome getIndices();
    CallOutcome getWeights();
    CallOutcome setWeights();
    CallOutcome invert();
    CallOutcome mirror();
    CallOutcome flip();
    CallOutcome trim();
    CallOutcome freeze();
    CallOutcome flush();
    CallOutcome deleteWeights();
    CallOutcome exportWeights();
    CallOutcome importWeights();
    CallOutcome addWeights();
    CallOutcome subtractWeights();

    CallOutcome apply(Change change, const WeightList& weights);
    CallOutcome write();
    CallOutcome writeFrozen(TargetEditor& targets);
    WeightList storable(const WeightList& weights) const;
    CallOutcome findMirrored(bool flips);
    void passOn(int vertex, int partner, double weight, bool flips, WeightList& weights) const;
    void scale(TargetDeltas& deltas) const;
    bool readFile(WeightList& weights) const;
    CallOutcome combine(double sign);
    CallOutcome exportToSkin();
    CallOutcome importFromSkin();

    float coordinate(int vertex) const { return positions_[static_cast<unsigned int>(vertex)][axisIndex_]; }
    bool isOnPlane(int vertex) const;

    const Mode* mode_ = nullptr;
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

    bool hasMesh_ = false;  // the search has a mesh
    MObjectHandle blendShape_;
    MIntArray selectedVertices_;
    SkinInfluence skin_;
    std::unique_ptr<PaintDisplay> paint_;
    MFloatPointArray positions_;  // of the original mesh, in object space; empty without one

    Change change_ = Change::kNothing;
    WeightList written_;              // by the change
    std::vector<FrozenItem> frozen_;  // likewise
    bool isUndone_ = false;           // undo puts back what the change overwrites
    bool hasChanged_ = false;         // there is something to undo
    WeightList stored_;               // before the last edit or redo
    SavedItem savedItem_;             // the item in question, likewise
};
