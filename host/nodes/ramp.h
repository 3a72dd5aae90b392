#pragma once

#include <vector>

namespace host::nodes {

/// How a ramp goes on from an entry to the next one; the numbers of value_Interp.
enum class RampStep { None = 0, Linear = 1, Smooth = 2, Spline = 3 };

struct RampEntry {
    double position = 0.0;
    double value = 0.0;
    RampStep step = RampStep::None;
};

/// The value of a ramp at a place. Before the first entry it is that of the first, after the last that of the
/// last, and without entries the place itself.
/// @param entries  in any order; of several at the same position, the last one counts from there on
double rampValue(std::vector<RampEntry> entries, double at);

}  // namespace host::nodes
