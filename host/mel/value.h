#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
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

/// A MEL matrix, row after row; `values` has rows * columns entries.
struct Matrix {
    int rows = 0;
    int columns = 0;
    std::vector<double> values;

    bool operator==(const Matrix& other) const {
        return rows == other.rows && columns == other.columns && values == other.values;
    }
};

/// What a script variable holds, a command word becomes and a command returns.
///
/// An int has 32 bits as in MEL. None stands for "no value": the result of a command that returns nothing.
/// Names, flags and component words are strings. The conversions are MEL's.
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
    Value(bool value) : data_(value ? 1 : 0) {}
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

    /// The value that a variable of this kind has before its first assignment: 0, "", an empty array, ...
    static Value defaultOf(Kind kind);

    Kind kind() const { return static_cast<Kind>(data_.index()); }
    bool isNone() const { return kind() == Kind::None; }
    bool isNumber() const { return kind() == Kind::Int || kind() == Kind::Float; }
    bool isString() const { return kind() == Kind::String; }
    bool isArray() const { return kind() >= Kind::IntArray; }

    /// The content when the value is exactly of that type (int, double, std::string, Vector, Matrix or a
    /// std::vector of the first four), else nullptr. No copy is made.
    template <typename T>
    const T* getIf() const {
        return std::get_if<T>(&data_);
    }
    template <typename T>
    T* getIf() {
        return std::get_if<T>(&data_);
    }

    /// Scalar conversions. A string gives the number that it begins with, or 0; a vector its length; None 0
    /// or "". An array gives what its first element gives, so that a command may take a one-element list for
    /// its element.
    int toInt() const;
    double toFloat() const;
    bool toBool() const { return toFloat() != 0; }
    /// Floats with up to ten significant digits, whole ones without a point; a vector as "x y z"; the
    /// elements of an array or matrix separated by blanks (the form of a "Result:" line).
    std::string toString() const;
    void appendTo(std::string& text) const;

    /// Array conversions, element by element; a scalar gives one element, None gives none, a vector three
    /// numbers.
    std::vector<int> toIntArray() const;
    std::vector<double> toFloatArray() const;
    std::vector<std::string> toStringArray() const;

    /// The conversion of an assignment or of a procedure argument; nothing when MEL does not convert (an
    /// array to a scalar, text arrays to number arrays). None converts to an empty array only.
    std::optional<Value> convertedTo(Kind kind) const;

    /// MEL's `size`: number of elements of an array, of bytes of a string, 1 otherwise, 0 for None.
    std::size_t size() const;
    /// Element of an array; the element kind's default beyond the end (MEL reads such elements without
    /// complaint).
    Value element(std::size_t index) const;

    bool operator==(const Value& other) const { return data_ == other.data_; }
    bool operator!=(const Value& other) const { return !(*this == other); }

  private:
    // In the order of Kind.
    std::variant<std::monostate, int, double, std::string, Vector, Matrix, std::vector<int>,
                 std::vector<double>, std::vector<std::string>, std::vector<Vector>>
        data_;
};

/// "int", "float[]", "void", ... as error messages name a kind.
const char* kindName(Value::Kind kind);
/// The kind of an array's elements, and of an array of such elements; None when there is none.
Value::Kind elementKind(Value::Kind arrayKind);
Value::Kind arrayKind(Value::Kind elementKind);

}  // namespace host::mel
