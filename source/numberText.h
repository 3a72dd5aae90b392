#pragma once

#include <cstddef>
#include <string_view>

/// Numbers as data files and scripts hold them: in the digits of the C locale, whatever locale the host
/// runs in.
///
/// Written and read with <charconv> where the standard library has it for floating point (the macro
/// __cpp_lib_to_chars tells), otherwise through streams of the C locale: the same digits, several
/// times slower.

/// Room that a written number takes at most.
constexpr std::size_t kNumberRoom = 32;

/// Writes a number as a stream does by default: general form, at most six significant digits.
/// @param at  room for kNumberRoom characters
/// @return one past the last character written
char* writeNumber(char* at, double value);
char* writeNumber(char* at, int value);

/// Room that a number with six decimals takes at most.
constexpr std::size_t kFixedRoom = 320;

/// Writes a number in full with six decimals, as "%f" does in the C locale.
/// @param at  room for kFixedRoom characters
/// @return one past the last character written
char* writeFixed(char* at, double value);

/// Reads the number that a text begins with, after any blanks: sign, digits, fraction, exponent.
/// What follows it does not matter. Names such as "nan" and "inf" are no numbers.
/// @param value  0 when there is no number, or none that a double can hold
/// @return how many characters it took, blanks before it included; 0 when there is none
std::size_t readNumber(std::string_view text, double& value);

/// The same for a whole number, which ends before a fraction. One that is out of range gives the
/// nearest int: a huge index must not be taken for a small one.
std::size_t readNumber(std::string_view text, int& value);
