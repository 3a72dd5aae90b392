#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace host::commands {

/// A line that says how far the opening of a file is. It appears after a second, changes ten times a second
/// at most, and is wiped at the end.
class ProgressLine {
  public:
    /// @param seconds  a clock
    /// @param write    to a terminal
    ProgressLine(std::function<double()> seconds, std::function<void(const std::string&)> write)
        : seconds_(std::move(seconds)), write_(std::move(write)) {}

    /// From here on the work is a new one.
    void begin();
    /// @param part   of the work that is done, 0 to 1
    /// @param bytes  of the whole file
    void show(double part, std::uint64_t bytes);
    void end();

  private:
    std::function<double()> seconds_;
    std::function<void(const std::string&)> write_;
    double next_ = 0.0;  // when the line may change
    bool isShown_ = false;
};

}  // namespace host::commands
