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

/// dv_blendShapeEditWeights: reads and edits the painted weights of one target, or of the base.
///
/// One call does one thing: the first mode in the table modes() that the call asks for. A weight near 1 is
/// usually not stored, because a missing element counts as 1.
///
/// The result is the indices or weights that were asked for, otherwise 1. It is 0 after an error and where
/// there is nothing to work on; without a mode there is none.
///
/// Undo restores what the call overwrote: the weights, the deltas of the one item that -targetItem names, the
/// vertex colours of the paint display, or the skin weights. The results of flipping, adding, subtracting and
/// importing a file stay. Redo writes what the call wrote.
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
        /// Changes nothing. Such a mode may name a target that does not exist: it has no weights.
        bool isQuery;
        /// The call needs the original mesh if this flag is set, even if another mode is the one that runs.
        bool needsMesh;
        /// Does nothing if no weights are stored.
        bool needsWeights;
        /// Undo restores what this mode overwrites. Importing from a file is the exception: its result stays.
        bool isUndone;
    };

    /// What redo has to write again.
    enum class Change { kNothing, kWeights, kSelectedWeights, kFrozen, kPaint, kSkin };

    /// An item, and the deltas that freezing gives it.
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
    double flushValue_ = 0.0;  // rounded to single precision
    int target_ = 0;
    int item_ = kFullItem;
    WeightList given_;
    PartnerSearch search_;
    unsigned int axisIndex_ = 0;

    bool hasMesh_ = false;  // search_ has a mesh
    MObjectHandle blendShape_;
    MIntArray selectedVertices_;
    SkinInfluence skin_;
    std::unique_ptr<PaintDisplay> paint_;
    MFloatPointArray positions_;  // of the original mesh, in object space; empty if no mesh is given

    Change change_ = Change::kNothing;
    WeightList written_;              // what the change writes
    std::vector<FrozenItem> frozen_;  // what freezing writes
    bool isUndone_ = false;           // undo restores what the change overwrites
    bool hasChanged_ = false;         // there is something to undo
    WeightList stored_;               // before the last edit or redo
    SavedItem savedItem_;             // the item of -targetItem, before the last freeze
};
