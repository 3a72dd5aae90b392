// Parses commands: their words, flags, and names with subscripts.

#include <array>
#include <cstddef>

#include "mel/builtins.h"
#include "mel/numberText.h"
#include "mel/parserState.h"

namespace host::mel {

namespace {

/// Characters of bare words besides letters and digits: DAG paths, namespaces, attributes, wildcards.
constexpr bool isWordPart(char c) {
    return isIdentifierPart(c) || c == '|' || c == ':' || c == '.' || c == '*' || c == '?';
}

/// Characters of brackets that are taken as they are.
constexpr bool isLiteralSubscriptPart(char c) {
    return isDigit(c) || c == ':' || c == '*' || c == '-';
}

// What a character can be in or behind a plain word. Looked up, because long lists of words are read with it.
enum CharacterClass : unsigned char {
    InWord = 1,
    InIdentifier = 2,
    Opening = 4,
    InSubscript = 8,
    Closing = 16,
    BehindWord = 32
};

constexpr std::array<unsigned char, 256> characterClasses() {
    std::array<unsigned char, 256> classes{};
    for (std::size_t k = 0; k < classes.size(); ++k) {
        const char c = static_cast<char>(k);
        if (isWordPart(c)) classes[k] |= CharacterClass::InWord;
        if (isIdentifierPart(c)) classes[k] |= CharacterClass::InIdentifier;
        if (c == '[') classes[k] |= CharacterClass::Opening;
        if (isLiteralSubscriptPart(c)) classes[k] |= CharacterClass::InSubscript;
        if (c == ']') classes[k] |= CharacterClass::Closing;
        if (isBlank(c) || c == ';') classes[k] |= CharacterClass::BehindWord;
    }
    return classes;
}

constexpr std::array<unsigned char, 256> kCharacters = characterClasses();

/// The end of a plain word; where it begins if the word there is not plain. What begins like a number may be
/// one.
Index plainWordEnd(std::string_view source, Index start) {
    const auto isIn = [&](Index at, unsigned char classes) {
        return at < source.size() && (kCharacters[static_cast<unsigned char>(source[at])] & classes) != 0;
    };
    if (!isIn(start, CharacterClass::InWord) || isDigit(source[start]) || source[start] == '.') return start;
    Index at = start;
    while (isIn(at, CharacterClass::InWord)) {
        ++at;
        if (!isIn(at, CharacterClass::Opening)) continue;
        do
            ++at;
        while (isIn(at, CharacterClass::InSubscript));
        if (!isIn(at, CharacterClass::Closing) || isIn(++at, CharacterClass::InIdentifier)) return start;
    }
    if (at < source.size() && !isIn(at, CharacterClass::BehindWord)) return start;
    return switchWord(source.substr(start, at - start)) ? start : at;
}

}  // namespace

/// Parses `name words...` or `name(arguments)`, also as the left end of an expression. `closing` is not
/// taken.
Index Parser::parseCommand(char closing) {
    const Token name = token_;
    advance();
    const std::size_t mark = scratch_.size();
    if (!token_.is('(')) return parseWords(name, name.end, mark, closing);
    const Index parenthesis = token_.offset;
    parseArguments();
    // `setAttr ("a" + ".tx") 5` is a command whose first word is in parentheses.
    if (scratch_.size() == mark + 1 && continuesAsWords(name, parenthesis, closing))
        return parseWords(name, lastEnd_, mark, closing);
    const std::optional<Value::Kind> kind = typeKeyword(name.text);
    if (kind || failed_) {
        syntaxError();
        return kNoIndex;
    }
    const Index call = parseComponents(makeCall(name, mark));
    return failed_ ? kNoIndex : parseExpressionFrom(call);
}

/// Whether `name (argument)` is followed by another word, rather than an operator or the end.
bool Parser::continuesAsWords(const Token& name, Index parenthesis, char closing) const {
    if (failed_ || token_.kind == TokenKind::End || token_.is(';') || token_.is(closing)) return false;
    if (token_.kind != TokenKind::Symbol) return true;
    if (token_.is(symbol('<', '<')) || token_.is('(') || token_.is('{') || token_.is('`')) return true;
    const bool blankBefore = token_.offset > lastEnd_;
    const char next = lexer_.at(token_.end);
    if (token_.is('-')) {
        const bool number = isDigit(next) || (next == '.' && isDigit(lexer_.at(token_.end + 1)));
        return blankBefore && (isIdentifierStart(next) || (number && parenthesis > name.end));
    }
    if (token_.is('.')) return blankBefore && isIdentifierStart(next);
    const bool nameSign = token_.is('*') || token_.is('|') || token_.is(':');
    return nameSign && blankBefore && parenthesis > name.end && isIdentifierStart(next);
}

Index Parser::parseBackquoted() {
    const Nesting nesting(*this);
    advance();
    Index result = kNoIndex;
    if (token_.kind == TokenKind::Identifier)
        result = parseCommand('`');
    else
        syntaxError("the name of a command");
    if (!token_.is('`')) syntaxError("'`'");
    if (failed_) return kNoIndex;
    advance();
    return result;
}

Index Parser::parseWords(const Token& name, Index at, std::size_t mark, char closing) {
    while (!failed_) {
        bool unterminated = false;
        at = lexer_.skipBlanks(at, unterminated);
        const char c = lexer_.at(at);
        if (at >= lexer_.source().size() || c == ';' || c == closing) break;
        if (!parseWord(at)) {
            moveTo(at);
            syntaxError(closing == '`' ? "'`'" : "';'");
        }
    }
    moveTo(at);
    return makeCall(name, mark);
}

/// Parses the word at `at` and moves `at` to its end. False if no word begins there.
bool Parser::parseWord(Index& at) {
    const char c = lexer_.at(at);
    if (c == '-') {
        scratch_.push_back(parseFlagOrNegative(at));
        return scratch_.back() != kNoIndex || failed_;
    }
    if (const Index end = plainWordEnd(lexer_.source(), at); end > at) {
        scratch_.push_back(kPlainWord + at);
        at = end;
        return true;
    }
    if (isWordPart(c)) {
        scratch_.push_back(parseBareWord(at));
        return true;
    }
    const bool vector = c == '<' && lexer_.at(at + 1) == '<';
    if (c != '"' && c != '$' && c != '(' && c != '`' && c != '{' && !vector) return false;
    moveTo(at);
    if (token_.kind == TokenKind::Invalid) return false;
    if (c == '$')
        scratch_.push_back(requireDeclared(parseComponents(parseVariable())));
    else
        scratch_.push_back(parseComponents(parsePrimary()));
    at = lastEnd_;
    return true;
}

/// `-flag`, `-1.5`, or the negative of a variable or a parenthesis. There may be blanks between a dash and
/// the name of a flag.
Index Parser::parseFlagOrNegative(Index& at) {
    const Index start = at;
    const char next = lexer_.at(at + 1);
    const Token name = lexer_.next(at + 1);
    if (name.kind == TokenKind::Identifier) {
        at = name.end;
        if (name.offset == start + 1) return addText(start, lexer_.source().substr(start, at - start));
        program_.strings.push_back('-' + std::string(name.text));
        return addText(start, program_.strings.back());
    }
    if (name.kind == TokenKind::End) at = name.offset;
    if (isDigit(next) || (next == '.' && isDigit(lexer_.at(at + 2)))) return parseBareWord(at);
    if (next != '$' && next != '(') return kNoIndex;
    moveTo(start);
    const Index result = parseUnary();
    at = lastEnd_;
    return result;
}

/// A number or a name. Variables and expressions in the brackets of a name are replaced when the word is
/// used.
Index Parser::parseBareWord(Index& at) {
    const Index start = at;
    const std::string_view source = lexer_.source();
    if (const std::optional<ParsedNumber> number = parseNumberPrefix(source.substr(start))) {
        const Index end = start + static_cast<Index>(number->length);
        if (!isWordPart(lexer_.at(end))) {
            at = end;
            return addNumber(start, number->isInt, number->value);
        }
    }
    const std::size_t mark = scratch_.size();
    Index partStart = start;
    if (lexer_.at(at) == '-') ++at;
    while (!failed_) {
        if (isWordPart(lexer_.at(at))) {
            ++at;
        } else if (lexer_.at(at) == '-' && lexer_.at(at + 1) == '>') {
            at += 2;
        } else if (lexer_.at(at) == '[') {
            Index end = at;
            if (isLiteralSubscript(at, end)) {
                at = end;
            } else {
                scratch_.push_back(addText(partStart, source.substr(partStart, at + 1 - partStart)));
                partStart = parseSubscript(at);
            }
            // An index ends the word, unless a name continues after it: `setAttr bs.w[10000]0.5`.
            if (isIdentifierPart(lexer_.at(at))) break;
        } else {
            break;
        }
    }
    if (failed_) return kNoIndex;
    const std::string_view rest = source.substr(partStart, at - partStart);
    if (scratch_.size() == mark) {
        const Index word = addText(start, rest);
        if (const std::optional<int> value = switchWord(rest)) {
            program_.expressions[word].kind = Expression::Kind::Switch;
            program_.expressions[word].number = *value;
        }
        return word;
    }
    scratch_.push_back(addText(partStart, rest));
    Expression word;
    word.kind = Expression::Kind::Word;
    word.offset = start;
    word.pure = allPure(mark);
    word.setList(takeList(mark));
    return add(word);
}

/// Whether the brackets contain only digits, ranges and stars. Then `end` is set to the offset after them.
bool Parser::isLiteralSubscript(Index at, Index& end) const {
    for (Index i = at + 1; i < lexer_.source().size(); ++i) {
        const char c = lexer_.at(i);
        if (c == ']') {
            end = i + 1;
            return true;
        }
        if (!isLiteralSubscriptPart(c)) return false;
    }
    return false;
}

/// The parts between brackets: expressions, stars and colons. Moves `at` to the end of the brackets.
/// @return offset of the closing bracket, where the next piece of plain text begins
Index Parser::parseSubscript(Index& at) {
    const Nesting nesting(*this);
    moveTo(at + 1);
    while (!failed_ && !token_.is(']')) {
        const Token token = token_;
        if (token.is('*') || token.is(':')) {
            advance();
            scratch_.push_back(addText(token.offset, lexer_.source().substr(token.offset, 1)));
        } else {
            // Without the ternary operator: a colon here separates the ends of a range.
            scratch_.push_back(parseBinary(0));
        }
    }
    const Index bracket = token_.offset;
    at = failed_ ? static_cast<Index>(lexer_.source().size()) : token_.end;
    return bracket;
}

}  // namespace host::mel
