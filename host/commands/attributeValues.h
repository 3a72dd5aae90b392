#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "commands/commandSupport.h"
#include "graph/attributeTypes.h"
#include "graph/data.h"

/// Converts attribute values between the words of a script and the graph.
namespace host::commands {

/// The values of a command line, read one after the other. The first one that does not fit sets the error.
/// Everything read after it is meaningless.
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
    /// A number, or one of the words nan, inf and -inf, which files of deformed scenes contain.
    double anyNumber();
    int integer();
    /// The text of the next value, of any type.
    std::string text();
    /// The next value without a copy, if it is a string; otherwise empty, and an error is set.
    std::string_view word();
    /// Reports that the value read last does not fit.
    /// @param why  what is wrong with it, if that is not obvious
    void reject(const std::string& why = {});

  private:
    const Value* next();

    const std::vector<Value>& words_;
    std::size_t first_;
    std::size_t at_;
    std::string error_;
};

/// Reads a data object. An array type is its number of entries, followed by the entries. Linear.
graph::DataPtr readData(ValueWords& words, std::string_view type);

/// The value of a data object for scripts; nothing for types that scripts cannot read.
/// @param type  of the attribute: a null object is read as empty data of this type
std::optional<Value> dataValue(const graph::DataPtr& data, std::string_view type);

/// The type name of an attribute in scripts: "doubleLinear", "double3", "componentList", ...
std::string attributeTypeName(const graph::Attribute& attribute);

/// "translateX" as "Translate X".
std::string niceName(const std::string& longName);

}  // namespace host::commands
