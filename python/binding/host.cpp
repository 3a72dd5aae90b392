#include "binding/host.h"

#if !defined(_WIN32)
#include <unistd.h>
#endif

#include <algorithm>
#include <memory>
#include <optional>

#include "binding/conversion.h"
#include "graph/scopedValue.h"
#include "platform/interrupt.h"

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

/// In Python an array is one list, which knows its length. In MEL its length stands before its numbers.
void addArrayLength(host::mel::TypedArguments& arguments, const py::args& positional) {
    const bool isOneList = positional.size() == 2 && py::isinstance<py::list>(positional[1]);
    for (const host::mel::TypedArguments::Flag& flag : arguments.flags) {
        const bool isType = (flag.name == "type" || flag.name == "typ") && !flag.values.empty();
        const std::string type = isType && isOneList ? flag.values.front().toString() : std::string();
        if (type != "Int32Array" && type != "doubleArray") continue;
        if (arguments.objects.back().isArray()) arguments.objects.pop_back();
        const auto length = static_cast<int>(arguments.objects.size()) - 1;
        arguments.objects.insert(arguments.objects.begin() + 1, host::mel::Value(length));
    }
}

}  // namespace

Host::Host() : process_(processId()), runtime_(output_, output_) {
    if (!host::runtime::Runtime::hasOwnPlugin()) {
        output_.warning("DELVENTools was not found beside the host.");
        return;
    }
    const CommandResult loaded = runtime_.loadOwnPlugin();
    if (!loaded.ok && !loaded.errorShown) output_.error(loaded.error);
}

Host& Host::current() {
    // It is never deleted.
    static Host* const instance = new Host;
    Host& host = *instance;
    if (!host.output_.isMainThread()) {
        throw std::runtime_error(
            "Only the thread that started the host may use it. Let that thread call what you need.");
    }
    if (host.process_ != processId()) {
        throw std::runtime_error(
            "This process is a fork of the one that started the host, and cannot use its scene. "
            "Start new processes instead (multiprocessing: the method \"spawn\").");
    }
    return host;
}

py::object Host::call(const std::string& name, const py::args& positional, const py::kwargs& flags) {
    host::mel::TypedArguments arguments = argumentsOf(commands(), name, positional, flags);
    if (name == "setAttr") addArrayLength(arguments, positional);
    if (hasOnlyEmptyLists(arguments)) {
        if (name == "ls") return py::list();
        if (refusesEmptyLists(name)) throw py::type_error(name + ": an empty list names no objects.");
    }
    const CommandResult result = commands().callParsed(name, std::move(arguments));
    finish();
    if (!result.ok) raise(result);
    return resultOf(result);
}

py::object Host::eval(const std::string& text) {
    // What was deferred may call this again.
    const host::graph::ScopedValue<int> depth(evaluations_, evaluations_ + 1);
    std::optional<host::platform::InterruptGuard> guard;
    if (evaluations_ == 1) guard.emplace();
    output_.holdErrors(true);
    const host::mel::RunResult result = commands().run(text);
    output_.holdErrors(evaluations_ > 1);
    guard.reset();
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

void Host::defer(py::function work, bool lowPriority) {
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

void Host::idle() {
    commands().runDeferred();
    finish();
}

void Host::finish() {
    output_.flush();
    if (!commands().interpreter().isStopped()) return;
    PyErr_SetObject(PyExc_SystemExit, py::int_(commands().exitStatus()).ptr());
    throw py::error_already_set();
}

}  // namespace delven::python
