#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text forms of numbers and of wide characters. A decimal point is a point in every locale that the host
/// runs in.
namespace host::api {

/// At most `digits` significant digits, no trailing zeros; a whole number below 1e15 in full, without a
/// point.
std::string numberText(double value, int digits = 10);

/// Fixed-point form; `decimals` below 0 count as 0.
std::string fixedText(double value, int decimals);

struct LeadingNumber {
    double value = 0.0;
    std::size_t length = 0;  ///< how many characters it took, blanks before it included; 0 when there is none
};

/// The decimal number that a text begins with, "inf" and "nan" among them. Beyond a double's range it is
/// infinite or 0.
LeadingNumber leadingNumber(std::string_view text);

/// Characters outside the basic plane become surrogate pairs where wchar_t has 16 bits; bytes that are no
/// UTF-8 become U+FFFD.
std::wstring wideFromUtf8(std::string_view text);
std::string utf8FromWide(std::wstring_view text);

}  // namespace host::api
