#pragma once

#include <pybind11/pybind11.h>

#include <string>

#include "binding/output.h"
#include "runtime/runtime.h"

namespace delven::python {

/// The one host of this process. It lives until the process ends: plug-ins keep objects of it.
class Host {
  public:
    Host();

    /// The host, which the first call starts. Raises RuntimeError in another thread, and in a fork of the
    /// process that started it.
    static Host& current();

    host::mel::CommandRegistry& commands() { return runtime_.commands(); }
    host::graph::Graph& graph() { return runtime_.graph(); }

    /// Calls a command. Raises what Maya's module raises.
    pybind11::object call(const std::string& name, const pybind11::args& positional,
                          const pybind11::kwargs& flags);
    /// Runs a script of the host's language. Raises RuntimeError, or KeyboardInterrupt.
    pybind11::object eval(const std::string& text);
    /// Calls a function after the outermost command.
    void defer(pybind11::function work, bool lowPriority);
    void idle();
    void warn(const std::string& text) { output_.warning(text); }

    /// Runs changes of the scene as one step of the undo queue. If they throw, they are taken back.
    template <typename Work>
    void asOneStep(Work&& work) {
        auto changes = std::make_unique<host::graph::ChangeList>();
        try {
            const host::graph::RecordingScope recording(graph(), changes.get());
            work();
        } catch (...) {
            changes->undo(graph());
            throw;
        }
        if (!changes->empty()) graph().undoQueue().push(std::move(changes));
        finish();
    }
    /// Ends a call: shows what worker threads had to say, and leaves Python if a script asked for it.
    void finish();

  private:
    const long process_;
    Output output_;
    host::runtime::Runtime runtime_;
    int evaluations_ = 0;  // how many scripts are nested
};

}  // namespace delven::python
