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
    bool isTooLarge = false;  ///< a whole number beyond 32 bits: no int
    int integer = 0;          ///< meaningful when isInt
    double value = 0;         ///< always set
    std::size_t length = 0;   ///< characters used
};

/// Whether a number, less what stands behind its point, is an int of 32 bits.
constexpr bool fitsInt(double value) {
    return value > -2147483649.0 && value < 2147483648.0;
}

/// Reads the number (decimal, with fraction or exponent, or 0x hexadecimal) that `text` begins with, with an
/// optional sign; nothing when it does not begin with one.
std::optional<ParsedNumber> parseNumberPrefix(std::string_view text);
/// The same when the whole of `text` is one number.
std::optional<ParsedNumber> parseNumber(std::string_view text);

/// What is wrong with a whole number beyond 32 bits.
std::string integerTooLarge(std::string_view digits);

}  // namespace host::mel
