// The Python module _delven: the running host and its commands. The package delven makes the modules that
// scripts import of it.

#include <pybind11/pybind11.h>

#include <string>

#include "binding/arrays.h"
#include "binding/conversion.h"
#include "binding/host.h"

namespace py = pybind11;

namespace delven::python {

namespace {

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
        "syntax",
        [](const std::string& name) {
            const host::mel::Syntax* const syntax = Host::current().commands().syntax(name);
            return syntax != nullptr ? describe(*syntax) : py::none();
        },
        "What a command takes; None if it declares nothing.");
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
        defineArrays(module);
        return module.ptr();
    }
    PYBIND11_CATCH_INIT_EXCEPTIONS
}

}  // namespace delven::python
