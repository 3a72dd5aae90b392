#include "mel/lexer.h"

#include "mel/numberText.h"

namespace host::mel {

Index Lexer::skipBlanks(Index at, bool& unterminated) const {
    const auto size = static_cast<Index>(source_.size());
    while (at < size) {
        const char c = source_[at];
        if (isBlank(c)) {
            ++at;
        } else if (c == '/' && this->at(at + 1) == '/') {
            const std::size_t end = source_.find('\n', at);
            at = end == std::string_view::npos ? size : static_cast<Index>(end);
        } else if (c == '/' && this->at(at + 1) == '*') {
            const std::size_t end = source_.find("*/", at + 2);
            if (end == std::string_view::npos) {
                unterminated = true;
                return at;
            }
            at = static_cast<Index>(end) + 2;
        } else {
            break;
        }
    }
    return at;
}

Token Lexer::next(Index at) const {
    bool unterminated = false;
    at = skipBlanks(at, unterminated);
    Token token;
    token.offset = token.end = at;
    if (unterminated) {
        token.kind = TokenKind::Invalid;
        token.isCutOff = true;
        token.text = "Unterminated comment.";
        return token;
    }
    const char c = this->at(at);
    if (at >= source_.size()) return token;
    if (c == '"') return string(at);
    if (isDigit(c) || (c == '.' && isDigit(this->at(at + 1)))) return number(at);
    const bool variable = c == '$' && isIdentifierStart(this->at(at + 1));
    if (!variable && !isIdentifierStart(c)) return operatorAt(at);

    const Index start = variable ? at + 1 : at;
    Index end = start;
    while (isIdentifierPart(this->at(end)))
        ++end;
    token.kind = variable ? TokenKind::Variable : TokenKind::Identifier;
    token.text = source_.substr(start, end - start);
    token.end = end;
    return token;
}

Token Lexer::string(Index at) const {
    Token token;
    token.offset = at;
    token.kind = TokenKind::String;
    token.isCutOff = true;
    for (Index i = at + 1; i < source_.size(); ++i) {
        if (source_[i] == '"') {
            token.text = source_.substr(at + 1, i - at - 1);
            token.end = i + 1;
            token.isCutOff = false;
            return token;
        }
        if (source_[i] == '\n') {
            token.isCutOff = false;
            break;
        }
        if (source_[i] == '\\') {
            token.hasEscapes = true;
            // Skips the escaped part: a quote, or the line end of a continued string.
            i += source_[i + 1 < source_.size() ? i + 1 : i] == '\r' && this->at(i + 2) == '\n' ? 2 : 1;
        }
    }
    token.kind = TokenKind::Invalid;
    token.text = "Unterminated string.";
    token.end = at;
    return token;
}

Token Lexer::number(Index at) const {
    Token token;
    token.offset = at;
    const std::optional<ParsedNumber> number = parseNumberPrefix(source_.substr(at));
    token.kind = number->isInt || number->isTooLarge ? TokenKind::Int : TokenKind::Float;
    token.number = number->value;
    token.end = at + static_cast<Index>(number->length);
    token.text = source_.substr(at, number->length);
    return token;
}

Token Lexer::operatorAt(Index at) const {
    static constexpr std::string_view kSingles = "+-*/%^=<>!?:;,.(){}[]`&|";
    static constexpr std::string_view kBeforeEqualSign = "+-*/%^=<>!";
    static constexpr std::string_view kDoubled = "+-&|<>";
    Token token;
    token.offset = at;
    token.kind = TokenKind::Symbol;
    const char first = this->at(at);
    const char second = this->at(at + 1);
    const bool pair = (second == '=' && kBeforeEqualSign.find(first) != std::string_view::npos) ||
                      (second == first && kDoubled.find(first) != std::string_view::npos);
    token.symbol = pair ? symbol(first, second) : symbol(first);
    token.end = at + (pair ? 2 : 1);
    if (pair || kSingles.find(first) != std::string_view::npos) return token;
    token.kind = TokenKind::Invalid;
    token.text = "Syntax error";
    token.end = at;
    return token;
}

bool BracketCount::isOpenIn(std::string_view text) {
    const Lexer lexer(text);
    for (Token token = lexer.next(at_); token.kind != TokenKind::End; token = lexer.next(at_)) {
        if (token.isCutOff) return true;
        if (token.is('(') || token.is('{') || token.is('[')) ++depth_;
        if (token.is(')') || token.is('}') || token.is(']')) --depth_;
        // Text that is not a token, such as the quote of an unterminated string, is an error that the parser
        // finds.
        const bool isString = token.kind == TokenKind::Invalid && text[token.offset] == '"';
        at_ = isString                           ? static_cast<Index>(text.find('\n', token.offset))
              : token.kind == TokenKind::Invalid ? token.offset + 1
                                                 : token.end;
    }
    return depth_ > 0;
}

std::string unescaped(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 >= text.size()) {
            result += text[i];
            continue;
        }
        const char c = text[++i];
        if (c == 'n')
            result += '\n';
        else if (c == 't')
            result += '\t';
        else if (c == 'r')
            result += '\r';
        else if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            ++i;
        else if (c != '\n')
            result += c;
    }
    return result;
}

}  // namespace host::mel
