#pragma once

#include <cstddef>
#include <string_view>

/// Numbers as text in data files and scripts. They follow the C locale, whatever the locale of the host.
///
/// Uses <charconv> if the standard library has it for floating point (the macro __cpp_lib_to_chars).
/// Otherwise uses streams of the C locale: the same digits, several times slower.

/// Largest number of characters of a written number.
constexpr std::size_t kNumberRoom = 32;

/// Writes a number as a stream does by default: general form, at most six significant digits.
/// @param at  has room for kNumberRoom characters
/// @return one past the last character written
char* writeNumber(char* at, double value);
char* writeNumber(char* at, int value);

/// Largest number of characters of a number with six decimals.
constexpr std::size_t kFixedRoom = 320;

/// Writes a number with six decimals, as "%f" does in the C locale.
/// @param at  has room for kFixedRoom characters
/// @return one past the last character written
char* writeFixed(char* at, double value);

/// Reads the number at the beginning of a text: blanks, sign, digits, fraction, exponent. The text after it
/// does not matter. Names such as "nan" and "inf" are not numbers.
/// @param value  0 if there is no number; infinity if it is too large for a double
/// @return number of characters used, blanks before the number included; 0 if there is no number
std::size_t readNumber(std::string_view text, double& value);

/// Whether a number stays finite in single precision, in which the host stores most numbers.
bool fitsSingle(double value);

/// Reads the index at the beginning of a text: a whole number. It ends before a fraction.
/// @param index  kNoIndex for a number that is negative or larger than the largest int, so that it is not
///               taken for another index; 0 if there is no number
/// @return as above
std::size_t readIndex(std::string_view text, int& index);

constexpr int kNoIndex = -1;
