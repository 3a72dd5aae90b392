#include "mel/value.h"

#include <cmath>
#include <limits>

#include "mel/numberText.h"

namespace host::mel {

namespace {

int floatToInt(double value) {
    if (!(value > -2147483649.0 && value < 2147483648.0))
        return value > 0 ? std::numeric_limits<int>::max() : std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

double length(const Vector& v) {
    return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

double stringToFloat(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\r\n");
    if (start == std::string_view::npos) return 0;
    const std::optional<ParsedNumber> number = parseNumberPrefix(text.substr(start));
    return number ? number->value : 0;
}

void appendElement(std::string& text, int value) {
    appendInt(text, value);
}
void appendElement(std::string& text, double value) {
    appendFloat(text, value);
}
void appendElement(std::string& text, const std::string& value) {
    text += value;
}
void appendElement(std::string& text, const Vector& v) {
    appendFloat(text, v.x);
    text += ' ';
    appendFloat(text, v.y);
    text += ' ';
    appendFloat(text, v.z);
}

template <typename T>
void appendElements(std::string& text, const std::vector<T>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i > 0) text += ' ';
        appendElement(text, values[i]);
    }
}

/// Applies `visit` to each element of an array value, in order.
template <typename Visit>
void forEachElement(const Value& value, Visit visit) {
    const auto visitAll = [&](const auto* values) {
        if (!values) return;
        for (const auto& element : *values)
            visit(Value(element));
    };
    visitAll(value.getIf<std::vector<int>>());
    visitAll(value.getIf<std::vector<double>>());
    visitAll(value.getIf<std::vector<std::string>>());
    visitAll(value.getIf<std::vector<Vector>>());
}

std::optional<Vector> toVector(const Value& value) {
    if (const Vector* vector = value.getIf<Vector>()) return *vector;
    if (value.isNumber()) return Vector{value.toFloat(), value.toFloat(), value.toFloat()};
    const bool numbers = value.kind() == Value::Kind::IntArray || value.kind() == Value::Kind::FloatArray;
    if (!numbers || value.size() != 3) return std::nullopt;
    const std::vector<double> parts = value.toFloatArray();
    return Vector{parts[0], parts[1], parts[2]};
}

std::optional<Value> toArrayKind(const Value& value, Value::Kind kind) {
    using Kind = Value::Kind;
    if (value.isNone()) return Value::defaultOf(kind);
    const Kind from = value.kind();
    const bool numbers = from == Kind::IntArray || from == Kind::FloatArray;
    if (kind == Kind::IntArray && numbers) return Value(value.toIntArray());
    if (kind == Kind::FloatArray && (numbers || from == Kind::Vector)) return Value(value.toFloatArray());
    if (kind == Kind::StringArray && (numbers || from == Kind::VectorArray))
        return Value(value.toStringArray());
    return std::nullopt;
}

}  // namespace

bool Value::operator==(const Value& other) const {
    if (kind() != other.kind()) return false;
    if (const int* number = getIf<int>()) return *number == *other.getIf<int>();
    if (const auto* text = getIf<std::string>()) return *text == *other.getIf<std::string>();
    return data_ == other.data_;
}

Value Value::defaultOf(Kind kind) {
    switch (kind) {
        case Kind::None:
            return {};
        case Kind::Int:
            return Value(0);
        case Kind::Float:
            return Value(0.0);
        case Kind::String:
            return Value(std::string());
        case Kind::Vector:
            return Value(mel::Vector{});
        case Kind::Matrix:
            return Value(mel::Matrix{});
        case Kind::IntArray:
            return Value(std::vector<int>());
        case Kind::FloatArray:
            return Value(std::vector<double>());
        case Kind::StringArray:
            return Value(std::vector<std::string>());
        case Kind::VectorArray:
            return Value(std::vector<mel::Vector>());
    }
    return {};
}

int Value::toInt() const {
    const int* value = getIf<int>();
    return value ? *value : floatToInt(toFloat());
}

double Value::toFloat() const {
    switch (kind()) {
        case Kind::Int:
            return *getIf<int>();
        case Kind::Float:
            return *getIf<double>();
        case Kind::String:
            return stringToFloat(*getIf<std::string>());
        case Kind::Vector:
            return length(*getIf<mel::Vector>());
        case Kind::None:
        case Kind::Matrix:
            return 0;
        default:
            return element(0).toFloat();
    }
}

std::string Value::toString() const {
    std::string text;
    appendTo(text);
    return text;
}

void Value::appendTo(std::string& text) const {
    switch (kind()) {
        case Kind::None:
            return;
        case Kind::Int:
            return appendElement(text, *getIf<int>());
        case Kind::Float:
            return appendElement(text, *getIf<double>());
        case Kind::String:
            return appendElement(text, *getIf<std::string>());
        case Kind::Vector:
            return appendElement(text, *getIf<mel::Vector>());
        case Kind::Matrix:
            return appendElements(text, getIf<mel::Matrix>()->values);
        case Kind::IntArray:
            return appendElements(text, *getIf<std::vector<int>>());
        case Kind::FloatArray:
            return appendElements(text, *getIf<std::vector<double>>());
        case Kind::StringArray:
            return appendElements(text, *getIf<std::vector<std::string>>());
        case Kind::VectorArray:
            return appendElements(text, *getIf<std::vector<mel::Vector>>());
    }
}

std::vector<int> Value::toIntArray() const {
    if (const auto* values = getIf<std::vector<int>>()) return *values;
    std::vector<int> result;
    const std::vector<double> values = toFloatArray();
    result.reserve(values.size());
    for (const double value : values)
        result.push_back(floatToInt(value));
    return result;
}

std::vector<double> Value::toFloatArray() const {
    if (const auto* values = getIf<std::vector<double>>()) return *values;
    if (const auto* matrix = getIf<mel::Matrix>()) return matrix->values;
    if (const auto* vector = getIf<mel::Vector>()) return {vector->x, vector->y, vector->z};
    if (isNone()) return {};
    if (!isArray()) return {toFloat()};
    std::vector<double> result;
    result.reserve(size());
    forEachElement(*this, [&](const Value& value) { result.push_back(value.toFloat()); });
    return result;
}

std::vector<std::string> Value::toStringArray() const {
    if (const auto* values = getIf<std::vector<std::string>>()) return *values;
    if (isNone()) return {};
    if (!isArray()) return {toString()};
    std::vector<std::string> result;
    result.reserve(size());
    forEachElement(*this, [&](const Value& value) { result.push_back(value.toString()); });
    return result;
}

std::optional<Value> Value::convertedTo(Kind target) const {
    if (target == kind() || target == Kind::None) return *this;
    if (target >= Kind::IntArray) return toArrayKind(*this, target);
    if (target == Kind::Vector) {
        const std::optional<mel::Vector> vector = mel::toVector(*this);
        return vector ? std::optional<Value>(*vector) : std::nullopt;
    }
    if (target == Kind::Matrix || isArray() || isNone() || kind() == Kind::Matrix) return std::nullopt;
    if (target == Kind::Int) return Value(toInt());
    if (target == Kind::Float) return Value(toFloat());
    return Value(toString());
}

std::size_t Value::size() const {
    switch (kind()) {
        case Kind::None:
            return 0;
        case Kind::String:
            return getIf<std::string>()->size();
        case Kind::IntArray:
            return getIf<std::vector<int>>()->size();
        case Kind::FloatArray:
            return getIf<std::vector<double>>()->size();
        case Kind::StringArray:
            return getIf<std::vector<std::string>>()->size();
        case Kind::VectorArray:
            return getIf<std::vector<mel::Vector>>()->size();
        default:
            return 1;
    }
}

Value Value::element(std::size_t index) const {
    const auto at = [&](const auto* values) {
        return index < values->size() ? Value((*values)[index]) : defaultOf(elementKind(kind()));
    };
    switch (kind()) {
        case Kind::IntArray:
            return at(getIf<std::vector<int>>());
        case Kind::FloatArray:
            return at(getIf<std::vector<double>>());
        case Kind::StringArray:
            return at(getIf<std::vector<std::string>>());
        case Kind::VectorArray:
            return at(getIf<std::vector<mel::Vector>>());
        default:
            return {};
    }
}

const char* kindName(Value::Kind kind) {
    static const char* const kNames[] = {"void",   "int",   "float",   "string",   "vector",
                                         "matrix", "int[]", "float[]", "string[]", "vector[]"};
    return kNames[static_cast<std::size_t>(kind)];
}

Value::Kind elementKind(Value::Kind arrayKind) {
    switch (arrayKind) {
        case Value::Kind::IntArray:
            return Value::Kind::Int;
        case Value::Kind::FloatArray:
            return Value::Kind::Float;
        case Value::Kind::StringArray:
            return Value::Kind::String;
        case Value::Kind::VectorArray:
            return Value::Kind::Vector;
        default:
            return Value::Kind::None;
    }
}

Value::Kind arrayKind(Value::Kind elementKind) {
    switch (elementKind) {
        case Value::Kind::Int:
            return Value::Kind::IntArray;
        case Value::Kind::Float:
            return Value::Kind::FloatArray;
        case Value::Kind::String:
            return Value::Kind::StringArray;
        case Value::Kind::Vector:
            return Value::Kind::VectorArray;
        default:
            return Value::Kind::None;
    }
}

}  // namespace host::mel
