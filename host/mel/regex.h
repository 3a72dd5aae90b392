#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace host::mel {

/// The regular expressions of `match` and `substitute`: . [set] ^ $ * + ? (group) | and \ before a character.
///
/// The leftmost match is taken, and of those the longest. Matching never backtracks: it costs at most the
/// length of the text times that of the pattern.
class Regex {
  public:
    /// Nothing if the pattern is malformed (open bracket, nothing to repeat, nesting deeper than 100).
    static std::optional<Regex> compile(std::string_view pattern);

    /// Offsets of the first byte of the match and of the byte after it.
    std::optional<std::pair<std::size_t, std::size_t>> search(std::string_view text) const;

  private:
    friend class RegexCompiler;

    struct Instruction {
        enum class Kind : std::uint8_t { Byte, Any, Set, LineStart, LineEnd, Split, Jump, Match };
        Kind kind = Kind::Match;
        unsigned char byte = 0;
        std::uint32_t a = 0;  // Set: index; Split, Jump: target
        std::uint32_t b = 0;  // Split: other target
    };

    bool accepts(const Instruction& instruction, unsigned char byte) const;
    struct Search;
    void follow(std::uint32_t from, std::size_t start, std::size_t at, Search& search) const;

    std::vector<Instruction> code_;
    std::vector<std::vector<bool>> sets_;  // 256 entries each
};

/// `gmatch`: whether the whole text fits a pattern of *, ?, [set] and \.
bool globMatches(std::string_view text, std::string_view pattern);

}  // namespace host::mel
