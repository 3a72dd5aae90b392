#pragma once

#include <optional>
#include <string>

namespace host::platform {

/// Lines of standard input. A terminal shows a prompt. There the lines can be edited, with a history, if the
/// system has a library for it.
class LineReader {
  public:
    LineReader();

    bool isTerminal() const { return isTerminal_; }
    /// The next line without its end; nothing at the end of the input. Only a terminal shows the prompt. At a
    /// terminal, an interrupt also gives nothing and leaves its flag set.
    std::optional<std::string> read(const std::string& prompt);

  private:
    bool isTerminal_;
};

}  // namespace host::platform
