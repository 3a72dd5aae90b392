#include "commands/progressLine.h"

#include <cmath>

namespace host::commands {

namespace {

constexpr double kDelay = 1.0;
constexpr double kInterval = 0.1;
// To the beginning of the line, and wipe it.
constexpr const char* kWipe = "\r\x1B[K";

}  // namespace

void ProgressLine::begin() {
    next_ = seconds_() + kDelay;
    isShown_ = false;
}

void ProgressLine::show(double part, std::uint64_t bytes) {
    const double now = seconds_();
    if (now < next_) return;
    next_ = now + kInterval;
    isShown_ = true;
    constexpr double kMegabyte = 1e6;
    const double whole = static_cast<double>(bytes) / kMegabyte;
    write_(kWipe + std::string("Opening: ") + std::to_string(std::lround(100.0 * part)) + " %, " +
           std::to_string(std::lround(part * whole)) + " of " + std::to_string(std::lround(whole)) + " MB");
}

void ProgressLine::end() {
    if (isShown_) write_(kWipe);
    isShown_ = false;
}

}  // namespace host::commands
