#pragma once

namespace host::scene {

/// Whether a character separates words.
constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

/// Whether a character ends a line, and a comment with it. Files with "\\r\\n" have an empty line more.
constexpr bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

/// Whether a byte begins a character of two bytes in the double-byte code pages.
constexpr bool isLeadByte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x81 && byte <= 0xFE && byte != 0xA0;
}

/// The end of a string, after its quotation mark; null if it has none before `end`. In a double-byte code
/// page a lead byte takes the next byte with it, which may be a backslash or a quotation mark.
/// @param quote  the quotation mark at its beginning
inline const char* stringEnd(const char* quote, const char* end, bool isDoubleByte) {
    const char* at = quote + 1;
    while (at < end && *at != '"') {
        const bool takesNext = *at == '\\' || (isDoubleByte && isLeadByte(*at));
        at += takesNext && end - at > 1 ? 2 : 1;
    }
    return at < end ? at + 1 : nullptr;
}

}  // namespace host::scene
