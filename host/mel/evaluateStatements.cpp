// Statements in the evaluator: declarations, conditions, loops, switch.

#include "mel/evaluator.h"
#include "mel/operators.h"

namespace host::mel {

namespace {

void resizeArray(Value& array, std::size_t count) {
    const auto resize = [&](auto* values) {
        if (values) values->resize(count);
    };
    resize(array.getIf<std::vector<int>>());
    resize(array.getIf<std::vector<double>>());
    resize(array.getIf<std::vector<std::string>>());
    resize(array.getIf<std::vector<Vector>>());
}

}  // namespace

Evaluator::Flow Evaluator::execute(Index index, Frame& frame) {
    const Statement& statement = frame.program.statements[index];
    frame.offset = statement.offset;
    if (!countStep(frame, statement.offset)) return Flow::Fail;
    const Depth depth(nesting_);
    if (depth.count > kMaximumEvaluationDepth) {
        failAt(frame, statement.offset, "Too many nested calls.");
        return Flow::Fail;
    }
    switch (statement.kind) {
        case Statement::Kind::Expression:
            return executeExpression(statement.a, frame) ? Flow::Normal : Flow::Fail;
        case Statement::Kind::Declare:
            return declare(statement, frame) ? Flow::Normal : Flow::Fail;
        case Statement::Kind::Block:
            return executeList(statement.list, 0, frame);
        case Statement::Kind::If:
            return executeIf(statement, frame);
        case Statement::Kind::While:
        case Statement::Kind::DoWhile:
            return executeWhile(statement, frame);
        case Statement::Kind::For:
            return executeFor(statement, frame);
        case Statement::Kind::ForIn:
            return executeForIn(statement, frame);
        case Statement::Kind::Switch:
            return executeSwitch(statement, frame);
        case Statement::Kind::Return:
            return executeReturn(statement, frame);
        case Statement::Kind::Break:
            return Flow::Break;
        case Statement::Kind::Continue:
            return Flow::Continue;
    }
    return Flow::Normal;
}

Evaluator::Flow Evaluator::executeList(const ListRange& list, Index from, Frame& frame) {
    for (Index i = from; i < list.count; ++i) {
        const Flow flow = execute(frame.program.lists[list.first + i], frame);
        if (flow != Flow::Normal) return flow;
    }
    return Flow::Normal;
}

/// The value stays in the frame: the value of a text is that of its last statement.
bool Evaluator::executeExpression(Index expression, Frame& frame) {
    const Expression& root = node(expression, frame);
    const bool storing = root.kind == Expression::Kind::Assign || root.kind == Expression::Kind::Step;
    if (!storing) return evaluate(expression, frame, frame.returned);
    // Only the last statement of a text needs the assigned value, and copying an array is not cheap.
    const ListRange& body = frame.program.body;
    const bool last =
        body.count > 0 &&
        expression == frame.program.statements[frame.program.lists[body.first + body.count - 1]].a;
    Value* out = last ? &frame.returned : nullptr;
    return root.kind == Expression::Kind::Assign ? assign(root, frame, out) : step(root, frame, out);
}

bool Evaluator::declare(const Statement& statement, Frame& frame) {
    Value value = Value::defaultOf(statement.declared);
    if (statement.c != kNoIndex && !reserveDeclared(statement, frame, value)) return false;
    Value& target = variable(statement.a, frame);
    if (statement.b == kNoIndex) {
        if (!statement.keep || target.isNone()) target = std::move(value);
        return true;
    }
    Value initial;
    if (!evaluate(statement.b, frame, initial)) return false;
    // A long list is not copied.
    if (initial.kind() == statement.declared) {
        target = std::move(initial);
        return true;
    }
    std::optional<Value> converted = initial.convertedTo(statement.declared);
    if (!converted)
        return failAt(frame, statement.offset, conversionError(initial.kind(), statement.declared));
    target = std::move(*converted);
    return true;
}

/// Gives an array or a matrix the size that its declaration names.
bool Evaluator::reserveDeclared(const Statement& statement, Frame& frame, Value& value) {
    Value size;
    Value columns(1);
    if (!evaluate(statement.c, frame, size)) return false;
    if (statement.columns != kNoIndex && !evaluate(statement.columns, frame, columns)) return false;
    const double count = static_cast<double>(size.toInt()) * columns.toInt();
    if (size.toInt() < 0 || columns.toInt() < 0 || count > static_cast<double>(options_.sizeLimit))
        return failAt(frame, statement.offset, "Array size out of range.");
    if (Matrix* matrix = value.getIf<Matrix>())
        *matrix = {size.toInt(), columns.toInt(), std::vector<double>(static_cast<std::size_t>(count))};
    else
        resizeArray(value, static_cast<std::size_t>(count));
    return true;
}

bool Evaluator::condition(Index expression, Frame& frame, bool& result) {
    Value scratch;
    const Value* value = operand(expression, frame, scratch);
    if (!value) return false;
    if (value->isArray() || value->isNone())
        return failAt(frame, node(expression, frame).offset,
                      conversionError(value->kind(), Value::Kind::Int));
    result = value->toBool();
    return true;
}

Evaluator::Flow Evaluator::executeIf(const Statement& statement, Frame& frame) {
    const std::vector<Index>& lists = frame.program.lists;
    for (Index i = 0; i < statement.list.count; i += 2) {
        bool holds = false;
        if (!condition(lists[statement.list.first + i], frame, holds)) return Flow::Fail;
        if (holds) return execute(lists[statement.list.first + i + 1], frame);
    }
    return statement.b == kNoIndex ? Flow::Normal : execute(statement.b, frame);
}

Evaluator::Flow Evaluator::executeWhile(const Statement& statement, Frame& frame) {
    bool checkFirst = statement.kind == Statement::Kind::While;
    while (countStep(frame, statement.offset)) {
        bool holds = true;
        if (checkFirst && !condition(statement.a, frame, holds)) return Flow::Fail;
        if (!holds) return Flow::Normal;
        checkFirst = true;
        const Flow flow = execute(statement.b, frame);
        if (flow == Flow::Break) return Flow::Normal;
        if (flow == Flow::Return || flow == Flow::Fail) return flow;
    }
    return Flow::Fail;
}

Evaluator::Flow Evaluator::executeFor(const Statement& statement, Frame& frame) {
    if (const Flow flow = executeList(statement.list, 0, frame); flow != Flow::Normal) return flow;
    while (countStep(frame, statement.offset)) {
        bool holds = true;
        if (statement.a != kNoIndex && !condition(statement.a, frame, holds)) return Flow::Fail;
        if (!holds) return Flow::Normal;
        const Flow flow = execute(statement.b, frame);
        if (flow == Flow::Break) return Flow::Normal;
        if (flow == Flow::Return || flow == Flow::Fail) return flow;
        for (Index i = 0; i < statement.steps.count; ++i)
            if (!executeExpression(frame.program.lists[statement.steps.first + i], frame)) return Flow::Fail;
    }
    return Flow::Fail;
}

Evaluator::Flow Evaluator::executeForIn(const Statement& statement, Frame& frame) {
    Value list;
    if (!evaluate(statement.a, frame, list)) return Flow::Fail;
    if (!list.isArray() && !list.isNone()) {
        failAt(frame, node(statement.a, frame).offset,
               conversionError(list.kind(), Value::Kind::StringArray));
        return Flow::Fail;
    }
    Value& target = variable(statement.c, frame);
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (!countStep(frame, statement.offset)) return Flow::Fail;
        if (!store(target, list.element(i), frame, statement.offset)) return Flow::Fail;
        const Flow flow = execute(statement.b, frame);
        if (flow == Flow::Break) break;
        if (flow == Flow::Return || flow == Flow::Fail) return flow;
    }
    return Flow::Normal;
}

Evaluator::Flow Evaluator::executeSwitch(const Statement& statement, Frame& frame) {
    Value value;
    if (!evaluate(statement.a, frame, value)) return Flow::Fail;
    const std::vector<Index>& lists = frame.program.lists;
    Index start = kNoIndex;
    for (Index i = 0; i < statement.list.count; i += 2) {
        const Index label = lists[statement.list.first + i];
        const Index position = lists[statement.list.first + i + 1];
        if (label == kNoIndex) {
            start = position;
            continue;
        }
        Value equal;
        std::string error;
        if (!evaluate(label, frame, equal)) return Flow::Fail;
        if (!applyBinary(Operator::Equal, equal, value, options_.sizeLimit, error)) {
            failAt(frame, node(label, frame).offset, std::move(error));
            return Flow::Fail;
        }
        if (!equal.toBool()) continue;
        start = position;
        break;
    }
    if (start == kNoIndex) return Flow::Normal;
    const Flow flow = executeList(statement.steps, start, frame);
    return flow == Flow::Break ? Flow::Normal : flow;
}

Evaluator::Flow Evaluator::executeReturn(const Statement& statement, Frame& frame) {
    Value value;
    if (statement.a != kNoIndex && !evaluate(statement.a, frame, value)) return Flow::Fail;
    frame.returned = std::move(value);
    return Flow::Return;
}

}  // namespace host::mel
