#include "text/utf8.h"

#include <cstddef>

namespace host::text {

namespace {

/// Length in bytes of the character that begins with a byte; 0 if none does.
std::size_t lengthFrom(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

}  // namespace

bool hasWideCharacters(std::string_view text) {
    bool found = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = lengthFrom(static_cast<unsigned char>(text[at]));
        if (length == 0 || at + length > text.size()) return false;
        for (std::size_t k = 1; k < length; ++k) {
            if ((static_cast<unsigned char>(text[at + k]) & 0xC0U) != 0x80U) return false;
        }
        found = found || length > 1;
        at += length;
    }
    return found;
}

}  // namespace host::text
