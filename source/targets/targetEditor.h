#pragma once

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include "scene/callOutcome.h"
#include "scene/targetDeltas.h"

/// The targets of a blend shape during one run of a command. The first write to an item whose target mesh is
/// connected shows a warning.
class TargetEditor {
  public:
    explicit TargetEditor(const MObject& blendShape) : blendShape_(blendShape) {}
    TargetEditor(const TargetEditor&) = delete;
    TargetEditor& operator=(const TargetEditor&) = delete;

    const MObject& blendShape() const { return blendShape_; }
    /// From now on no warning is shown.
    void keepQuiet() { hasWarned_ = true; }

    /// @return refused for a target that does not exist
    CallOutcome checkTarget(int target) const;
    /// For commands that read an item: the full item of a target may be missing, it counts as empty then.
    /// @return refused for a target or an in-between that does not exist
    CallOutcome checkItem(int target, int item) const;

    /// The deltas of an item; empty for one that was never written. Where they come from a mesh that is
    /// connected, or was until now, the deformer makes them when it is evaluated, so that this is done first.
    TargetDeltas read(int target, int item);

    /// Gives an item what its lists lack to be valid: a list that is empty in `deltas` becomes vertex
    /// 0, or one zero delta, in the deformer.
    /// @param deltas  what read() gave for the item; stays as it is
    CallOutcome initialiseEmpty(int target, int item, const TargetDeltas& deltas);
    /// The same, for deltas that are to be worked on: `deltas` becomes what the deformer holds then.
    CallOutcome completeEmpty(int target, int item, TargetDeltas& deltas);

    /// Replaces the deltas of an item.
    /// @param kind  which deltas these are, for the errors: "" or a word with a blank after it
    CallOutcome write(int target, int item, const TargetDeltas& deltas, const char* kind = "");

  private:
    void evaluate();
    void warnOfLiveMesh(int target, int item);

    MObject blendShape_;
    bool hasEvaluated_ = false;
    bool hasWarned_ = false;
};

/// An item as it was before a run of a command, for undo.
class SavedItem {
  public:
    /// Keeps what the item holds, and whether it exists.
    void save(TargetEditor& targets, int target, int item);
    /// The deltas that were kept.
    const TargetDeltas& deltas() const { return deltas_; }

    /// Puts the deltas back, once; nothing where nothing was kept or the blend shape is gone. An in-between
    /// that did not exist is removed again; the full item of a target stays, with empty lists.
    CallOutcome restore();
    /// Keeps nothing any more.
    void forget() { isSaved_ = false; }

  private:
    bool isSaved_ = false;
    MObjectHandle blendShape_;
    int target_ = 0;
    int item_ = 0;
    bool existed_ = false;
    bool hadGroup_ = false;
    TargetDeltas deltas_;
};
