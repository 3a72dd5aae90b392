#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host::mel {

/// Appends a float as scripts print it: up to ten significant digits, no trailing zeros.
void appendFloat(std::string& text, double value);
void appendInt(std::string& text, int value);

/// A number as the lexer reads it.
struct ParsedNumber {
    bool isInt = false;
    int integer = 0;         ///< meaningful when isInt
    double value = 0;        ///< always set
    std::size_t length = 0;  ///< characters used
};

/// Reads the number (decimal, with fraction or exponent, or 0x hexadecimal) that `text` begins with, with an
/// optional sign; nothing when it does not begin with one. A whole number beyond 32 bits is a float.
std::optional<ParsedNumber> parseNumberPrefix(std::string_view text);
/// The same when the whole of `text` is one number.
std::optional<ParsedNumber> parseNumber(std::string_view text);

}  // namespace host::mel
