#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/scene.h"

namespace delven::walk {

/// One line of a walk: a script, whether undo takes back all of it, and whether it changes something when it
/// fails.
struct Line {
    std::string text;
    bool isExact = true;
    bool failsCleanly = true;

    /// The script with a remark where it is not exact, and back.
    std::string written() const;
    static Line read(const std::string& written);
};

/// What should not have happened.
struct Finding {
    std::string kind;  // one of a few: a smaller walk has the same finding when it has the same kind
    std::string text;
};

/// Runs lines in a scene of its own, and checks with each one that
/// - undo of it gives the scene before, and redo the scene after,
/// - a line that fails changes nothing but what its earlier statements did, which undo takes back,
/// - what changes the scene can be undone.
/// The lines "undo" and "redo" walk through the queue; each scene on the way must be the one that was there.
/// What is not exact ends the history: nothing before it is compared any more. Calls of ours are not exact
/// where a target has no deltas (some give it a zero delta, which stays) or an original has tweaks (setting
/// its points makes them a part of these). Nothing is any more once deltas were written, or an original
/// changed, while a target mesh was connected: the deltas last until that mesh changes, also by undo.
class Walk {
  public:
    enum class Checks { kEveryLine, kNone };

    explicit Walk(Checks checks = Checks::kEveryLine) : checks_(checks) { forgetHistory(); }

    std::optional<Finding> run(const Line& line);
    /// Whether everything that was evaluated is what evaluating it anew gives.
    std::optional<Finding> findStaleValue();

    Scene& scene() { return scene_; }
    /// The scene as text, with what all meshes evaluate to. Component lists have an entry for each vertex,
    /// which is how our undo writes them; meshes that target meshes left behind when they went are left out,
    /// as our undo does.
    std::string state();
    /// All that the lines said, a line each.
    const std::string& transcript() const { return transcript_; }
    int failures() const { return failures_; }
    /// Nodes feed themselves and undo did not help: what they give depends on when they are evaluated.
    bool hadCycle() const { return hadCycle_; }

  private:
    std::optional<Finding> runLine(const Line& line);
    std::optional<Finding> runStep(const Line& line);
    std::optional<Finding> walkHistory(const Line& line);
    std::optional<Finding> compare(const std::string& kind, const Line& line, const std::string& expected,
                                   const std::string& found) const;
    Outcome runScript(const std::string& text);
    void keepState(std::size_t depth, std::string state);
    void forgetHistory();
    std::size_t depth();
    /// Remembers that a line writes deltas while a target mesh is connected.
    void noteDeltas(const Line& line);
    /// Whether the scene keeps a line from being exact.
    bool isBlurredFor(const Line& line);
    bool hasLiveItem();
    /// What all intermediate meshes evaluate to, by the number of the node.
    using Originals = std::map<std::uint64_t, std::string>;
    Originals originals();
    void repeat(const std::string& word, std::size_t times);
    bool takesCycleBack(std::size_t start);

    Checks checks_;
    Scene scene_;
    std::vector<std::string> states_;  // by the number of entries that can be undone; empty where not known
    std::string transcript_;
    int failures_ = 0;
    bool hadCycle_ = false;
    bool isBlurred_ = false;  // deltas that last until a mesh changes were written
};

}  // namespace delven::walk
