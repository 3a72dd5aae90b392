// Parses statements, declarations and procedures.

#include "mel/builtins.h"
#include "mel/parserState.h"

namespace host::mel {

void Parser::parseProgram() {
    moveTo(0);
    while (!failed_ && token_.kind != TokenKind::End)
        parseStatement();
    program_.body = takeList(0);
}

/// Leaves the statement at the end of `scratch_`, or the statements of a declaration with several variables.
void Parser::parseStatement() {
    const Nesting nesting(*this);
    if (failed_) return;
    if (token_.is('{')) {
        scratch_.push_back(parseBlock());
    } else if (token_.is(';')) {
        advance();
    } else if (token_.kind == TokenKind::Identifier) {
        parseKeywordStatement(token_.text);
    } else {
        parseExpressionStatement();
    }
}

void Parser::parseKeywordStatement(std::string_view keyword) {
    const bool call = lexer_.next(token_.end).is('(');
    if (keyword == "if") return parseIf();
    if (keyword == "while") return parseWhile();
    if (keyword == "do") return parseDo();
    if (keyword == "for") return parseFor();
    if (keyword == "switch") return parseSwitch();
    if (keyword == "return") return parseReturn();
    if (keyword == "proc") return parseProcedure(false);
    if (keyword == "global") {
        advance();
        if (isKeyword("proc")) return parseProcedure(true);
        return parseDeclaration(true);
    }
    if (!call && typeKeyword(keyword)) return parseDeclaration(false);
    if (keyword == "break" || keyword == "continue") return parseJump(keyword == "break");
    if (keyword == "else" || keyword == "case" || keyword == "default") return syntaxError();
    parseExpressionStatement();
}

void Parser::parseJump(bool isBreak) {
    Statement statement;
    statement.kind = isBreak ? Statement::Kind::Break : Statement::Kind::Continue;
    statement.offset = token_.offset;
    if (isBreak && loops_ + switches_ == 0)
        return fail(token_.offset, "The break statement has to stand in a loop or a switch.");
    if (!isBreak && loops_ == 0) return fail(token_.offset, "The continue statement has to stand in a loop.");
    advance();
    scratch_.push_back(add(statement));
    endStatement();
}

Index Parser::parseLoopBody() {
    ++loops_;
    const Index body = parseBody();
    --loops_;
    return body;
}

/// An assignment, a call or a command.
void Parser::parseExpressionStatement() {
    Statement statement;
    statement.offset = token_.offset;
    const bool word = token_.kind == TokenKind::Identifier && !typeKeyword(token_.text);
    statement.a = word ? parseCommand(';') : parseExpression();
    if (failed_) return;
    endStatement();
    scratch_.push_back(add(statement));
}

/// A statement that is the body of another one.
Index Parser::parseBody() {
    const std::size_t mark = scratch_.size();
    const Index offset = token_.offset;
    if (token_.kind == TokenKind::End) syntaxError("a statement");
    parseStatement();
    if (scratch_.size() == mark + 1) {
        const Index only = scratch_.back();
        scratch_.pop_back();
        return only;
    }
    Statement block;
    block.kind = Statement::Kind::Block;
    block.offset = offset;
    block.list = takeList(mark);
    return add(block);
}

Index Parser::parseBlock() {
    Statement block;
    block.kind = Statement::Kind::Block;
    block.offset = token_.offset;
    const std::size_t mark = scratch_.size();
    scopes_.enterBlock();
    parseBraced();
    scopes_.leaveBlock();
    block.list = takeList(mark);
    return add(block);
}

void Parser::parseBraced() {
    expect('{');
    while (!failed_ && !token_.is('}')) {
        if (token_.kind == TokenKind::End) return syntaxError("'}'");
        parseStatement();
    }
    expect('}');
}

std::optional<Value::Kind> Parser::parseTypeName() {
    const std::optional<Value::Kind> kind =
        token_.kind == TokenKind::Identifier ? typeKeyword(token_.text) : std::nullopt;
    if (kind) advance();
    return kind;
}

void Parser::parseDeclaration(bool global) {
    const std::optional<Value::Kind> kind = parseTypeName();
    if (!kind) return syntaxError("a type");
    do {
        parseDeclarator(*kind, global);
    } while (!failed_ && accept(','));
    endStatement();
}

void Parser::parseDeclarator(Value::Kind kind, bool global) {
    if (token_.kind != TokenKind::Variable) return syntaxError("a variable");
    const Token name = token_;
    advance();
    Statement statement;
    statement.kind = Statement::Kind::Declare;
    statement.offset = name.offset;
    parseArraySize(statement, kind);
    // Before the variable is declared: its own name in the value means an outer variable.
    if (accept('=')) statement.b = parseExpression();
    if (failed_) return;

    const std::optional<Index> variable =
        global ? scopes_.declareGlobal(name.text, kind) : scopes_.declare(name.text, kind);
    if (!variable)
        return fail(name.offset, "Invalid redeclaration of variable \"$" + std::string(name.text) +
                                     "\" as a different type.");
    statement.a = *variable;
    statement.declared = kind;
    // A declaration alone does not reset a global variable: a script that runs again finds its old content.
    statement.keep = *variable >= kGlobalVariable;
    scratch_.push_back(add(statement));
}

void Parser::parseArraySize(Statement& statement, Value::Kind& kind) {
    const bool matrix = kind == Value::Kind::Matrix;
    if (!matrix && !token_.is('[')) return;
    expect('[');
    if (matrix || !token_.is(']')) statement.c = parseExpression();
    expect(']');
    if (matrix) {
        expect('[');
        statement.columns = parseExpression();
        expect(']');
    } else {
        kind = arrayKind(kind);
    }
}

void Parser::parseProcedure(bool global) {
    const Index offset = token_.offset;
    advance();
    if (scopes_.inProcedure() || !scopes_.atTopLevel())
        return fail(offset, "Syntax error: a procedure cannot be defined inside a procedure or a block.");
    Procedure procedure;
    procedure.global = global;
    if (const std::optional<Value::Kind> kind = parseTypeName()) {
        procedure.returns = *kind;
        if (accept('[')) {
            expect(']');
            procedure.returns = arrayKind(*kind);
        }
    }
    if (token_.kind != TokenKind::Identifier) return syntaxError("the name of a procedure");
    procedure.name = token_.text;
    advance();
    scopes_.enterProcedure();
    parseParameters(procedure);
    const std::size_t mark = scratch_.size();
    Statement block;
    block.kind = Statement::Kind::Block;
    block.offset = token_.offset;
    parseBraced();
    block.list = takeList(mark);
    procedure.body = add(block);
    procedure.localCount = scopes_.leaveProcedure();
    program_.procedures.push_back(std::move(procedure));
}

void Parser::parseParameters(Procedure& procedure) {
    expect('(');
    while (!failed_ && !token_.is(')')) {
        if (!procedure.parameters.empty()) expectComma(')');
        std::optional<Value::Kind> kind = parseTypeName();
        if (!kind) return syntaxError("a type");
        if (token_.kind != TokenKind::Variable) return syntaxError("a variable");
        const Token name = token_;
        advance();
        while (!failed_ && token_.is('[')) {
            advance();
            if (!token_.is(']')) parseExpression();
            expect(']');
            kind = arrayKind(*kind) == Value::Kind::None ? *kind : arrayKind(*kind);
        }
        if (scopes_.find(name.text))
            return fail(name.offset,
                        "Syntax error: the parameter $" + std::string(name.text) + " stands twice.");
        scopes_.declare(name.text, *kind);
        procedure.parameters.push_back({*kind, name.text});
    }
    expect(')');
}

/// A chain of `else if` is one statement, of any length.
void Parser::parseIf() {
    Statement statement;
    statement.kind = Statement::Kind::If;
    statement.offset = token_.offset;
    const std::size_t mark = scratch_.size();
    bool another = true;
    while (another && !failed_) {
        advance();
        expect('(');
        const Index condition = parseExpression();
        expect(')');
        const Index body = parseBody();
        scratch_.push_back(condition);
        scratch_.push_back(body);
        another = false;
        if (token_.kind == TokenKind::End && !failed_ && end_ == TextEnd::Closed) end_ = TextEnd::BeforeElse;
        if (!isKeyword("else")) break;
        advance();
        another = isKeyword("if");
        if (!another) statement.b = parseBody();
    }
    statement.list = takeList(mark);
    scratch_.push_back(add(statement));
}

void Parser::parseWhile() {
    Statement statement;
    statement.kind = Statement::Kind::While;
    statement.offset = token_.offset;
    advance();
    expect('(');
    statement.a = parseExpression();
    expect(')');
    statement.b = parseLoopBody();
    scratch_.push_back(add(statement));
}

void Parser::parseDo() {
    Statement statement;
    statement.kind = Statement::Kind::DoWhile;
    statement.offset = token_.offset;
    advance();
    statement.b = parseLoopBody();
    if (!isKeyword("while")) return syntaxError("'while'");
    advance();
    expect('(');
    statement.a = parseExpression();
    expect(')');
    endStatement();
    scratch_.push_back(add(statement));
}

void Parser::parseFor() {
    const Index offset = token_.offset;
    advance();
    expect('(');
    Token variable = token_;
    const bool typed = token_.kind == TokenKind::Identifier && typeKeyword(token_.text).has_value();
    if (typed) variable = lexer_.next(token_.end);
    const Token behind = lexer_.next(variable.end);
    if (variable.kind != TokenKind::Variable || behind.kind != TokenKind::Identifier || behind.text != "in")
        return parseForParts(offset);

    std::optional<Index> number;
    if (typed)
        number = scopes_.declare(variable.text, *parseTypeName());
    else if (!(number = scopes_.find(variable.text)))
        number = scopes_.declare(variable.text, Value::Kind::None);
    if (!number)
        return fail(variable.offset, "Invalid redeclaration of variable \"$" + std::string(variable.text) +
                                         "\" as a different type.");
    moveTo(behind.end);
    parseForIn(*number, offset);
}

void Parser::parseForIn(Index variable, Index offset) {
    Statement statement;
    statement.kind = Statement::Kind::ForIn;
    statement.offset = offset;
    statement.c = variable;
    statement.a = parseExpression();
    expect(')');
    statement.b = parseLoopBody();
    scratch_.push_back(add(statement));
}

void Parser::parseForParts(Index offset) {
    Statement statement;
    statement.kind = Statement::Kind::For;
    statement.offset = offset;
    const std::size_t mark = scratch_.size();
    if (token_.kind == TokenKind::Identifier && typeKeyword(token_.text)) {
        parseDeclaration(false);
    } else {
        while (!failed_ && !token_.is(';')) {
            if (scratch_.size() > mark) expectComma(';');
            Statement start;
            start.offset = token_.offset;
            start.a = parseExpression();
            scratch_.push_back(add(start));
        }
        expect(';');
    }
    statement.list = takeList(mark);
    if (!token_.is(';')) statement.a = parseExpression();
    expect(';');
    while (!failed_ && !token_.is(')')) {
        if (scratch_.size() > mark) expectComma(')');
        scratch_.push_back(parseExpression());
    }
    statement.steps = takeList(mark);
    expect(')');
    statement.b = parseLoopBody();
    scratch_.push_back(add(statement));
}

void Parser::parseSwitch() {
    Statement statement;
    statement.kind = Statement::Kind::Switch;
    statement.offset = token_.offset;
    advance();
    expect('(');
    statement.a = parseExpression();
    expect(')');
    expect('{');
    scopes_.enterBlock();
    ++switches_;
    std::vector<Index> cases;
    const std::size_t mark = scratch_.size();
    while (!failed_ && !token_.is('}')) {
        const bool isDefault = isKeyword("default");
        if (isDefault || isKeyword("case")) {
            advance();
            cases.push_back(isDefault ? kNoIndex : parseExpression());
            cases.push_back(static_cast<Index>(scratch_.size() - mark));
            expect(':');
        } else if (cases.empty() || token_.kind == TokenKind::End) {
            syntaxError(cases.empty() ? "'case'" : "'}'");
        } else {
            parseStatement();
        }
    }
    statement.steps = takeList(mark);
    scratch_.insert(scratch_.end(), cases.begin(), cases.end());
    statement.list = takeList(mark);
    --switches_;
    scopes_.leaveBlock();
    expect('}');
    scratch_.push_back(add(statement));
}

void Parser::parseReturn() {
    Statement statement;
    statement.kind = Statement::Kind::Return;
    statement.offset = token_.offset;
    advance();
    if (!token_.is(';') && token_.kind != TokenKind::End) statement.a = parseExpression();
    endStatement();
    scratch_.push_back(add(statement));
}

}  // namespace host::mel
