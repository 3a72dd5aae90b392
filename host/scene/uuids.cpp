#include "scene/uuids.h"

#include <array>
#include <cctype>

#include "scene/nodeStatements.h"

namespace host::scene {

namespace {

/// The steps of splitmix64, a published generator: neighbouring numbers give texts that do not look alike.
std::uint64_t spread(std::uint64_t seed) {
    std::uint64_t z = seed * 0x9E3779B97F4A7C15U;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
}

/// The published hash FNV-1a.
std::uint64_t hashed(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    return hash;
}

bool isDashPlace(std::size_t digit) {
    return digit == 8 || digit == 12 || digit == 16 || digit == 20;
}

}  // namespace

UuidGiver::UuidGiver(const SceneText& text, std::string_view sceneName) : seed_(hashed(sceneName)) {
    for (std::uint32_t k = 0; k < text.statements.size(); ++k) {
        if (text.statements[k].kind == StatementKind::Rename) taken_.insert(readUuid(text.statement(k)));
    }
}

const std::string& UuidGiver::obtain(graph::Node& node) {
    if (!node.uuid().empty()) return node.uuid();
    std::string& given = given_[node.ref()];
    if (given.empty()) given = next();
    return given;
}

std::string UuidGiver::next() {
    for (;;) {
        ++count_;
        const std::array<std::uint64_t, 2> words{spread(seed_ + 2 * count_), spread(seed_ + 2 * count_ + 1)};
        std::string text;
        for (std::size_t digit = 0; digit < 32; ++digit) {
            if (isDashPlace(digit)) text += '-';
            text += "0123456789ABCDEF"[(words[digit / 16] >> (60U - 4U * (digit % 16U))) & 15U];
        }
        if (taken_.insert(text).second) return text;
    }
}

bool isUuid(std::string_view text) {
    if (text.size() != 36) return false;
    std::size_t digit = 0;
    for (std::size_t k = 0; k < text.size(); ++k) {
        const bool isDash = k == 8 || k == 13 || k == 18 || k == 23;
        if (isDash ? text[k] != '-' : std::isxdigit(static_cast<unsigned char>(text[k])) == 0) return false;
        if (!isDash) ++digit;
    }
    return digit == 32;
}

}  // namespace host::scene
