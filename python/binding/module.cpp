// The Python module _delven: the running host and its commands. The package delven makes the modules that
// scripts import of it.

#include <pybind11/pybind11.h>

#if !defined(_WIN32)
#include <unistd.h>
#endif

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "binding/conversion.h"
#include "binding/output.h"
#include "platform/interrupt.h"
#include "runtime/runtime.h"

namespace py = pybind11;

namespace delven::python {

namespace {

using host::mel::CommandResult;
using host::mel::ErrorKind;

long processId() {
#if defined(_WIN32)
    return 0;
#else
    return static_cast<long>(getpid());
#endif
}

/// Throws what a script expects when a command of the host fails.
[[noreturn]] void raise(const CommandResult& result) {
    // A command that showed its own message leaves only this to say.
    if (result.errorShown) throw std::runtime_error("Maya command error");
    switch (host::mel::CommandRegistry::kindOf(result)) {
        case ErrorKind::NoObject:
        case ErrorKind::SeveralObjects:
            throw py::value_error(result.error);
        case ErrorKind::Arguments:
            throw py::type_error(result.error);
        case ErrorKind::Other:
            break;
    }
    throw std::runtime_error(result.error);
}

/// In MEL an empty list is no list. In Python these commands refuse it: they would take the selection
/// instead.
bool refusesEmptyLists(const std::string& name) {
    return name == "listConnections" || name == "listHistory";
}

bool hasOnlyEmptyLists(const host::mel::TypedArguments& arguments) {
    return !arguments.objects.empty() &&
           std::all_of(arguments.objects.begin(), arguments.objects.end(),
                       [](const host::mel::Value& object) { return object.isArray(); });
}

/// The one host of this process. It lives until the process ends: plug-ins keep objects of it.
class Host {
  public:
    Host() : process_(processId()), runtime_(output_, output_) {
        if (!host::runtime::Runtime::hasOwnPlugin()) {
            output_.warning("DELVENTools was not found beside the host.");
            return;
        }
        const CommandResult loaded = runtime_.loadOwnPlugin();
        if (!loaded.ok && !loaded.errorShown) output_.error(loaded.error);
    }

    /// The host, if this thread and this process may use it.
    static Host& current() {
        if (instance() == nullptr) instance() = new Host;
        Host& host = *instance();
        if (!host.output_.isMainThread()) {
            throw std::runtime_error(
                "Only the thread that started the host may use it. Let that thread call what you need.");
        }
        if (host.process_ != processId()) {
            throw std::runtime_error(
                "This process is a fork of the one that started the host, and cannot use its scene. Start "
                "new "
                "processes instead (multiprocessing: the method \"spawn\").");
        }
        return host;
    }

    host::mel::CommandRegistry& commands() { return runtime_.commands(); }

    py::object call(const std::string& name, const py::args& positional, const py::kwargs& flags) {
        host::mel::TypedArguments arguments = argumentsOf(commands().syntax(name), positional, flags);
        if (hasOnlyEmptyLists(arguments)) {
            if (name == "ls") return py::list();
            if (refusesEmptyLists(name)) throw py::type_error(name + ": an empty list names no objects.");
        }
        const CommandResult result = commands().callParsed(name, std::move(arguments));
        finish();
        if (!result.ok) raise(result);
        return resultOf(result);
    }

    py::object eval(const std::string& text) {
        host::mel::RunResult result;
        {
            const host::platform::InterruptGuard guard;
            output_.holdErrors(true);
            result = commands().run(text);
            output_.holdErrors(false);
        }
        finish();
        if (result.ok) return objectOf(result.value);
        if (result.error.message == "Interrupted.") {
            PyErr_SetNone(PyExc_KeyboardInterrupt);
            throw py::error_already_set();
        }
        std::string place;
        if (result.error.position.line > 0) {
            place = "line " + std::to_string(result.error.position.line) + '.' +
                    std::to_string(result.error.position.column) + ": ";
            if (!result.error.position.file.empty()) place.insert(0, result.error.position.file + ", ");
        }
        throw std::runtime_error("Error occurred during execution of MEL script\n" + place +
                                 result.error.message);
    }

    void defer(py::function work, bool lowPriority) {
        // The queue may be dropped when Python is gone.
        auto* kept = new py::function(std::move(work));
        commands().defer(
            [kept] {
                const std::unique_ptr<py::function> owned(kept);
                try {
                    (*owned)();
                } catch (py::error_already_set& error) {
                    error.restore();
                    PyErr_WriteUnraisable(owned->ptr());
                }
            },
            lowPriority);
    }

    void idle() {
        commands().runDeferred();
        finish();
    }

    void warn(const std::string& text) { output_.warning(text); }
    void flush() { output_.flush(); }

  private:
    static Host*& instance() {
        static Host* host = nullptr;
        return host;
    }

    void finish() {
        output_.flush();
        if (!commands().interpreter().isStopped()) return;
        PyErr_SetObject(PyExc_SystemExit, py::int_(commands().exitStatus()).ptr());
        throw py::error_already_set();
    }

    const long process_;
    Output output_;
    host::runtime::Runtime runtime_;
};

py::object findCommand(const std::string& name) {
    if (!Host::current().commands().has(name)) return py::none();
    return py::cpp_function(
        [name](const py::args& positional, const py::kwargs& flags) {
            return Host::current().call(name, positional, flags);
        },
        py::name(name.c_str()), "A command of the host.");
}

void define(py::module_& module) {
    module.doc() = "The headless host: its commands and its script language.";
    module.def("command", findCommand, "The command of a name; None if there is none.");
    module.def(
        "names", [] { return objectOf(host::mel::Value(Host::current().commands().names())); },
        "All commands.");
    module.def(
        "version", [] { return Host::current().commands().version(); },
        "A number that changes with the set of commands.");
    module.def(
        "eval", [](const std::string& text) { return Host::current().eval(text); },
        "Runs a script of the host's language.");
    module.def(
        "defer",
        [](py::function work, bool lowPriority) { Host::current().defer(std::move(work), lowPriority); },
        "Calls a function without arguments after the outermost command.");
    module.def(
        "idle", [] { Host::current().idle(); }, "Runs what was deferred.");
    module.def(
        "warn", [](const std::string& text) { Host::current().warn(text); }, "Shows a warning.");
}

}  // namespace

/// What a module of pybind11 begins with, behind a question that must come first: pybind11 itself waits for
/// ever in a second interpreter.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming): Python looks for this name.
extern "C" PYBIND11_EXPORT PyObject* PyInit__delven() {
    if (PyInterpreterState_Get() != PyInterpreterState_Main()) {
        PyErr_SetString(PyExc_ImportError, "The host cannot be used in a second interpreter of one process.");
        return nullptr;
    }
    PYBIND11_CHECK_PYTHON_VERSION
    PYBIND11_ENSURE_INTERNALS_READY
    static PyModuleDef definition{};
    auto module = py::module_::create_extension_module("_delven", nullptr, &definition);
    try {
        define(module);
        return module.ptr();
    }
    PYBIND11_CATCH_INIT_EXCEPTIONS
}

}  // namespace delven::python
