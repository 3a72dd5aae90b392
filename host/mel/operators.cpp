#include "mel/operators.h"

#include <cmath>
#include <cstdint>

namespace host::mel {

namespace {

using Kind = Value::Kind;

const char* operatorText(Operator op) {
    switch (op) {
        case Operator::Assign:
            return "=";
        case Operator::Add:
            return "+";
        case Operator::Subtract:
        case Operator::Negate:
            return "-";
        case Operator::Multiply:
            return "*";
        case Operator::Divide:
            return "/";
        case Operator::Modulo:
            return "%";
        case Operator::Cross:
            return "^";
        case Operator::Less:
            return "<";
        case Operator::LessEqual:
            return "<=";
        case Operator::Greater:
            return ">";
        case Operator::GreaterEqual:
            return ">=";
        case Operator::Equal:
            return "==";
        case Operator::NotEqual:
            return "!=";
        case Operator::And:
            return "&&";
        case Operator::Or:
            return "||";
        case Operator::Not:
            return "!";
        case Operator::Increment:
            return "++";
        case Operator::Decrement:
            return "--";
    }
    return "";
}

bool illegal(Operator op, Kind kind, std::string& error) {
    error =
        std::string("Illegal operation \"") + operatorText(op) + "\" on data of type " + kindName(kind) + ".";
    return false;
}

bool isComparison(Operator op) {
    return op >= Operator::Less && op <= Operator::NotEqual;
}

template <typename T>
bool compare(Operator op, const T& a, const T& b) {
    switch (op) {
        case Operator::Less:
            return a < b;
        case Operator::LessEqual:
            return a <= b;
        case Operator::Greater:
            return a > b;
        case Operator::GreaterEqual:
            return a >= b;
        case Operator::Equal:
            return a == b;
        default:
            return a != b;
    }
}

int wrapped(std::int64_t value) {
    return static_cast<int>(static_cast<std::uint32_t>(value));
}

bool onInts(Operator op, Value& left, int right, std::string& error) {
    const std::int64_t a = *left.getIf<int>();
    const std::int64_t b = right;
    if ((op == Operator::Divide || op == Operator::Modulo) && b == 0) {
        error = op == Operator::Divide ? "Division by zero." : "Modulo by zero.";
        return false;
    }
    switch (op) {
        case Operator::Add:
            left = wrapped(a + b);
            return true;
        case Operator::Subtract:
            left = wrapped(a - b);
            return true;
        case Operator::Multiply:
            left = wrapped(a * b);
            return true;
        case Operator::Divide:
            left = wrapped(a / b);
            return true;
        case Operator::Modulo:
            left = wrapped(a % b);
            return true;
        default:
            return illegal(op, Kind::Int, error);
    }
}

bool onFloats(Operator op, Value& left, double b, std::string& error) {
    const double a = left.toFloat();
    if ((op == Operator::Divide || op == Operator::Modulo) && b == 0) {
        error = op == Operator::Divide ? "Division by zero." : "Modulo by zero.";
        return false;
    }
    switch (op) {
        case Operator::Add:
            left = a + b;
            return true;
        case Operator::Subtract:
            left = a - b;
            return true;
        case Operator::Multiply:
            left = a * b;
            return true;
        case Operator::Divide:
            left = a / b;
            return true;
        case Operator::Modulo:
            left = std::fmod(a, b);
            return true;
        default:
            return illegal(op, Kind::Float, error);
    }
}

Vector scaled(const Vector& v, double factor) {
    return {v.x * factor, v.y * factor, v.z * factor};
}

bool onVectors(Operator op, Value& left, const Value& right, std::string& error) {
    if (isComparison(op)) {
        const Vector a = *left.convertedTo(Kind::Vector)->getIf<Vector>();
        const Vector b = *right.convertedTo(Kind::Vector)->getIf<Vector>();
        // Vectors are ordered by their lengths.
        const bool equality = op == Operator::Equal || op == Operator::NotEqual;
        left = equality ? (a == b) == (op == Operator::Equal) : compare(op, left.toFloat(), right.toFloat());
        return true;
    }
    if (op == Operator::Multiply && left.isNumber()) {
        left = scaled(*right.getIf<Vector>(), left.toFloat());
        return true;
    }
    if ((op == Operator::Multiply || op == Operator::Divide) && right.isNumber()) {
        const double factor = right.toFloat();
        if (op == Operator::Divide && factor == 0) {
            error = "Division by zero.";
            return false;
        }
        const Vector v = *left.getIf<Vector>();
        left =
            op == Operator::Multiply ? scaled(v, factor) : Vector{v.x / factor, v.y / factor, v.z / factor};
        return true;
    }
    const Vector a = *left.convertedTo(Kind::Vector)->getIf<Vector>();
    const Vector b = *right.convertedTo(Kind::Vector)->getIf<Vector>();
    switch (op) {
        case Operator::Add:
            left = Vector{a.x + b.x, a.y + b.y, a.z + b.z};
            return true;
        case Operator::Subtract:
            left = Vector{a.x - b.x, a.y - b.y, a.z - b.z};
            return true;
        case Operator::Multiply:
            left = dotProduct(a, b);
            return true;
        case Operator::Cross:
            left = crossProduct(a, b);
            return true;
        default:
            return illegal(op, Kind::Vector, error);
    }
}

bool onStrings(Operator op, Value& left, const Value& right, std::size_t sizeLimit, std::string& error) {
    if (isComparison(op)) {
        const std::string* a = left.getIf<std::string>();
        const std::string* b = right.getIf<std::string>();
        left = a && b ? compare(op, *a, *b) : compare(op, left.toString(), right.toString());
        return true;
    }
    if (op != Operator::Add) return illegal(op, Kind::String, error);
    if (!left.isString()) left = left.toString();
    std::string& text = *left.getIf<std::string>();
    right.appendTo(text);
    if (text.size() <= sizeLimit) return true;
    error = "String too long.";
    return false;
}

Matrix product(const Matrix& a, const Matrix& b) {
    Matrix result{a.rows, b.columns, {}};
    result.values.assign(static_cast<std::size_t>(a.rows) * static_cast<std::size_t>(b.columns), 0.0);
    const auto at = [](const Matrix& m, int row, int column) {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(m.columns) +
               static_cast<std::size_t>(column);
    };
    for (int i = 0; i < a.rows; ++i)
        for (int j = 0; j < b.columns; ++j)
            for (int k = 0; k < a.columns; ++k)
                result.values[at(result, i, j)] += a.values[at(a, i, k)] * b.values[at(b, k, j)];
    return result;
}

bool onMatrices(Operator op, Value& left, const Value& right, std::string& error) {
    Matrix* a = left.getIf<Matrix>();
    const Matrix* b = right.getIf<Matrix>();
    if (op == Operator::Multiply && a && b && a->columns == b->rows) {
        left = product(*a, *b);
        return true;
    }
    if (op == Operator::Multiply && a && right.isNumber()) {
        for (double& value : a->values)
            value *= right.toFloat();
        return true;
    }
    const bool sameShape = a && b && a->rows == b->rows && a->columns == b->columns;
    if (sameShape && (op == Operator::Add || op == Operator::Subtract)) {
        const double sign = op == Operator::Add ? 1 : -1;
        for (std::size_t i = 0; i < a->values.size(); ++i)
            a->values[i] += sign * b->values[i];
        return true;
    }
    if (sameShape && (op == Operator::Equal || op == Operator::NotEqual)) {
        left = (*a == *b) == (op == Operator::Equal);
        return true;
    }
    return illegal(op, Kind::Matrix, error);
}

}  // namespace

bool applyBinary(Operator op, Value& left, const Value& right, std::size_t sizeLimit, std::string& error) {
    const Kind a = left.kind();
    const Kind b = right.kind();
    if (a == Kind::Int && b == Kind::Int && !isComparison(op))
        return onInts(op, left, *right.getIf<int>(), error);
    if (left.isNumber() && right.isNumber()) {
        if (!isComparison(op)) return onFloats(op, left, right.toFloat(), error);
        left = compare(op, left.toFloat(), right.toFloat());
        return true;
    }
    for (const Value* operand : {static_cast<const Value*>(&left), &right})
        if (operand->isArray() || operand->isNone()) return illegal(op, operand->kind(), error);
    if (a == Kind::Matrix || b == Kind::Matrix) return onMatrices(op, left, right, error);
    if (a == Kind::String || b == Kind::String) return onStrings(op, left, right, sizeLimit, error);
    return onVectors(op, left, right, error);
}

bool applyUnary(Operator op, Value& operand, std::string& error) {
    if (operand.isArray() || operand.isNone() || operand.kind() == Kind::Matrix)
        return illegal(op, operand.kind(), error);
    if (op == Operator::Not) {
        operand = !operand.toBool();
        return true;
    }
    if (const int* value = operand.getIf<int>())
        operand = wrapped(-static_cast<std::int64_t>(*value));
    else if (const double* number = operand.getIf<double>())
        operand = -*number;
    else if (const Vector* v = operand.getIf<Vector>())
        operand = Vector{-v->x, -v->y, -v->z};
    else
        return illegal(op, operand.kind(), error);
    return true;
}

Vector crossProduct(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double dotProduct(const Vector& a, const Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

std::string conversionError(Kind from, Kind to) {
    return std::string("Cannot convert data of type ") + kindName(from) + " to type " + kindName(to) + ".";
}

}  // namespace host::mel
