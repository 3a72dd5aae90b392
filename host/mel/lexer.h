#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "mel/program.h"

namespace host::mel {

enum class TokenKind : std::uint8_t {
    End,
    Identifier,  // text
    Variable,    // text: name without dollar sign
    Int,         // number, which may be too large for an int
    Float,       // number
    String,      // text: between the quotes, escapes not yet replaced
    Symbol,      // symbol
    Invalid      // text: what is wrong
};

/// Symbols of one character are their character, longer ones two characters in a row.
using Symbol = std::uint16_t;
constexpr Symbol symbol(char first, char second = 0) {
    return static_cast<Symbol>(static_cast<unsigned char>(first) << 8 | static_cast<unsigned char>(second));
}

struct Token {
    TokenKind kind = TokenKind::End;
    bool hasEscapes = false;  // of a string
    bool isCutOff = false;    // invalid only because the text ends in it
    Symbol symbol = 0;
    Index offset = 0;
    Index end = 0;  // offset behind the token
    double number = 0;
    std::string_view text;

    bool is(Symbol s) const { return kind == TokenKind::Symbol && symbol == s; }
    bool is(char c) const { return is(mel::symbol(c)); }
};

/// Cuts source text into tokens, from any offset on. What a bare command word is depends on its surroundings
/// and is scanned by the parser; this knows the tokens of expressions and statements.
class Lexer {
  public:
    explicit Lexer(std::string_view source) : source_(source) {}

    /// First offset from `at` on that is neither blank nor comment; the size of the source at the end.
    /// @param unterminated  set when a comment does not end
    Index skipBlanks(Index at, bool& unterminated) const;
    /// The token at or after an offset.
    Token next(Index at) const;

    char at(Index offset) const { return offset < source_.size() ? source_[offset] : '\0'; }
    std::string_view source() const { return source_; }

  private:
    Token string(Index at) const;
    Token number(Index at) const;
    Token operatorAt(Index at) const;

    std::string_view source_;
};

/// Counts the brackets of a text that grows line by line. Linear in the length of the text in all.
class BracketCount {
  public:
    /// Whether a bracket, a comment or a string is open at the end of a text.
    /// @param text  what was given the last time and whole lines behind it
    bool isOpenIn(std::string_view text);

  private:
    Index at_ = 0;
    int depth_ = 0;
};

/// Replaces the escapes of a string literal: \n \t \r \" \\ ; a backslash before any other character is
/// dropped, before a line end together with it.
std::string unescaped(std::string_view text);

inline bool isIdentifierStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
inline bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
inline bool isIdentifierPart(char c) {
    return isIdentifierStart(c) || isDigit(c);
}
inline bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

}  // namespace host::mel
