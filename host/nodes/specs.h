#pragma once

#include <string>
#include <string_view>

#include "graph/attribute.h"

/// Attribute descriptions that several node types use.
namespace host::nodes {

graph::AttributeSpec flag(std::string longName, std::string shortName, bool isOn = false);
graph::AttributeSpec integer(std::string longName, std::string shortName, int value = 0);
graph::AttributeSpec text(std::string longName, std::string shortName);
graph::AttributeSpec matrix(std::string longName, std::string shortName);
/// A compound of three numbers whose names have the axis in the place of '#', such as "minTrans#Limit".
graph::AttributeSpec axisTriple(std::string longName, std::string shortName, std::string_view childLong,
                                std::string_view childShort, graph::ValueKind kind, double value = 0.0);
/// A compound of three single-precision numbers <long>R/G/B, <short>r/g/b.
graph::AttributeSpec color(const std::string& longName, const std::string& shortName, double value = 0.0);
graph::AttributeSpec keyableColor(const std::string& longName, const std::string& shortName,
                                  double value = 0.0);
/// The same with names that have the channel in the place of '#', such as "objectColor#".
graph::AttributeSpec color(std::string longName, std::string shortName, std::string_view childLong,
                           std::string_view childShort);

/// The same attribute with every child keyable.
graph::AttributeSpec keyableChildren(graph::AttributeSpec compound);

}  // namespace host::nodes
