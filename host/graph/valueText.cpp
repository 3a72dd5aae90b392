#include "graph/valueText.h"

#include <cstdint>

#include "text/numbers.h"

namespace host::graph {

void appendText(std::string& text, double value) {
    text += ' ';
    text::appendShortest(text, value);
}

void appendText(std::string& text, const std::string& value) {
    text += " \"";
    for (const char character : value) {
        switch (character) {
            case '\n':
                text += "\\n";
                break;
            case '\r':
                text += "\\r";
                break;
            case '"':
            case '\\':
                text += '\\';
                [[fallthrough]];
            default:
                text += character;
        }
    }
    text += '"';
}

void appendDigest(std::string& text, const void* bytes, std::size_t count) {
    // FNV-1a: short, and the same on every machine.
    std::uint64_t hash = 14695981039346656037ULL;
    const auto* at = static_cast<const unsigned char*>(bytes);
    for (std::size_t k = 0; k < count; ++k)
        hash = (hash ^ at[k]) * 1099511628211ULL;
    text += ' ' + std::to_string(count) + '#' + std::to_string(hash);
}

}  // namespace host::graph
