#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "walk/walk.h"

namespace delven::walk {

/// What a walk in a process of its own left.
struct Report {
    std::vector<Line> lines;  // that it ran, the one that ended the process included
    int failures = 0;         // lines that failed, as many do
    bool hadCycle = false;    // from there on nothing was compared
    std::optional<Finding> finding;
};

/// Gives the next line of a walk in a scene, or nothing at its end.
using NextLine = std::function<std::optional<Line>(Scene&)>;

/// Runs a walk in a process of its own, in an empty folder with the data files that steps read, with standard
/// error in the file "stderr" beside it. A process that crashes, or runs for more than a minute, is a
/// finding. With each line it is checked what Walk checks. In the end everything is evaluated anew, and all
/// lines run a second time, without checks: both must give the same scene, and the second run must say the
/// same.
Report walked(const NextLine& nextLine);
Report walked(const std::vector<Line>& lines);

/// The lines that are enough for a finding of the same kind: as few as leaving out more and more can give in
/// `tries` runs.
std::vector<Line> shrunk(const Report& report, int tries);

}  // namespace delven::walk
