#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace host::mel {

/// A MEL vector: three doubles.
struct Vector {
    double x = 0;
    double y = 0;
    double z = 0;

    bool operator==(const Vector& other) const { return x == other.x && y == other.y && z == other.z; }
};

/// A MEL matrix, row after row. `values` has rows * columns entries.
struct Matrix {
    int rows = 0;
    int columns = 0;
    std::vector<double> values;

    bool operator==(const Matrix& other) const {
        return rows == other.rows && columns == other.columns && values == other.values;
    }
};

/// The value of a script variable, of a command word, or of a command's result.
///
/// An int has 32 bits, as in MEL. None means "no value": the result of a command that returns nothing. Names,
/// flags and component words are strings. The conversions are MEL's.
///
/// Callers with more types than MEL ask for more: whether an Int is the answer to a yes-or-no question, and
/// whether a String is a text even where it looks like a flag. MEL itself does not tell such values apart.
class Value {
  public:
    enum class Kind : std::uint8_t {
        None,
        Int,
        Float,
        String,
        Vector,
        Matrix,
        IntArray,
        FloatArray,
        StringArray,
        VectorArray
    };

    Value() = default;
    Value(int value) : data_(value) {}
    Value(bool value) : data_(Truth{value ? 1 : 0}) {}
    Value(double value) : data_(value) {}
    Value(std::string value) : data_(std::move(value)) {}
    Value(std::string_view value) : data_(std::string(value)) {}
    Value(const char* value) : data_(std::string(value)) {}
    Value(Vector value) : data_(value) {}
    Value(Matrix value) : data_(std::move(value)) {}
    Value(std::vector<int> values) : data_(std::move(values)) {}
    Value(std::vector<double> values) : data_(std::move(values)) {}
    Value(std::vector<std::string> values) : data_(std::move(values)) {}
    Value(std::vector<Vector> values) : data_(std::move(values)) {}

    /// A text that is never a flag.
    static Value plainText(std::string text) {
        Value value;
        value.data_ = PlainText{std::move(text)};
        return value;
    }

    /// The value of a variable of this kind before its first assignment: 0, "", an empty array, ...
    static Value defaultOf(Kind kind);

    Kind kind() const {
        if (isTruth()) return Kind::Int;
        return isPlainText() ? Kind::String : static_cast<Kind>(data_.index());
    }
    bool isTruth() const { return std::holds_alternative<Truth>(data_); }
    bool isPlainText() const { return std::holds_alternative<PlainText>(data_); }
    bool isNone() const { return kind() == Kind::None; }
    bool isNumber() const { return kind() == Kind::Int || kind() == Kind::Float; }
    bool isString() const { return kind() == Kind::String; }
    bool isArray() const { return kind() >= Kind::IntArray; }

    /// The content if the value has exactly this type (int, double, std::string, Vector, Matrix or a
    /// std::vector of the first four), else nullptr. No copy is made.
    template <typename T>
    const T* getIf() const {
        return const_cast<Value*>(this)->getIf<T>();
    }
    template <typename T>
    T* getIf() {
        if constexpr (std::is_same_v<T, int>) {
            if (auto* truth = std::get_if<Truth>(&data_)) return &truth->value;
        } else if constexpr (std::is_same_v<T, std::string>) {
            if (auto* plain = std::get_if<PlainText>(&data_)) return &plain->text;
        }
        return std::get_if<T>(&data_);
    }

    /// Scalar conversions. A string gives the number at its start, or 0; a vector its length; None 0 or "".
    /// An array is converted like its first element, so that a command may take a list of one element instead
    /// of the element.
    int toInt() const;
    double toFloat() const;
    bool toBool() const { return toFloat() != 0; }
    /// Floats have up to ten significant digits, whole ones no point. A vector is "x y z". Elements of an
    /// array or matrix are separated by blanks (the form of a "Result:" line).
    std::string toString() const;
    void appendTo(std::string& text) const;

    /// Array conversions, element by element. A scalar gives one element, None gives none, a vector three
    /// numbers.
    std::vector<int> toIntArray() const;
    std::vector<double> toFloatArray() const;
    std::vector<std::string> toStringArray() const;

    /// The conversion of an assignment or of a procedure argument. Nothing if MEL does not convert (an array
    /// to a scalar, text arrays to number arrays). None only converts to an empty array.
    std::optional<Value> convertedTo(Kind target) const;

    /// MEL's `size`: number of elements of an array, number of bytes of a string, 0 for None, otherwise 1.
    std::size_t size() const;
    /// Element of an array. Beyond the end, the default of the element kind: MEL reads such elements without
    /// an error.
    Value element(std::size_t index) const;

    bool operator==(const Value& other) const;
    bool operator!=(const Value& other) const { return !(*this == other); }

  private:
    struct Truth {
        int value = 0;
        bool operator==(const Truth& other) const { return value == other.value; }
    };
    struct PlainText {
        std::string text;
        bool operator==(const PlainText& other) const { return text == other.text; }
    };

    // In the order of Kind.
    std::variant<std::monostate, int, double, std::string, Vector, Matrix, std::vector<int>,
                 std::vector<double>, std::vector<std::string>, std::vector<Vector>, Truth, PlainText>
        data_;
};

/// "int", "float[]", "void", ...: the name of a kind in error messages.
const char* kindName(Value::Kind kind);
/// The kind of an array's elements, and the kind of an array of such elements; None if there is none.
Value::Kind elementKind(Value::Kind arrayKind);
Value::Kind arrayKind(Value::Kind elementKind);

}  // namespace host::mel
