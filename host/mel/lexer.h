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

/// A symbol of one character is that character. A longer one is two characters in one number.
using Symbol = std::uint16_t;
constexpr Symbol symbol(char first, char second = 0) {
    return static_cast<Symbol>(static_cast<unsigned char>(first) << 8 | static_cast<unsigned char>(second));
}

struct Token {
    TokenKind kind = TokenKind::End;
    bool hasEscapes = false;  // of a string
    bool isCutOff = false;    // invalid only because the text ends inside it
    Symbol symbol = 0;
    Index offset = 0;
    Index end = 0;  // offset after the token
    double number = 0;
    std::string_view text;

    bool is(Symbol s) const { return kind == TokenKind::Symbol && symbol == s; }
    bool is(char c) const { return is(mel::symbol(c)); }
};

/// Splits source text into tokens, from any offset on. It knows the tokens of expressions and statements.
/// Bare command words depend on their context, so the parser scans them.
class Lexer {
  public:
    explicit Lexer(std::string_view source) : source_(source) {}

    /// First offset from `at` on that is neither blank nor comment; the size of the source if there is none.
    /// @param unterminated  set if a comment does not end
    Index skipBlanks(Index at, bool& unterminated) const;
    /// The first token at or after an offset.
    Token next(Index at) const;

    char at(Index offset) const { return offset < source_.size() ? source_[offset] : '\0'; }
    std::string_view source() const { return source_; }

  private:
    Token string(Index at) const;
    Token number(Index at) const;
    Token operatorAt(Index at) const;

    std::string_view source_;
};

/// Counts the brackets of a text that grows line by line. The total cost is linear in the length of the text.
class BracketCount {
  public:
    /// Whether a bracket, a comment or a string is open at the end of a text.
    /// @param text  the text of the last call with whole lines added
    bool isOpenIn(std::string_view text);

  private:
    Index at_ = 0;
    int depth_ = 0;
};

/// Replaces the escapes of a string literal: \n \t \r \" \\ ; before any other character the backslash is
/// dropped; before a line end both are dropped.
std::string unescaped(std::string_view text);

constexpr bool isIdentifierStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool isIdentifierPart(char c) {
    return isIdentifierStart(c) || isDigit(c);
}
constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

}  // namespace host::mel
