#include "nodes/ramp.h"

#include <algorithm>

namespace host::nodes {

namespace {

/// The slope of a spline at an entry: that between its neighbours.
double slopeAt(const std::vector<RampEntry>& entries, std::size_t at) {
    const RampEntry& left = entries[at > 0 ? at - 1 : at];
    const RampEntry& right = entries[at + 1 < entries.size() ? at + 1 : at];
    return right.position > left.position ? (right.value - left.value) / (right.position - left.position)
                                          : 0.0;
}

double splineValue(const std::vector<RampEntry>& entries, std::size_t left, double part) {
    const RampEntry& a = entries[left];
    const RampEntry& b = entries[left + 1];
    const double length = b.position - a.position;
    const double rest = 1.0 - part;
    return a.value + (b.value - a.value) * part * part * (3.0 - 2.0 * part) +
           length * part * rest * (slopeAt(entries, left) * rest - slopeAt(entries, left + 1) * part);
}

}  // namespace

double rampValue(std::vector<RampEntry> entries, double at) {
    if (entries.empty()) return at;
    const auto isBefore = [](const RampEntry& a, const RampEntry& b) { return a.position < b.position; };
    std::stable_sort(entries.begin(), entries.end(), isBefore);
    const auto next = std::upper_bound(entries.begin(), entries.end(), RampEntry{at}, isBefore);
    if (next == entries.begin()) return next->value;
    const auto left = static_cast<std::size_t>(next - entries.begin()) - 1;
    const RampEntry& a = entries[left];
    if (next == entries.end()) return a.value;
    const double part = (at - a.position) / (next->position - a.position);
    switch (a.step) {
        case RampStep::Linear:
            return a.value + part * (next->value - a.value);
        case RampStep::Smooth:
            return a.value + part * part * (3.0 - 2.0 * part) * (next->value - a.value);
        case RampStep::Spline:
            return splineValue(entries, left, part);
        default:
            return a.value;
    }
}

}  // namespace host::nodes
