#pragma once

#include <optional>
#include <string>

namespace host::platform {

/// Lines of standard input. At a terminal they are asked for with a prompt and can be edited, with a history,
/// where the system has a library for that.
class LineReader {
  public:
    LineReader();

    bool isTerminal() const { return isTerminal_; }
    /// The next line without its end; nothing at the end of the input. Only a terminal shows the prompt;
    /// there an interrupt gives nothing, too, and leaves its flag set.
    std::optional<std::string> read(const std::string& prompt);

  private:
    bool isTerminal_;
};

}  // namespace host::platform
