#include "api/values/textForms.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "text/numbers.h"

namespace host::api {

namespace {

constexpr double kWholeNumberLimit = 1e15;
constexpr char32_t kReplacement = 0xfffd;

/// How many bytes follow a leading byte; -1 for a byte that cannot lead.
int continuationCount(unsigned char lead) {
    if (lead < 0x80) return 0;
    if (lead >= 0xc2 && lead < 0xe0) return 1;
    if (lead >= 0xe0 && lead < 0xf0) return 2;
    if (lead >= 0xf0 && lead < 0xf5) return 3;
    return -1;
}

bool isCharacter(char32_t code, int continuations) {
    constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
    return code >= kLeast[continuations] && code <= 0x10ffff && (code < 0xd800 || code > 0xdfff);
}

/// Reads the character at `position` and moves past it. A malformed one takes one byte.
char32_t nextCharacter(std::string_view text, std::size_t& position) {
    const auto lead = static_cast<unsigned char>(text[position++]);
    const int continuations = continuationCount(lead);
    if (continuations == 0) return lead;
    if (continuations < 0 || text.size() - position < static_cast<std::size_t>(continuations))
        return kReplacement;
    char32_t code = lead & (0x3fU >> static_cast<unsigned>(continuations));
    for (std::size_t i = 0; i < static_cast<std::size_t>(continuations); ++i) {
        const auto byte = static_cast<unsigned char>(text[position + i]);
        if ((byte & 0xc0U) != 0x80U) return kReplacement;
        code = (code << 6U) | (byte & 0x3fU);
    }
    if (!isCharacter(code, continuations)) return kReplacement;
    position += static_cast<std::size_t>(continuations);
    return code;
}

void appendUtf8(std::string& text, char32_t code) {
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    if (code < 0x800) {
        text += static_cast<char>(0xc0U | (code >> 6U));
    } else {
        if (code < 0x10000) {
            text += static_cast<char>(0xe0U | (code >> 12U));
        } else {
            text += static_cast<char>(0xf0U | (code >> 18U));
            text += static_cast<char>(0x80U | ((code >> 12U) & 0x3fU));
        }
        text += static_cast<char>(0x80U | ((code >> 6U) & 0x3fU));
    }
    text += static_cast<char>(0x80U | (code & 0x3fU));
}

}  // namespace

std::string numberText(double value, int digits) {
    if (std::fabs(value) < kWholeNumberLimit && std::trunc(value) == value) {
        return std::to_string(static_cast<std::int64_t>(value));
    }
    std::string text;
    text::appendRounded(text, value, digits);
    return text;
}

std::string fixedText(double value, int decimals) {
    std::string text;
    text::appendFixed(text, value, decimals);
    return text;
}

LeadingNumber leadingNumber(std::string_view text) {
    std::size_t first = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
    const bool isNegative = text.substr(first, 1) == "-";
    if (isNegative || text.substr(first, 1) == "+") ++first;
    const std::string_view number = text.substr(first);
    // A second sign does not belong to a number.
    if (number.empty() || number.front() == '-') return {};
    const auto read = text::readNumber<double>(number);
    if (read.length == 0) return {};
    return {isNegative ? -read.value : read.value, first + read.length};
}

std::wstring wideFromUtf8(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const char32_t code = nextCharacter(text, position);
        if constexpr (sizeof(wchar_t) == 2) {
            if (code >= 0x10000) {
                wide += static_cast<wchar_t>(0xd800U + ((code - 0x10000U) >> 10U));
                wide += static_cast<wchar_t>(0xdc00U + ((code - 0x10000U) & 0x3ffU));
                continue;
            }
        }
        wide += static_cast<wchar_t>(code);
    }
    return wide;
}

std::string utf8FromWide(std::wstring_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto code = static_cast<char32_t>(text[i]);
        if (code >= 0xd800 && code < 0xdc00 && i + 1 < text.size()) {
            const auto low = static_cast<char32_t>(text[i + 1]);
            if (low >= 0xdc00 && low < 0xe000) {
                code = 0x10000U + ((code - 0xd800U) << 10U) + (low - 0xdc00U);
                ++i;
            }
        }
        appendUtf8(utf8, code > 0x10ffff || (code >= 0xd800 && code < 0xe000) ? kReplacement : code);
    }
    return utf8;
}

}  // namespace host::api
