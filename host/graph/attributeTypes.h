#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "graph/attribute.h"

/// The names that scripts and scene files give to types of attributes and values.
namespace host::graph {

/// What the type in the declaration of an attribute means.
struct AttributeTypeChoice {
    ValueKind kind = ValueKind::Double;
    std::string dataType{};  // also for numbers that are stored as a wider type
    std::size_t childCount = 0;
    ValueKind childKind = ValueKind::Double;
};

/// The number of numbers in "float3", "double2", ...; 0 for any other type.
int tupleSize(std::string_view type);
/// The reverse, for an attribute: "double3" for a compound of three angles. Empty for anything but a compound
/// of two to four numbers of one kind.
std::string tupleName(const Attribute& attribute);
/// Whether values of the type are data that this host reads and writes.
bool isDataType(std::string_view type);

/// The meaning of -attributeType; nothing if the type is not covered.
/// @param numberOfChildren  of a "compound"
std::optional<AttributeTypeChoice> attributeTypeNamed(const std::string& name, int numberOfChildren);
/// The meaning of -dataType; nothing if the type is not covered.
std::optional<AttributeTypeChoice> dataTypeNamed(const std::string& name);
/// The fields of "low:mid:high", each with an optional "=number". The position of a field is its number;
/// numbers between the fields have an empty name.
std::vector<std::string> enumNamesIn(const std::string& text);
/// The reverse.
std::string enumText(const std::vector<std::string>& names);
/// Adds the children of a compound whose type has no names for them.
void addNumberedChildren(AttributeSpec& spec, const AttributeTypeChoice& type);

}  // namespace host::graph
