// Parses expressions: operators by level, operands, calls, literals and variables.

#include <array>
#include <limits>

#include "mel/builtins.h"
#include "mel/numberText.h"
#include "mel/parserState.h"

namespace host::mel {

namespace {

struct BinaryOperator {
    Symbol symbol;
    Operator op;
    int level;  // the higher, the tighter it binds
};

constexpr double kBelowLowestInt = 2147483648.0;

constexpr int kOrLevel = 0;
constexpr int kAndLevel = 1;

const BinaryOperator* binaryOperator(const Token& token) {
    static constexpr std::array<BinaryOperator, 14> kOperators = {{
        {symbol('|', '|'), Operator::Or, kOrLevel},
        {symbol('&', '&'), Operator::And, kAndLevel},
        {symbol('=', '='), Operator::Equal, 2},
        {symbol('!', '='), Operator::NotEqual, 2},
        {symbol('<'), Operator::Less, 3},
        {symbol('<', '='), Operator::LessEqual, 3},
        {symbol('>'), Operator::Greater, 3},
        {symbol('>', '='), Operator::GreaterEqual, 3},
        {symbol('+'), Operator::Add, 4},
        {symbol('-'), Operator::Subtract, 4},
        {symbol('*'), Operator::Multiply, 5},
        {symbol('/'), Operator::Divide, 5},
        {symbol('%'), Operator::Modulo, 5},
        {symbol('^'), Operator::Cross, 5},
    }};
    if (token.kind != TokenKind::Symbol) return nullptr;
    for (const BinaryOperator& entry : kOperators)
        if (entry.symbol == token.symbol) return &entry;
    return nullptr;
}

std::optional<Operator> assignmentOperator(const Token& token) {
    if (token.kind != TokenKind::Symbol) return std::nullopt;
    switch (token.symbol) {
        case symbol('='):
            return Operator::Assign;
        case symbol('+', '='):
            return Operator::Add;
        case symbol('-', '='):
            return Operator::Subtract;
        case symbol('*', '='):
            return Operator::Multiply;
        case symbol('/', '='):
            return Operator::Divide;
        case symbol('%', '='):
            return Operator::Modulo;
        case symbol('^', '='):
            return Operator::Cross;
        default:
            return std::nullopt;
    }
}

bool isStorable(const Expression& expression) {
    return expression.kind == Expression::Kind::Variable || expression.kind == Expression::Kind::Element;
}

}  // namespace

Index Parser::parseExpression() {
    return parseExpressionFrom(kNoIndex);
}

/// @param left  an operand that has already been taken, or kNoIndex
Index Parser::parseExpressionFrom(Index left) {
    const Nesting nesting(*this);
    const Index condition = parseBinary(kOrLevel, left);
    if (failed_) return kNoIndex;
    if (assignmentOperator(token_)) return parseAssignment(condition);
    if (!token_.is('?')) return condition;

    Expression expression;
    expression.kind = Expression::Kind::Ternary;
    expression.offset = token_.offset;
    expression.a = condition;
    advance();
    expression.b = parseExpression();
    expect(':');
    expression.c = parseExpression();
    expression.pure = isPure(expression.a) && isPure(expression.b) && isPure(expression.c);
    return failed_ ? kNoIndex : add(expression);
}

Index Parser::parseAssignment(Index left) {
    if (!isStorable(program_.expressions[left])) {
        notAssignable();
        return kNoIndex;
    }
    Expression expression;
    expression.kind = Expression::Kind::Assign;
    expression.op = *assignmentOperator(token_);
    expression.offset = program_.expressions[left].offset;
    expression.pure = false;
    expression.a = left;
    advance();
    expression.b = parseExpression();
    if (failed_) return kNoIndex;

    // An unknown name becomes a variable here: after the value, which must not use it.
    Expression& target = program_.expressions[left];
    if (target.a == kNoIndex) target.a = *scopes_.declare(target.text(), Value::Kind::None);
    return add(expression);
}

Index Parser::parseBinary(int minimumLevel, Index left) {
    if (left == kNoIndex) left = parseUnary();
    const BinaryOperator* next = binaryOperator(token_);
    while (!failed_ && next && next->level >= minimumLevel) {
        const int level = next->level;
        const std::size_t mark = scratch_.size();
        while (!failed_ && next && next->level == level) {
            scratch_.push_back(static_cast<Index>(next->op));
            advance();
            scratch_.push_back(parseBinary(level + 1));
            next = binaryOperator(token_);
        }
        if (failed_) return kNoIndex;
        left = makeChain(level, left, mark);
    }
    return failed_ ? kNoIndex : left;
}

/// Operands of one level are stored in one node, from left to right: a long sum does not make a deep tree.
Index Parser::makeChain(int level, Index left, std::size_t mark) {
    Expression expression;
    expression.offset = program_.expressions[left].offset;
    expression.pure = isPure(left);
    for (std::size_t i = mark + 1; i < scratch_.size(); i += 2)
        expression.pure = expression.pure && isPure(scratch_[i]);
    if (level > kAndLevel) {
        expression.kind = Expression::Kind::Chain;
        expression.a = left;
    } else {
        expression.kind = Expression::Kind::Logic;
        expression.op = level == kOrLevel ? Operator::Or : Operator::And;
        scratch_[mark] = left;
        std::size_t kept = mark + 1;
        for (std::size_t i = mark + 1; i < scratch_.size(); i += 2)
            scratch_[kept++] = scratch_[i];
        scratch_.resize(kept);
    }
    expression.setList(takeList(mark));
    return add(expression);
}

Index Parser::parseUnary() {
    const Nesting nesting(*this);
    Expression expression;
    expression.offset = token_.offset;
    if (accept(symbol('+', '+')) || accept(symbol('-', '-'))) {
        expression.kind = Expression::Kind::Step;
        expression.op = lexer_.at(expression.offset) == '+' ? Operator::Increment : Operator::Decrement;
        expression.prefix = true;
        expression.pure = false;
        expression.a = requireDeclared(parseUnary());
        if (!failed_ && !isStorable(program_.expressions[expression.a])) notAssignable();
        return failed_ ? kNoIndex : add(expression);
    }
    const bool negate = token_.is('-');
    if (!negate && !token_.is('!')) return accept('+') ? parseUnary() : parsePostfix();
    advance();
    // The lowest int is written as the negative of a number that is too large for an int.
    if (negate && token_.kind == TokenKind::Int && token_.number == kBelowLowestInt) {
        advance();
        return addNumber(expression.offset, true, -kBelowLowestInt);
    }
    expression.kind = Expression::Kind::Unary;
    expression.op = negate ? Operator::Negate : Operator::Not;
    expression.a = parseUnary();
    if (failed_) return kNoIndex;
    Expression& operand = program_.expressions[expression.a];
    // Folded, except for the one int that has no opposite.
    const bool isInt =
        operand.kind == Expression::Kind::Int && operand.number != std::numeric_limits<int>::min();
    if (negate && (isInt || operand.kind == Expression::Kind::Float)) {
        operand.number = isInt ? 0 - operand.number : -operand.number;
        operand.offset = expression.offset;
        return expression.a;
    }
    expression.pure = operand.pure;
    return add(expression);
}

Index Parser::parsePostfix() {
    const Index operand = parseComponents(parsePrimary());
    if (failed_ || (!token_.is(symbol('+', '+')) && !token_.is(symbol('-', '-')))) return operand;
    if (!isStorable(program_.expressions[operand])) {
        notAssignable();
        return kNoIndex;
    }
    Expression expression;
    expression.kind = Expression::Kind::Step;
    expression.op = token_.is(symbol('+', '+')) ? Operator::Increment : Operator::Decrement;
    expression.offset = program_.expressions[operand].offset;
    expression.pure = false;
    expression.a = requireDeclared(operand);
    advance();
    return failed_ ? kNoIndex : add(expression);
}

/// `.x`, `.y` and `.z`, written without a blank.
Index Parser::parseComponents(Index operand) {
    while (!failed_ && lexer_.at(lastEnd_) == '.') {
        const char axis = lexer_.at(lastEnd_ + 1);
        if (axis < 'x' || axis > 'z' || isIdentifierPart(lexer_.at(lastEnd_ + 2))) return operand;
        Expression expression;
        expression.kind = Expression::Kind::Component;
        expression.offset = lastEnd_;
        expression.a = requireDeclared(operand);
        expression.b = static_cast<Index>(axis - 'x');
        expression.pure = isPure(operand);
        moveTo(lastEnd_ + 2);
        operand = add(expression);
    }
    return operand;
}

Index Parser::parsePrimary() {
    if (failed_) return kNoIndex;
    const Token token = token_;
    switch (token.kind) {
        case TokenKind::Int:
            if (!fitsInt(token.number)) {
                fail(token.offset, integerTooLarge(token.text));
                return kNoIndex;
            }
            [[fallthrough]];
        case TokenKind::Float:
            advance();
            return addNumber(token.offset, token.kind == TokenKind::Int, token.number);
        case TokenKind::String:
            return parseString();
        case TokenKind::Variable:
            return parseVariable();
        case TokenKind::Identifier:
            return parseIdentifier();
        case TokenKind::Symbol:
            if (token.is('(')) return parseParenthesis();
            if (token.is('`')) return parseBackquoted();
            if (token.is('{')) return parseArrayLiteral();
            if (token.is(symbol('<', '<'))) return parseVectorOrMatrix();
            break;
        case TokenKind::End:
        case TokenKind::Invalid:
            break;
    }
    syntaxError("a value");
    return kNoIndex;
}

Index Parser::parseString() {
    const Token token = token_;
    advance();
    if (!token.hasEscapes) return addText(token.offset, token.text);
    program_.strings.push_back(unescaped(token.text));
    return addText(token.offset, program_.strings.back());
}

/// A function call, a conversion such as int(x), or one of the words on, off, true, false, yes and no.
Index Parser::parseIdentifier() {
    const Token name = token_;
    advance();
    if (!token_.is('(')) {
        if (const std::optional<int> value = switchWord(name.text))
            return addNumber(name.offset, true, *value);
        fail(name.offset, "Invalid use of Maya object \"" + std::string(name.text) + "\".");
        return kNoIndex;
    }
    const std::size_t mark = scratch_.size();
    parseArguments();
    const std::optional<Value::Kind> kind = typeKeyword(name.text);
    if (!kind) return makeCall(name, mark);
    if (!failed_ && scratch_.size() != mark + 1)
        fail(name.offset, "Syntax error: " + std::string(name.text) + "() takes one value.");
    if (failed_) return kNoIndex;
    Expression cast;
    cast.kind = Expression::Kind::Cast;
    cast.offset = name.offset;
    cast.target = *kind;
    cast.a = scratch_.back();
    cast.pure = isPure(cast.a);
    scratch_.resize(mark);
    return add(cast);
}

/// Parses the arguments in parentheses of a call. They are left at the end of `scratch_`.
void Parser::parseArguments() {
    expect('(');
    for (bool first = true; !failed_ && !token_.is(')'); first = false) {
        if (!first) expectComma(')');
        scratch_.push_back(parseExpression());
    }
    expect(')');
}

Index Parser::makeCall(const Token& name, std::size_t mark) {
    if (failed_) return kNoIndex;
    Expression call;
    call.kind = Expression::Kind::Call;
    call.offset = name.offset;
    call.setText(name.text);
    call.a = builtinNumber(name.text);
    call.pureArguments = allPure(mark);
    call.pure = false;
    call.setList(takeList(mark));
    return add(call);
}

Index Parser::parseParenthesis() {
    const Index offset = token_.offset;
    const Token inner = lexer_.next(token_.end);
    const std::optional<Value::Kind> kind =
        inner.kind == TokenKind::Identifier ? typeKeyword(inner.text) : std::nullopt;
    const Token behind = kind ? lexer_.next(inner.end) : Token();
    if (!behind.is(')')) {
        advance();
        const Index expression = parseExpression();
        expect(')');
        return expression;
    }
    moveTo(behind.end);
    Expression cast;
    cast.kind = Expression::Kind::Cast;
    cast.offset = offset;
    cast.target = *kind;
    cast.a = parseUnary();
    cast.pure = isPure(cast.a);
    return failed_ ? kNoIndex : add(cast);
}

/// <<x, y, z>>, or a matrix whose rows are separated by semicolons.
Index Parser::parseVectorOrMatrix() {
    Expression expression;
    expression.offset = token_.offset;
    const std::size_t mark = scratch_.size();
    Index rows = 1;
    advance();
    scratch_.push_back(parseExpression());
    while (!failed_ && !token_.is(symbol('>', '>'))) {
        if (accept(';')) {
            ++rows;
        } else if (!accept(',')) {
            syntaxError("',', ';' or '>>'");
        }
        scratch_.push_back(parseExpression());
    }
    if (failed_) return kNoIndex;
    advance();
    const std::size_t count = scratch_.size() - mark;
    if (rows == 1 && count == 3) {
        expression.kind = Expression::Kind::Vector;
    } else {
        expression.kind = Expression::Kind::Matrix;
        expression.a = rows;
        if (count % rows != 0)
            fail(expression.offset, "Syntax error: the rows of a matrix must have the same length.");
    }
    expression.pure = allPure(mark);
    expression.setList(takeList(mark));
    return add(expression);
}

Index Parser::parseArrayLiteral() {
    Expression expression;
    expression.kind = Expression::Kind::Array;
    expression.offset = token_.offset;
    const std::size_t mark = scratch_.size();
    advance();
    for (bool first = true; !failed_ && !token_.is('}'); first = false) {
        if (!first) expectComma('}');
        scratch_.push_back(parseExpression());
    }
    expect('}');
    if (failed_) return kNoIndex;
    expression.pure = allPure(mark);
    expression.setList(takeList(mark));
    return add(expression);
}

/// A variable with its subscripts. There may be blanks before these in a command too: no word begins with a
/// bracket.
Index Parser::parseVariable() {
    const Token name = token_;
    advance();
    Expression expression;
    expression.kind = Expression::Kind::Variable;
    expression.offset = name.offset;
    expression.setText(name.text);
    const std::optional<Index> variable = scopes_.find(name.text);
    if (variable) expression.a = *variable;
    for (Index* index : {&expression.b, &expression.c}) {
        if (failed_ || !token_.is('[')) break;
        advance();
        expression.kind = Expression::Kind::Element;
        *index = parseExpression();
        expect(']');
    }
    expression.pure = isPure(expression.b) && isPure(expression.c);
    if (failed_) return kNoIndex;
    const Index result = add(expression);
    return !variable && !token_.is('=') ? requireDeclared(result) : result;
}

Index Parser::requireDeclared(Index expression) {
    if (failed_ || expression == kNoIndex) return kNoIndex;
    const Expression& node = program_.expressions[expression];
    if (isStorable(node) && node.a == kNoIndex)
        fail(node.offset, "\"$" + std::string(node.text()) + "\" is an undeclared variable.");
    return expression;
}

}  // namespace host::mel
