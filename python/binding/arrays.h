#pragma once

#include <pybind11/pybind11.h>

namespace delven::python {

/// Adds the functions that hand whole arrays to numpy and take them back, each with one copy. Setters are one
/// step of the undo queue. They check the number of entries; the package delven.arrays checks the rest.
void defineArrays(pybind11::module_& module);

}  // namespace delven::python
