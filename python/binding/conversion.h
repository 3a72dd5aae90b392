#pragma once

#include <pybind11/pybind11.h>

#include <string>

#include "mel/commandRegistry.h"

namespace delven::python {

/// The arguments of a call, by the command's syntax. A command without one takes flags with a single value.
/// Raises TypeError, ValueError or OverflowError as Maya's module does.
host::mel::TypedArguments argumentsOf(const host::mel::CommandRegistry& commands, const std::string& name,
                                      const pybind11::args& positional, const pybind11::kwargs& flags);

/// The result of a call: None, a number, a text, a list, a list of tuples or a dictionary.
pybind11::object resultOf(const host::mel::CommandResult& result);
/// A value of a script: an empty array is an empty list.
pybind11::object objectOf(const host::mel::Value& value);

/// What a command takes, as a dictionary: flags as tuples (short, long, kinds of the arguments, may stand
/// several times), kinds of the positional arguments, whether it takes objects, and its modes.
pybind11::object describe(const host::mel::Syntax& syntax);

/// A text in UTF-8. Raises ValueError for half a surrogate and for a NUL.
std::string textOf(pybind11::handle text);

}  // namespace delven::python
