// Expressions in the evaluator, except calls and assignments.

#include "mel/evaluator.h"
#include "mel/operators.h"

namespace host::mel {

bool Evaluator::evaluate(Index index, Frame& frame, Value& out) {
    const Depth depth(nesting_);
    if (depth.count > kMaximumEvaluationDepth)
        return failAt(frame, argumentNode(index, frame).offset, "Too many nested calls.");
    if (isPlainWord(index)) {
        out = frame.program.plainWord(index);
        return true;
    }
    const Expression& expression = node(index, frame);
    switch (expression.kind) {
        case Expression::Kind::Int:
            out = static_cast<int>(expression.number);
            return true;
        case Expression::Kind::Float:
            out = expression.number;
            return true;
        case Expression::Kind::String:
        case Expression::Kind::Switch:
            out = expression.text();
            return true;
        case Expression::Kind::Variable:
            out = variable(expression.a, frame);
            return true;
        case Expression::Kind::Element:
            return evaluateElement(expression, frame, out);
        case Expression::Kind::Component:
            return evaluateComponent(expression, frame, out);
        case Expression::Kind::Vector:
            return evaluateVector(expression, frame, out);
        case Expression::Kind::Matrix:
            return evaluateMatrix(expression, frame, out);
        case Expression::Kind::Array:
            return evaluateArray(expression, frame, out);
        case Expression::Kind::Word:
            return evaluateWord(expression, frame, out);
        case Expression::Kind::Unary:
            return evaluateUnary(expression, frame, out);
        case Expression::Kind::Step:
            return step(expression, frame, &out);
        case Expression::Kind::Chain:
            return evaluateChain(expression, frame, out);
        case Expression::Kind::Logic:
            return evaluateLogic(expression, frame, out);
        case Expression::Kind::Ternary:
            return evaluateTernary(expression, frame, out);
        case Expression::Kind::Assign:
            return assign(expression, frame, &out);
        case Expression::Kind::Call:
            return evaluateCall(expression, frame, out);
        case Expression::Kind::Cast:
            return evaluateCast(expression, frame, out);
    }
    return true;
}

/// The value of an expression, without a copy if it is stored in a variable; nullptr on failure. The
/// reference sees later changes of the variable.
const Value* Evaluator::operand(Index index, Frame& frame, Value& scratch) {
    if (isPlainWord(index)) return evaluate(index, frame, scratch) ? &scratch : nullptr;
    const Expression& expression = node(index, frame);
    if (expression.kind == Expression::Kind::Variable) return &variable(expression.a, frame);
    return evaluate(index, frame, scratch) ? &scratch : nullptr;
}

bool Evaluator::arrayIndex(Index expression, Frame& frame, std::size_t& index) {
    Value scratch;
    const Value* value = operand(expression, frame, scratch);
    if (!value) return false;
    const int number = value->toInt();
    if (value->isArray() || number < 0 || static_cast<std::size_t>(number) >= options_.sizeLimit)
        return failAt(frame, node(expression, frame).offset, "Array index value out of range.");
    index = static_cast<std::size_t>(number);
    return true;
}

bool Evaluator::matrixIndex(const Expression& element, const Matrix& matrix, Frame& frame,
                            std::size_t& index) {
    std::size_t row = 0;
    std::size_t column = 0;
    if (!arrayIndex(element.b, frame, row)) return false;
    if (element.c == kNoIndex || !arrayIndex(element.c, frame, column))
        return element.c == kNoIndex
                   ? failAt(frame, element.offset, "A matrix element needs a row and a column.")
                   : false;
    if (row >= static_cast<std::size_t>(matrix.rows) || column >= static_cast<std::size_t>(matrix.columns))
        return failAt(frame, element.offset, "Array index value out of range.");
    index = row * static_cast<std::size_t>(matrix.columns) + column;
    return true;
}

bool Evaluator::evaluateElement(const Expression& expression, Frame& frame, Value& out) {
    const Depth large(nesting_, kElementLevels);
    const Value& array = variable(expression.a, frame);
    std::size_t index = 0;
    if (const Matrix* matrix = array.getIf<Matrix>()) {
        if (!matrixIndex(expression, *matrix, frame, index)) return false;
        out = matrix->values[index];
        return true;
    }
    if (!array.isArray() || expression.c != kNoIndex)
        return failAt(frame, expression.offset,
                      "\"$" + std::string(expression.text()) + "\" is not an array variable.");
    if (!arrayIndex(expression.b, frame, index)) return false;
    out = array.element(index);
    return true;
}

bool Evaluator::evaluateComponent(const Expression& expression, Frame& frame, Value& out) {
    Value scratch;
    const Value* value = operand(expression.a, frame, scratch);
    if (!value) return false;
    const Vector* vector = value->getIf<Vector>();
    if (!vector) return failAt(frame, expression.offset, conversionError(value->kind(), Value::Kind::Vector));
    const double components[] = {vector->x, vector->y, vector->z};
    out = components[expression.b];
    return true;
}

bool Evaluator::evaluateVector(const Expression& expression, Frame& frame, Value& out) {
    double parts[3] = {};
    for (Index i = 0; i < 3; ++i) {
        Value part;
        if (!evaluate(frame.program.lists[expression.list().first + i], frame, part)) return false;
        parts[i] = part.toFloat();
    }
    out = Vector{parts[0], parts[1], parts[2]};
    return true;
}

bool Evaluator::evaluateMatrix(const Expression& expression, Frame& frame, Value& out) {
    Matrix matrix;
    matrix.rows = static_cast<int>(expression.a);
    matrix.columns = static_cast<int>(expression.list().count / expression.a);
    matrix.values.reserve(expression.list().count);
    for (Index i = 0; i < expression.list().count; ++i) {
        Value part;
        if (!evaluate(frame.program.lists[expression.list().first + i], frame, part)) return false;
        matrix.values.push_back(part.toFloat());
    }
    out = std::move(matrix);
    return true;
}

/// The widest element decides the type: int, float, vector, string.
bool Evaluator::evaluateArray(const Expression& expression, Frame& frame, Value& out) {
    using Kind = Value::Kind;
    std::vector<Value> elements(expression.list().count);
    Kind kind = Kind::Int;
    const auto rank = [](Kind k) {
        return k == Kind::Vector ? 2 : k == Kind::String ? 3 : k == Kind::Float ? 1 : 0;
    };
    for (Index i = 0; i < expression.list().count; ++i) {
        const Index element = frame.program.lists[expression.list().first + i];
        if (!evaluate(element, frame, elements[i])) return false;
        const Kind found = elements[i].kind();
        if (arrayKind(found) == Kind::None)
            return failAt(frame, node(element, frame).offset, conversionError(found, Kind::String));
        if (rank(found) > rank(kind)) kind = found;
    }
    // An empty literal has no type of its own and fits every array variable.
    if (elements.empty()) {
        out = Value();
        return true;
    }
    out = Value::defaultOf(arrayKind(kind));
    for (std::size_t i = 0; i < elements.size(); ++i)
        if (!storeElement(out, i, std::move(elements[i]), frame, expression.offset)) return false;
    return true;
}

bool Evaluator::evaluateWord(const Expression& expression, Frame& frame, Value& out) {
    std::string text;
    for (Index i = 0; i < expression.list().count; ++i) {
        Value scratch;
        const Value* part = operand(frame.program.lists[expression.list().first + i], frame, scratch);
        if (!part) return false;
        part->appendTo(text);
    }
    out = std::move(text);
    return true;
}

bool Evaluator::evaluateUnary(const Expression& expression, Frame& frame, Value& out) {
    std::string error;
    if (!evaluate(expression.a, frame, out)) return false;
    return applyUnary(expression.op, out, error) || failAt(frame, expression.offset, std::move(error));
}

bool Evaluator::evaluateChain(const Expression& expression, Frame& frame, Value& out) {
    const Depth large(nesting_, kChainLevels);
    Value result;
    if (!evaluate(expression.a, frame, result)) return false;
    for (Index i = 0; i < expression.list().count; i += 2) {
        const Index* pair = &frame.program.lists[expression.list().first + i];
        Value scratch;
        const Value* right = operand(pair[1], frame, scratch);
        if (!right) return false;
        std::string error;
        if (!applyBinary(static_cast<Operator>(pair[0]), result, *right, options_.sizeLimit, error))
            return failAt(frame, node(pair[1], frame).offset, std::move(error));
    }
    out = std::move(result);
    return true;
}

bool Evaluator::evaluateLogic(const Expression& expression, Frame& frame, Value& out) {
    const bool ends = expression.op == Operator::Or;
    for (Index i = 0; i < expression.list().count; ++i) {
        bool holds = false;
        if (!condition(frame.program.lists[expression.list().first + i], frame, holds)) return false;
        if (holds != ends) continue;
        out = ends;
        return true;
    }
    out = !ends;
    return true;
}

bool Evaluator::evaluateTernary(const Expression& expression, Frame& frame, Value& out) {
    bool holds = false;
    if (!condition(expression.a, frame, holds)) return false;
    return evaluate(holds ? expression.b : expression.c, frame, out);
}

bool Evaluator::evaluateCast(const Expression& expression, Frame& frame, Value& out) {
    Value scratch;
    const Value* value = operand(expression.a, frame, scratch);
    if (!value) return false;
    std::optional<Value> converted = value->convertedTo(expression.target);
    if (!converted)
        return failAt(frame, expression.offset, conversionError(value->kind(), expression.target));
    out = std::move(*converted);
    return true;
}

}  // namespace host::mel
