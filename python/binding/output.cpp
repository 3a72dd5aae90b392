#include "binding/output.h"

#include <pybind11/pybind11.h>

namespace delven::python {

namespace {

/// Bytes that are no UTF-8, as in a text that a script cut, are shown as question marks.
void writeNow(const char* stream, const std::string& text) {
    PyObject* const file = PySys_GetObject(stream);
    if (file == nullptr || file == Py_None) return;
    // A message may come while Python handles an exception.
    const pybind11::error_scope keep;
    const auto decoded = pybind11::reinterpret_steal<pybind11::object>(
        PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "replace"));
    if (!decoded || PyFile_WriteObject(decoded.ptr(), file, Py_PRINT_RAW) != 0) PyErr_Clear();
}

}  // namespace

void Output::write(const char* stream, std::string text) {
    if (!isMainThread()) {
        const std::lock_guard<std::mutex> lock(mutex_);
        waiting_.emplace_back(stream, std::move(text));
        return;
    }
    flush();
    writeNow(stream, text);
}

void Output::flush() {
    std::vector<std::pair<const char*, std::string>> all;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        all.swap(waiting_);
    }
    for (const auto& [stream, text] : all)
        writeNow(stream, text);
}

}  // namespace delven::python
