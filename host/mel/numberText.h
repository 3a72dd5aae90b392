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
    bool isTooLarge = false;  ///< a whole number beyond 32 bits: not an int
    int integer = 0;          ///< set if isInt
    double value = 0;         ///< always set
    std::size_t length = 0;   ///< characters used
};

/// Whether the whole part of a number fits an int of 32 bits.
constexpr bool fitsInt(double value) {
    return value > -2147483649.0 && value < 2147483648.0;
}

/// Reads the number at the start of `text`: decimal, with fraction or exponent, or 0x hexadecimal, with an
/// optional sign. Nothing if `text` does not start with a number.
std::optional<ParsedNumber> parseNumberPrefix(std::string_view text);
/// The same, if all of `text` is one number.
std::optional<ParsedNumber> parseNumber(std::string_view text);

/// The error text for a whole number beyond 32 bits.
std::string integerTooLarge(std::string_view digits);

}  // namespace host::mel
