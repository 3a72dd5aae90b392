#include "mel/numberText.h"

#include <cstdint>
#include <limits>

#include "text/numbers.h"

namespace host::mel {

namespace {

constexpr int kShownDigits = 10;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

int hexDigit(char c) {
    if (isDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

/// The part of a decimal number after its sign.
struct Decimal {
    std::uint64_t mantissa = 0;  // first 19 significant digits
    int exponent = 0;            // power of ten by which the mantissa is multiplied
    bool exact = true;           // no digit of the number is missing in the mantissa
    bool whole = true;           // written without point and exponent
    std::size_t length = 0;
};

void addDigit(Decimal& decimal, char digit, bool afterPoint) {
    if (decimal.mantissa >= 1'000'000'000'000'000'000u) {
        decimal.exact = false;
        decimal.exponent += afterPoint ? 0 : 1;
        return;
    }
    decimal.mantissa = decimal.mantissa * 10 + static_cast<std::uint64_t>(digit - '0');
    decimal.exponent -= afterPoint ? 1 : 0;
}

std::size_t readExponent(std::string_view text, std::size_t at, int& exponent) {
    std::size_t i = at + 1;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
    if (i >= text.size() || !isDigit(text[i])) return at;
    int value = 0;
    for (; i < text.size() && isDigit(text[i]); ++i)
        if (value < 10'000) value = value * 10 + (text[i] - '0');
    exponent += negative ? -value : value;
    return i;
}

std::optional<Decimal> scanDecimal(std::string_view text, std::size_t start) {
    Decimal decimal;
    std::size_t i = start;
    for (; i < text.size() && isDigit(text[i]); ++i)
        addDigit(decimal, text[i], false);
    std::size_t digits = i - start;
    if (i < text.size() && text[i] == '.') {
        std::size_t fraction = i + 1;
        for (; fraction < text.size() && isDigit(text[fraction]); ++fraction)
            addDigit(decimal, text[fraction], true);
        digits += fraction - i - 1;
        if (digits == 0) return std::nullopt;
        decimal.whole = false;
        i = fraction;
    }
    if (digits == 0) return std::nullopt;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        const std::size_t end = readExponent(text, i, decimal.exponent);
        if (end != i) decimal.whole = false;
        i = end;
    }
    decimal.length = i - start;
    return decimal;
}

double toDouble(const Decimal& decimal, std::string_view text) {
    static const double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                     1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    // Both operands are exact in a double, so the single operation rounds correctly.
    if (decimal.exact && decimal.mantissa <= (std::uint64_t{1} << 53) && decimal.exponent >= -22 &&
        decimal.exponent <= 22) {
        const double mantissa = static_cast<double>(decimal.mantissa);
        return decimal.exponent < 0 ? mantissa / kPowers[-decimal.exponent]
                                    : mantissa * kPowers[decimal.exponent];
    }
    return text::readNumber<double>(text).value;
}

ParsedNumber hexadecimal(std::string_view text, std::size_t start, bool negative) {
    std::uint64_t bits = 0;
    std::size_t i = start;
    double value = 0.0;
    for (; i < text.size() && hexDigit(text[i]) >= 0; ++i) {
        bits = bits << 4 | static_cast<std::uint64_t>(hexDigit(text[i]));
        value = value * 16.0 + hexDigit(text[i]);
    }
    const auto unsignedValue = static_cast<std::uint32_t>(negative ? 0 - bits : bits);
    ParsedNumber number;
    number.length = i;
    number.isTooLarge = value > std::numeric_limits<std::uint32_t>::max();
    number.isInt = !number.isTooLarge;
    if (number.isInt) number.integer = static_cast<int>(unsignedValue);
    number.value = number.isInt ? number.integer : (negative ? -value : value);
    return number;
}

}  // namespace

void appendFloat(std::string& text, double value) {
    text::appendRounded(text, value, kShownDigits);
}

void appendInt(std::string& text, int value) {
    text::appendShortest(text, value);
}

std::optional<ParsedNumber> parseNumberPrefix(std::string_view text) {
    std::size_t start = 0;
    bool negative = false;
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
        negative = text[0] == '-';
        start = 1;
    }
    if (text.size() > start + 2 && text[start] == '0' && (text[start + 1] == 'x' || text[start + 1] == 'X') &&
        hexDigit(text[start + 2]) >= 0)
        return hexadecimal(text, start + 2, negative);

    const std::optional<Decimal> decimal = scanDecimal(text, start);
    if (!decimal) return std::nullopt;
    ParsedNumber number;
    number.length = start + decimal->length;
    const double magnitude = toDouble(*decimal, text.substr(start, decimal->length));
    number.value = negative ? -magnitude : magnitude;
    number.isInt = decimal->whole && fitsInt(number.value);
    number.isTooLarge = decimal->whole && !number.isInt;
    if (number.isInt) number.integer = static_cast<int>(number.value);
    return number;
}

std::optional<ParsedNumber> parseNumber(std::string_view text) {
    std::optional<ParsedNumber> number = parseNumberPrefix(text);
    if (number && number->length != text.size()) return std::nullopt;
    return number;
}

std::string integerTooLarge(std::string_view digits) {
    return "The integer " + std::string(digits) + " does not fit 32 bits.";
}

}  // namespace host::mel
