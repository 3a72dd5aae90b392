#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mel/lexer.h"
#include "mel/program.h"
#include "mel/variableScopes.h"

namespace host::mel {

/// The recursive descent over one text.
///
/// `token_` is the next token of expressions and statements, not yet taken. `lastEnd_` is the offset after
/// the last token taken; words of a command are scanned from there. The first error makes `token_` the end,
/// so that every loop stops.
class Parser {
  public:
    Parser(Program& program, const GlobalTable& globals)
        : program_(program), lexer_(program.source), scopes_(program, globals) {}

    void parseProgram();

    bool failed() const { return failed_; }
    const std::string& error() const { return error_; }
    Index errorOffset() const { return errorOffset_; }
    TextEnd end() const { return end_; }

  private:
    class Nesting;

    // parserStatements.cpp
    void parseStatement();
    void parseKeywordStatement(std::string_view keyword);
    void parseJump(bool isBreak);
    Index parseBody();
    Index parseLoopBody();
    Index parseBlock();
    void parseBraced();
    void parseDeclaration(bool global);
    void parseDeclarator(Value::Kind kind, bool global);
    void parseArraySize(Statement& statement, Value::Kind& kind);
    void parseProcedure(bool global);
    void parseParameters(Procedure& procedure);
    std::optional<Value::Kind> parseTypeName();
    void parseIf();
    void parseWhile();
    void parseDo();
    void parseFor();
    void parseForIn(Index variable, Index offset);
    void parseForParts(Index offset);
    void parseSwitch();
    void parseReturn();
    void parseExpressionStatement();

    // parserExpressions.cpp
    Index parseExpression();
    Index parseExpressionFrom(Index left);
    Index parseAssignment(Index left);
    Index parseBinary(int minimumLevel, Index left = kNoIndex);
    Index parseUnary();
    Index parsePostfix();
    Index parsePrimary();
    Index parseComponents(Index operand);
    Index parseIdentifier();
    Index parseParenthesis();
    Index parseVectorOrMatrix();
    Index parseArrayLiteral();
    Index parseVariable();
    Index parseString();
    Index makeChain(int level, Index left, std::size_t mark);
    Index makeCall(const Token& name, std::size_t mark);
    Index requireDeclared(Index expression);
    void parseArguments();

    // parserCommands.cpp
    Index parseCommand(char closing);
    Index parseBackquoted();
    Index parseWords(const Token& name, Index at, std::size_t mark, char closing);
    bool parseWord(Index& at);
    Index parseBareWord(Index& at);
    Index parseFlagOrNegative(Index& at);
    Index parseSubscript(Index& at);
    bool continuesAsWords(const Token& name, Index parenthesis, char closing) const;
    bool isLiteralSubscript(Index at, Index& end) const;

    // Tokens
    void advance();
    void moveTo(Index at);
    bool accept(Symbol s);
    bool accept(char c) { return accept(symbol(c)); }
    void expect(char c);
    /// Takes the comma before another member of a list that ends with `closing`.
    void expectComma(char closing);
    /// Takes the semicolon of a statement. The last statement of a text may lack it.
    void endStatement();
    bool isKeyword(std::string_view word) const {
        return token_.kind == TokenKind::Identifier && token_.text == word;
    }
    void fail(Index offset, std::string error);
    /// Reports an error at the next token and says what it is.
    /// @param expected  what could be there, such as "a value"; empty if that would be too much
    void syntaxError(std::string_view expected = {});
    /// "'else'", or whatever is at an offset before the end of the text.
    std::string tokenText(Index offset) const;
    void notAssignable();

    // Nodes
    Index add(Expression expression);
    Index add(Statement statement);
    Index addText(Index offset, std::string_view text);
    Index addNumber(Index offset, bool isInt, double value);
    ListRange takeList(std::size_t mark);
    bool isPure(Index expression) const {
        return isPlainWord(expression) || program_.expressions[expression].pure;
    }
    bool allPure(std::size_t mark) const;

    Program& program_;
    Lexer lexer_;
    VariableScopes scopes_;
    Token token_;
    Index lastEnd_ = 0;
    std::vector<Index> scratch_;  // lists in progress; each level works after its own mark
    int nesting_ = 0;
    int loops_ = 0;  // number of loops around the current statement
    int switches_ = 0;
    bool failed_ = false;
    TextEnd end_ = TextEnd::Closed;
    std::string error_;
    Index errorOffset_ = 0;
};

/// Counts the levels of recursion. Too many are an error of the text.
class Parser::Nesting {
  public:
    explicit Nesting(Parser& parser);
    ~Nesting() { --parser_.nesting_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

  private:
    Parser& parser_;
};

/// The kind that a type keyword names.
std::optional<Value::Kind> typeKeyword(std::string_view word);
/// 1 for on, true and yes; 0 for off, false and no.
std::optional<int> switchWord(std::string_view word);

}  // namespace host::mel
