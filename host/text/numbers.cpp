#include "text/numbers.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <system_error>
#include <type_traits>

namespace host::text {

namespace {

void append(std::string& text, double number, std::chars_format form, int precision) {
    // The longest double in full, without its decimals.
    constexpr int kMostDigits = 320;
    constexpr int kUsualPrecision = 64;
    char usual[kMostDigits + kUsualPrecision];
    std::string large(precision > kUsualPrecision ? static_cast<std::size_t>(kMostDigits + precision) : 0,
                      '\0');
    char* const first = large.empty() ? usual : large.data();
    char* const last = first + (large.empty() ? sizeof usual : large.size());
    text.append(first, std::to_chars(first, last, number, form, precision).ptr);
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Of a number that its type cannot hold: whether it is too small rather than too large. The standard library
/// does not say which.
bool isTooSmall(std::string_view number) {
    constexpr long kFarAway = 1'000'000'000;
    long magnitude = 0;  // digits before the point, or minus the zeros behind it
    bool hasDigit = false;
    bool isBehindPoint = false;
    std::size_t at = number.front() == '-' ? 1 : 0;
    for (; at < number.size() && (isDigit(number[at]) || number[at] == '.'); ++at) {
        if (number[at] == '.') isBehindPoint = true;
        if (!isDigit(number[at])) continue;
        hasDigit = hasDigit || number[at] != '0';
        if (hasDigit && !isBehindPoint) ++magnitude;
        if (!hasDigit && isBehindPoint) --magnitude;
    }
    if (at + 1 < number.size()) {
        // From behind the "e": as many digits as there may be.
        const bool isNegative = number[at + 1] == '-';
        long exponent = 0;
        for (const char c : number.substr(at + 1))
            if (isDigit(c) && exponent < kFarAway) exponent = exponent * 10 + (c - '0');
        magnitude += isNegative ? -exponent : exponent;
    }
    return magnitude < 0;
}

}  // namespace

void appendRounded(std::string& text, double number, int digits) {
    append(text, number, std::chars_format::general, digits);
}

void appendFixed(std::string& text, double number, int decimals) {
    append(text, number, std::chars_format::fixed, std::max(decimals, 0));
}

template <typename Number>
LeadingNumber<Number> readNumber(std::string_view text) {
    LeadingNumber<Number> result;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), result.value);
    if (code == std::errc::invalid_argument) return result;
    result.length = static_cast<std::size_t>(end - text.data());
    if (code == std::errc()) return result;
    using Limits = std::numeric_limits<Number>;
    const bool isNegative = text.front() == '-';
    if constexpr (std::is_floating_point_v<Number>) {
        result.isTooLarge = !isTooSmall(text.substr(0, result.length));
        result.value = result.isTooLarge ? Limits::infinity() : Number(0);
        if (isNegative) result.value = -result.value;
    } else {
        result.isTooLarge = true;
        result.value = isNegative ? Limits::min() : Limits::max();
    }
    return result;
}

template LeadingNumber<int> readNumber(std::string_view text);
template LeadingNumber<std::int64_t> readNumber(std::string_view text);
template LeadingNumber<float> readNumber(std::string_view text);
template LeadingNumber<double> readNumber(std::string_view text);

std::optional<IndexRange> readIndexRange(std::string_view text) {
    const LeadingNumber<int> first = readNumber<int>(text);
    if (first.length == 0 || first.isTooLarge || first.value < 0) return std::nullopt;
    if (first.length == text.size()) return IndexRange{first.value, first.value};
    if (text[first.length] != ':') return std::nullopt;
    text.remove_prefix(first.length + 1);
    const LeadingNumber<int> last = readNumber<int>(text);
    const bool isWhole = last.length == text.size() && last.length > 0 && !last.isTooLarge;
    if (!isWhole || last.value < first.value) return std::nullopt;
    return IndexRange{first.value, last.value};
}

}  // namespace host::text
