#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "commands/commandSupport.h"
#include "graph/data.h"

/// Attribute values between the words of a script and the graph.
namespace host::commands {

/// The values of a command line, read one after the other. The first one that does not fit sets the error;
/// everything read after it is meaningless.
class ValueWords {
  public:
    /// @param words  must outlive this @param first  position of the first value
    ValueWords(const std::vector<Value>& words, std::size_t first)
        : words_(words), first_(first), at_(first) {}

    bool atEnd() const { return at_ >= words_.size(); }
    std::size_t left() const { return words_.size() - at_; }
    const std::string& error() const { return error_; }
    bool ok() const { return error_.empty(); }

    double number();
    /// The same, or one of the words nan, inf and -inf, which files of deformed scenes hold.
    double anyNumber();
    int integer();
    /// The text of the next value, whatever its type.
    std::string text();
    /// The next value without a copy when it is a string; empty and an error when it is none.
    std::string_view word();
    /// Says that the value read last does not fit, with what is wrong with it where that is not plain.
    void reject(const std::string& why = {});

  private:
    const Value* next();

    const std::vector<Value>& words_;
    std::size_t first_;
    std::size_t at_;
    std::string error_;
};

/// How many numbers a type of a few numbers has ("double3": 3); 0 for other types.
int tupleSize(std::string_view type);

/// Whether `readData` knows the type.
bool isDataType(std::string_view type);
/// Reads a data object: an array type is its number of entries and then the entries. Linear.
graph::DataPtr readData(ValueWords& words, std::string_view type);

/// The value of a data object as scripts get it; nothing for types that scripts cannot read.
/// @param type  of the attribute: a null object reads as empty data of it
std::optional<Value> dataValue(const graph::DataPtr& data, std::string_view type);

/// The type of an attribute as scripts spell it: "doubleLinear", "double3", "componentList", ...
std::string attributeTypeName(const graph::Attribute& attribute);

}  // namespace host::commands
