#pragma once

#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Numbers as text, the same in every locale. All rooms of the host read and write their numbers with this.
namespace host::text {

/// Appends a number in the fewest digits that read back as the same number.
template <typename Number>
void appendShortest(std::string& text, Number number) {
    char digits[40];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/// Appends a number with up to this many significant digits, without trailing zeros.
void appendRounded(std::string& text, double number, int digits);

/// Appends a number with this many decimals, and without an exponent.
void appendFixed(std::string& text, double number, int decimals);

/// A number at the beginning of a text.
template <typename Number>
struct LeadingNumber {
    Number value{};
    std::size_t length = 0;  ///< characters used; 0 when the text does not begin with a number
    /// No Number is that large. The value is infinity or the largest integer, negative where the text is.
    bool isTooLarge = false;
};

/// Reads the decimal number that a text begins with: no blanks, a minus sign but no plus sign. Floating-point
/// numbers that are too small become 0.
/// @tparam Number  int, std::int64_t, float or double
template <typename Number>
LeadingNumber<Number> readNumber(std::string_view text);

/// Indices from `first` to `last`, both included.
struct IndexRange {
    int first = 0;
    int last = 0;
};

/// Reads "3" or "3:7"; nothing for any other text, for negative indices, and where the last comes before the
/// first.
std::optional<IndexRange> readIndexRange(std::string_view text);

}  // namespace host::text
