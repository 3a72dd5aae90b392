// The parser's entry, tokens, errors and nodes.

#include "mel/parser.h"

#include <algorithm>

#include "mel/parserState.h"

namespace host::mel {

namespace {

void findLines(Program& program) {
    program.lineStarts.push_back(0);
    for (std::size_t at = program.source.find('\n'); at != std::string::npos;
         at = program.source.find('\n', at + 1))
        program.lineStarts.push_back(static_cast<Index>(at) + 1);
}

}  // namespace

SourcePosition Program::position(Index offset) const {
    const auto behind = std::upper_bound(lineStarts.begin(), lineStarts.end(), offset);
    const auto line = static_cast<int>(behind - lineStarts.begin());
    return {fileName, firstLine - 1 + line, static_cast<int>(offset - *(behind - 1)) + 1, {}};
}

std::string_view Program::plainWord(Index entry) const {
    const Index start = entry - kPlainWord;
    Index end = start;
    while (end < source.size() && !isBlank(source[end]) && source[end] != ';')
        ++end;
    return std::string_view(source).substr(start, end - start);
}

ParseResult parse(std::string text, std::string fileName, const GlobalTable& globals, int firstLine) {
    auto program = std::make_shared<Program>();
    program->source = std::move(text);
    program->fileName = std::move(fileName);
    program->firstLine = firstLine;
    if (program->source.size() >= kGlobalVariable)
        return {nullptr, "Text too long.", {program->fileName, firstLine, 1, {}}};
    findLines(*program);
    // A guess that fits plain command lists. It avoids moving the nodes again and again.
    program->expressions.reserve(program->source.size() / 10);
    program->lists.reserve(program->source.size() / 10);

    Parser parser(*program, globals);
    parser.parseProgram();
    if (parser.failed())
        return {nullptr, parser.error(), program->position(parser.errorOffset()), parser.end()};
    return {std::move(program), {}, {}, parser.end()};
}

Parser::Nesting::Nesting(Parser& parser) : parser_(parser) {
    if (++parser_.nesting_ > kMaximumNesting) parser_.fail(parser_.token_.offset, "Nesting too deep.");
}

void Parser::advance() {
    lastEnd_ = token_.end;
    moveTo(token_.end);
}

void Parser::moveTo(Index at) {
    if (failed_) return;
    token_ = lexer_.next(at);
    lastEnd_ = at;
}

bool Parser::accept(Symbol s) {
    if (!token_.is(s)) return false;
    advance();
    return true;
}

void Parser::expect(char c) {
    if (!accept(c)) syntaxError(std::string{'\'', c, '\''});
}

void Parser::expectComma(char closing) {
    if (!accept(',')) syntaxError(std::string("',' or '") + closing + '\'');
}

void Parser::syntaxError(std::string_view expected) {
    std::string text = "Syntax error: ";
    if (token_.kind == TokenKind::End) {
        text += "the text ends";
        if (expected.empty()) expected = "more";
    } else {
        text += expected.empty() ? tokenText(token_.offset) + " cannot stand here"
                                 : "found " + tokenText(token_.offset);
    }
    if (!expected.empty()) text += " where " + std::string(expected) + " was expected";
    fail(token_.offset, text + '.');
}

std::string Parser::tokenText(Index offset) const {
    constexpr Index kLongest = 30;
    const Token token = lexer_.next(offset);
    const Index length = token.end - token.offset;
    const std::string text(program_.source, token.offset, std::min(length, kLongest));
    return '\'' + text + (length > kLongest ? "..." : "") + '\'';
}

/// Reports that something other than a variable is before an assignment. Its operator is the next token, or
/// was the last one.
void Parser::notAssignable() {
    fail(token_.offset, "Syntax error: only a variable or an element of an array can be changed.");
}

void Parser::fail(Index offset, std::string error) {
    if (failed_) return;
    failed_ = true;
    const bool atEnd = offset >= program_.source.size();
    // If the lexer could not make a token here, it knows better what is wrong.
    const Token atError = lexer_.next(offset);
    error_ = atError.kind == TokenKind::Invalid && atError.offset == offset ? std::string(atError.text)
                                                                            : std::move(error);
    end_ = atEnd || (atError.offset == offset && atError.isCutOff) ? TextEnd::TooEarly : TextEnd::Closed;
    errorOffset_ = std::min(offset, static_cast<Index>(program_.source.size()));
    token_ = {};
    token_.offset = token_.end = static_cast<Index>(program_.source.size());
}

void Parser::endStatement() {
    if (failed_) return;
    if (token_.kind != TokenKind::End)
        expect(';');
    else
        end_ = TextEnd::Open;
}

Index Parser::add(Expression expression) {
    program_.expressions.push_back(expression);
    return static_cast<Index>(program_.expressions.size()) - 1;
}

Index Parser::add(Statement statement) {
    program_.statements.push_back(statement);
    return static_cast<Index>(program_.statements.size()) - 1;
}

Index Parser::addText(Index offset, std::string_view text) {
    Expression expression;
    expression.kind = Expression::Kind::String;
    expression.offset = offset;
    expression.setText(text);
    return add(expression);
}

Index Parser::addNumber(Index offset, bool isInt, double value) {
    Expression expression;
    expression.kind = isInt ? Expression::Kind::Int : Expression::Kind::Float;
    expression.offset = offset;
    expression.number = value;
    return add(expression);
}

ListRange Parser::takeList(std::size_t mark) {
    const ListRange range{static_cast<Index>(program_.lists.size()),
                          static_cast<Index>(scratch_.size() - mark)};
    program_.lists.insert(program_.lists.end(), scratch_.begin() + static_cast<std::ptrdiff_t>(mark),
                          scratch_.end());
    scratch_.resize(mark);
    return range;
}

bool Parser::allPure(std::size_t mark) const {
    return std::all_of(scratch_.begin() + static_cast<std::ptrdiff_t>(mark), scratch_.end(),
                       [&](Index expression) { return isPure(expression); });
}

std::optional<Value::Kind> typeKeyword(std::string_view word) {
    using Kind = Value::Kind;
    for (const Kind kind : {Kind::Int, Kind::Float, Kind::String, Kind::Vector, Kind::Matrix})
        if (word == kindName(kind)) return kind;
    return std::nullopt;
}

std::optional<int> switchWord(std::string_view word) {
    if (word == "on" || word == "true" || word == "yes") return 1;
    if (word == "off" || word == "false" || word == "no") return 0;
    return std::nullopt;
}

}  // namespace host::mel
