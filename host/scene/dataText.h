#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "graph/data.h"
#include "scene/setStatement.h"

namespace host::scene {

/// Goes through numbers, and the words that stand for numbers: yes, no, nan, inf. Exponents may have three
/// digits.
class NumberScanner {
  public:
    explicit NumberScanner(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {}

    /// Nothing at the end, and before a word that is no number.
    std::optional<double> next();
    /// Whether everything was read.
    bool atEnd();

  private:
    void skipBlanks();

    const char* at_;
    const char* end_;
};

/// The text of a value whose type is not read: known to be there, and copied with its attribute.
class KeptData final : public graph::Data {
  public:
    KeptData(std::string typeFlag, std::string values) : type(std::move(typeFlag)), text(std::move(values)) {}
    std::string_view typeName() const override { return type.empty() ? "kept" : std::string_view(type); }
    void describe(std::string& into) const override { graph::appendText(into, text); }

    std::string type;  ///< of the statement's -type flag, or empty
    std::string text;  ///< the values as they stand in the file
};

/// Reads the value of a statement with -type.
/// @param dataType  what the attribute takes; empty for anything
/// @return null if the text does not fit
graph::DataPtr readData(const SetHead& head, const std::string& dataType, const TextForm& form);

/// `-type "..." values`, as the host writes it.
std::string dataText(const graph::Data& data, bool isDoubleByte);

bool isSameData(const graph::DataPtr& a, const graph::DataPtr& b);
/// Equal, or both not numbers. Zeros of either sign are the same.
inline bool isSameNumber(double a, double b) {
    return a == b || (a != a && b != b);
}

}  // namespace host::scene
