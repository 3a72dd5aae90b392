// Assignments in the evaluator: to variables and to elements of arrays, ++ and --.

#include <type_traits>

#include "mel/evaluator.h"
#include "mel/operators.h"

namespace host::mel {

namespace {

using Kind = Value::Kind;

template <typename T>
bool putElement(Value& array, std::size_t index, T&& element) {
    auto* values = array.getIf<std::vector<std::decay_t<T>>>();
    if (!values) return false;
    if (index >= values->size()) values->resize(index + 1);
    (*values)[index] = std::forward<T>(element);
    return true;
}

}  // namespace

/// Assigns to a variable. The type that it has, or gets now, stays.
bool Evaluator::store(Value& variable, Value&& value, Frame& frame, Index offset) {
    if (variable.kind() == value.kind() || variable.isNone()) {
        variable = std::move(value);
        return true;
    }
    std::optional<Value> converted = value.convertedTo(variable.kind());
    if (!converted) return failAt(frame, offset, conversionError(value.kind(), variable.kind()));
    variable = std::move(*converted);
    return true;
}

/// Assigns to an element of an array. The array grows if necessary.
bool Evaluator::storeElement(Value& array, std::size_t index, Value&& value, Frame& frame, Index offset) {
    if (array.isNone()) array = Value::defaultOf(arrayKind(value.kind()));
    const Kind kind = elementKind(array.kind());
    if (kind == Kind::None) return failAt(frame, offset, "The variable is not an array.");
    if (kind != value.kind()) {
        std::optional<Value> converted = value.convertedTo(kind);
        if (!converted) return failAt(frame, offset, conversionError(value.kind(), kind));
        value = std::move(*converted);
    }
    switch (kind) {
        case Kind::Int:
            return putElement(array, index, *value.getIf<int>());
        case Kind::Float:
            return putElement(array, index, *value.getIf<double>());
        case Kind::String:
            return putElement(array, index, std::move(*value.getIf<std::string>()));
        default:
            return putElement(array, index, *value.getIf<Vector>());
    }
}

bool Evaluator::storeMatrixElement(const Expression& target, Matrix& matrix, Frame& frame,
                                   const Value& value) {
    std::size_t index = 0;
    if (!matrixIndex(target, matrix, frame, index)) return false;
    if (value.isArray() || value.isNone())
        return failAt(frame, target.offset, conversionError(value.kind(), Kind::Float));
    matrix.values[index] = value.toFloat();
    return true;
}

bool Evaluator::assignElement(const Expression& target, Frame& frame, Value&& value) {
    Value& array = variable(target.a, frame);
    if (Matrix* matrix = array.getIf<Matrix>()) return storeMatrixElement(target, *matrix, frame, value);
    if (target.c != kNoIndex) return failAt(frame, target.offset, "The variable is not a matrix.");
    std::size_t index = 0;
    if (!arrayIndex(target.b, frame, index)) return false;
    return storeElement(array, index, std::move(value), frame, target.offset);
}

/// @param out  set to the assigned value; nullptr if the caller does not need it
bool Evaluator::assign(const Expression& expression, Frame& frame, Value* out) {
    const Expression& target = node(expression.a, frame);
    const bool element = target.kind == Expression::Kind::Element;
    Value value;
    if (!evaluate(expression.b, frame, value)) return false;
    if (expression.op != Operator::Assign) {
        std::string error;
        Value* plain = element ? nullptr : &variable(target.a, frame);
        // Text grows in place.
        if (plain && plain->isString() && expression.op == Operator::Add) {
            if (!applyBinary(expression.op, *plain, value, options_.sizeLimit, error))
                return failAt(frame, expression.offset, std::move(error));
            if (out) *out = *plain;
            return true;
        }
        Value left;
        if (!evaluate(expression.a, frame, left)) return false;
        if (!applyBinary(expression.op, left, value, options_.sizeLimit, error))
            return failAt(frame, expression.offset, std::move(error));
        value = std::move(left);
    }
    if (element) {
        if (out) *out = value;
        return assignElement(target, frame, std::move(value));
    }
    Value& stored = variable(target.a, frame);
    if (!store(stored, std::move(value), frame, expression.offset)) return false;
    if (out) *out = stored;
    return true;
}

bool Evaluator::step(const Expression& expression, Frame& frame, Value* out) {
    const Expression& target = node(expression.a, frame);
    const int by = expression.op == Operator::Increment ? 1 : -1;
    if (target.kind == Expression::Kind::Variable) {
        Value& stored = variable(target.a, frame);
        if (int* number = stored.getIf<int>()) {
            const int before = *number;
            *number = static_cast<int>(static_cast<unsigned>(before) + static_cast<unsigned>(by));
            if (out) *out = expression.prefix ? *number : before;
            return true;
        }
    }
    Value before;
    if (!evaluate(expression.a, frame, before)) return false;
    if (!before.isNumber())
        return failAt(frame, expression.offset,
                      std::string("Illegal operation \"") + (by > 0 ? "++" : "--") + "\" on data of type " +
                          kindName(before.kind()) + ".");
    Value after = before;
    std::string error;
    if (!applyBinary(Operator::Add, after, Value(by), options_.sizeLimit, error))
        return fail(std::move(error));
    if (out) *out = expression.prefix ? after : before;
    if (target.kind == Expression::Kind::Element) return assignElement(target, frame, std::move(after));
    return store(variable(target.a, frame), std::move(after), frame, expression.offset);
}

}  // namespace host::mel
