#include "files/numberText.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

// The second macro lets a test compare the two implementations.
#if defined(__cpp_lib_to_chars) && !defined(DELVEN_NUMBERS_BY_STREAM)
#define DELVEN_NUMBERS_BY_CHARCONV
#else
#include <algorithm>
#include <ios>
#include <locale>
#include <sstream>
#include <string>
#endif

namespace {

constexpr int kSignificantDigits = 6;
constexpr int kDecimals = 6;

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The place where a number begins in a text.
struct Start {
    const char* first;  // the first digit or point; a minus sign before it is included, a plus sign is not
    const char* end;
    bool isNumber;
};

/// Skips blanks and a plus sign, which <charconv> does not accept.
Start findStart(std::string_view text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end && isBlank(*at))
        ++at;
    const bool isNegative = at != end && *at == '-';
    const bool isSigned = isNegative || (at != end && *at == '+');
    const char* const digits = isSigned ? at + 1 : at;
    const bool hasPoint = digits != end && *digits == '.';
    const char* const digit = hasPoint ? digits + 1 : digits;
    return {isNegative ? at : digits, end, digit != end && isDigit(*digit)};
}

/// The value of a number outside the range of double: 0 if it is too small, else infinity.
double beyondRange(const char* at, const char* end) {
    const bool isNegative = *at == '-';
    // Number of digits before the point, from the first that is not 0. If there is no such digit, minus the
    // number of zeros right after the point.
    std::int64_t places = 0;
    bool isBehindPoint = false;
    bool hasDigit = false;
    for (; at != end && *at != 'e' && *at != 'E'; ++at) {
        if (*at == '.') isBehindPoint = true;
        if (!isDigit(*at)) continue;
        hasDigit = hasDigit || *at != '0';
        if (hasDigit && !isBehindPoint) ++places;
        if (!hasDigit && isBehindPoint) --places;
    }
    std::int64_t exponent = 0;
    if (at != end) {
        at += at[1] == '+' ? 2 : 1;
        // Beyond the range of the integer only the sign of the exponent matters.
        if (std::from_chars(at, end, exponent).ec != std::errc()) {
            exponent = std::numeric_limits<std::int64_t>::max() / (*at == '-' ? -2 : 2);
        }
    }
    const double value = hasDigit && places + exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return isNegative ? -value : value;
}

#if !defined(DELVEN_NUMBERS_BY_CHARCONV)

const char* skipDigits(const char* at, const char* end) {
    while (at != end && isDigit(*at))
        ++at;
    return at;
}

/// The end of the number that begins at `first`. In "1e" and "1e+", on which streams fail, it is the end of
/// the 1.
const char* numberEnd(const char* first, const char* end) {
    const char* at = skipDigits(*first == '-' ? first + 1 : first, end);
    if (at != end && *at == '.') at = skipDigits(at + 1, end);
    if (at == end || (*at != 'e' && *at != 'E')) return at;
    const char* exponent = at + 1;
    if (exponent != end && (*exponent == '+' || *exponent == '-')) ++exponent;
    return exponent != end && isDigit(*exponent) ? skipDigits(exponent, end) : at;
}

/// @param form  the floatfield of the stream; none for the general form
char* writeStreamed(char* at, double value, int precision, std::ios_base::fmtflags form) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.precision(precision);
    stream.setf(form, std::ios_base::floatfield);
    stream << value;
    const std::string text = stream.str();
    return std::copy(text.begin(), text.end(), at);
}

#endif

}  // namespace

char* writeNumber(char* at, int value) {
    return std::to_chars(at, at + kNumberRoom, value).ptr;
}

std::size_t readIndex(std::string_view text, int& index) {
    index = 0;
    const Start start = findStart(text);
    if (!start.isNumber) return 0;
    const std::from_chars_result read = std::from_chars(start.first, start.end, index);
    // ".5" is a number that does not begin with a whole number.
    if (read.ec == std::errc::invalid_argument) return 0;
    if (read.ec == std::errc::result_out_of_range || index < 0) index = kNoIndex;
    return static_cast<std::size_t>(read.ptr - text.data());
}

bool fitsSingle(double value) {
    return std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

#if defined(DELVEN_NUMBERS_BY_CHARCONV)

char* writeNumber(char* at, double value) {
    return std::to_chars(at, at + kNumberRoom, value, std::chars_format::general, kSignificantDigits).ptr;
}

char* writeFixed(char* at, double value) {
    return std::to_chars(at, at + kFixedRoom, value, std::chars_format::fixed, kDecimals).ptr;
}

std::size_t readNumber(std::string_view text, double& value) {
    value = 0.0;
    const Start start = findStart(text);
    if (!start.isNumber) return 0;
    const std::from_chars_result read = std::from_chars(start.first, start.end, value);
    if (read.ec == std::errc::result_out_of_range) value = beyondRange(start.first, read.ptr);
    return static_cast<std::size_t>(read.ptr - text.data());
}

#else

char* writeNumber(char* at, double value) {
    return writeStreamed(at, value, kSignificantDigits, std::ios_base::fmtflags());
}

char* writeFixed(char* at, double value) {
    return writeStreamed(at, value, kDecimals, std::ios_base::fixed);
}

std::size_t readNumber(std::string_view text, double& value) {
    value = 0.0;
    const Start start = findStart(text);
    if (!start.isNumber) return 0;
    const char* const end = numberEnd(start.first, start.end);
    std::istringstream stream(std::string(start.first, end));
    stream.imbue(std::locale::classic());
    if (!(stream >> value)) value = beyondRange(start.first, end);
    return static_cast<std::size_t>(end - text.data());
}

#endif
