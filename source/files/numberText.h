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
/// @param value  0 when there is no number; infinity for one beyond what a double can hold
/// @return how many characters it took, blanks before it included; 0 when there is none
std::size_t readNumber(std::string_view text, double& value);

/// Whether a number stays finite in single precision, which is what the host keeps of most.
bool fitsSingle(double value);

/// Reads the index that a text begins with: a whole number, which ends before a fraction.
/// @param index  kNoIndex for one that is negative or beyond the largest int: such an index must be taken
///               for no other; 0 when there is no number
/// @return as above
std::size_t readIndex(std::string_view text, int& index);

constexpr int kNoIndex = -1;
