#pragma once

#include <string>
#include <string_view>

#include "mel/program.h"
#include "mel/variableScopes.h"

namespace host::mel {

/// Parses a whole text. Linear in its length. Nesting deeper than `kMaximumNesting` is an error.
/// @param globals    variables of earlier runs
/// @param firstLine  number of the line on which the text begins
ParseResult parse(std::string text, std::string fileName, const GlobalTable& globals, int firstLine = 1);

/// How deep parentheses, blocks, brackets and quoted commands may be nested.
constexpr int kMaximumNesting = 200;

}  // namespace host::mel
