#pragma once

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include "scene/callOutcome.h"
#include "scene/targetDeltas.h"

/// The targets of a blend shape during one run of a command. Shows a warning at the first write to an item to
/// which a target mesh is connected.
class TargetEditor {
  public:
    explicit TargetEditor(const MObject& blendShape) : blendShape_(blendShape) {}
    TargetEditor(const TargetEditor&) = delete;
    TargetEditor& operator=(const TargetEditor&) = delete;

    const MObject& blendShape() const { return blendShape_; }
    /// No warning is shown from now on.
    void keepQuiet() { hasWarned_ = true; }

    /// @return refused for a target that does not exist
    CallOutcome checkTarget(int target) const;
    /// For commands that read an item. A full item may be missing; it then counts as empty.
    /// @return refused for a target or an in-between that does not exist
    CallOutcome checkItem(int target, int item) const;

    /// The deltas of an item; empty if it was never written. Evaluates the deformer first, at most once, if a
    /// target mesh is connected or the item exists without vertices: deltas from a target mesh may not be
    /// computed yet.
    TargetDeltas read(int target, int item);

    /// Makes an empty item valid in the deformer: if a list of `deltas` is empty, the item gets vertex 0, or
    /// one zero delta.
    /// @param deltas  what read() returned for the item
    CallOutcome initialiseEmpty(int target, int item, const TargetDeltas& deltas);
    /// The same, and the empty lists of `deltas` are filled like those of the item.
    CallOutcome completeEmpty(int target, int item, TargetDeltas& deltas);

    /// Replaces the deltas of an item.
    /// @param kind  names the deltas in the errors: "" or a word followed by a blank
    CallOutcome write(int target, int item, const TargetDeltas& deltas, const char* kind = "");

  private:
    void evaluate();
    void warnOfLiveMesh(int target, int item);

    MObject blendShape_;
    bool hasEvaluated_ = false;
    bool hasWarned_ = false;
};

/// The state of an item before a run of a command, for undo.
class SavedItem {
  public:
    /// Saves the deltas of an item, and whether the item exists.
    void save(TargetEditor& targets, int target, int item);
    /// The saved deltas.
    const TargetDeltas& deltas() const { return deltas_; }

    /// Restores the deltas, once. Does nothing if nothing is saved or the blend shape was deleted. An
    /// in-between that did not exist is removed; a full item that did not exist stays, with empty lists.
    CallOutcome restore();
    /// Discards what was saved.
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
