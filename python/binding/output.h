#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "graph/messages.h"
#include "mel/commandTable.h"

namespace delven::python {

/// Hands the host's text to Python: what scripts print goes to sys.stdout, messages to sys.stderr in the form
/// of the script editor.
///
/// Worker threads of a command may report too. Python does not run on them: their text waits until the main
/// thread writes the next one, or asks for it (flush).
class Output final : public host::mel::Output, public host::graph::MessageSink {
  public:
    /// The thread of this call is the main thread.
    Output() : main_(std::this_thread::get_id()) {}

    void print(std::string_view text) override { write("stdout", std::string(text)); }
    void info(std::string_view text) override { show("", text); }
    void warning(std::string_view text, const host::mel::SourcePosition&) override {
        show("Warning: ", text);
    }
    void error(std::string_view text, const host::mel::SourcePosition&) override {
        if (!holdsErrors_) show("Error: ", text);
    }
    void result(std::string_view text) override { show("Result: ", text); }

    void print(const std::string& text) override { write("stdout", text); }
    void info(const std::string& text) override { show("", text); }
    void warning(const std::string& text) override { show("Warning: ", text); }
    void error(const std::string& text) override { show("Error: ", text); }

    /// Writes what waits.
    void flush();
    bool isMainThread() const { return std::this_thread::get_id() == main_; }
    /// While it is set, errors of scripts are not shown: the caller raises them.
    void holdErrors(bool isHeld) { holdsErrors_ = isHeld; }

  private:
    void show(const char* kind, std::string_view text) {
        write("stderr", "# " + std::string(kind) + std::string(text) + " #\n");
    }
    void write(const char* stream, std::string text);

    const std::thread::id main_;
    bool holdsErrors_ = false;
    std::mutex mutex_;
    std::vector<std::pair<const char*, std::string>> waiting_;
};

}  // namespace delven::python
