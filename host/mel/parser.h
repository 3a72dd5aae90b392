#pragma once

#include <string>
#include <string_view>

#include "mel/program.h"
#include "mel/variableScopes.h"

namespace host::mel {

/// Parses a whole text. Linear in its length; nesting deeper than `kMaximumNesting` is an error.
/// @param globals    variables that earlier runs have left
/// @param firstLine  number of the line that the text begins on
ParseResult parse(std::string text, std::string fileName, const GlobalTable& globals, int firstLine = 1);

/// Parentheses, blocks, brackets and quoted commands inside one another.
constexpr int kMaximumNesting = 200;

}  // namespace host::mel
