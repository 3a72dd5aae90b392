#pragma once

#include <limits>
#include <vector>

#include "mel/builtins.h"

namespace host::mel {

constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

/// The built-in functions, one family each.
const std::vector<BuiltinFunction>& basicBuiltins();
const std::vector<BuiltinFunction>& mathBuiltins();
const std::vector<BuiltinFunction>& stringBuiltins();
const std::vector<BuiltinFunction>& arrayBuiltins();

}  // namespace host::mel
