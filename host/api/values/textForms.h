#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text forms of numbers and of wide characters. The decimal separator is a point in every locale of the
/// host.
namespace host::api {

/// At most `digits` significant digits, without trailing zeros. A whole number below 1e15 has all its digits
/// and no point.
std::string numberText(double value, int digits = 10);

/// Fixed-point form. `decimals` below 0 count as 0.
std::string fixedText(double value, int decimals);

struct LeadingNumber {
    double value = 0.0;
    /// Number of characters used, including blanks before it; 0 if there is no number.
    std::size_t length = 0;
};

/// The decimal number at the start of a text, which may be "inf" or "nan". Beyond a double's range it is
/// infinite or 0.
LeadingNumber leadingNumber(std::string_view text);

/// Where wchar_t has 16 bits, characters outside the basic plane become surrogate pairs. Bytes that are not
/// UTF-8 become U+FFFD.
std::wstring wideFromUtf8(std::string_view text);
std::string utf8FromWide(std::wstring_view text);

}  // namespace host::api
