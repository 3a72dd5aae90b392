#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "graph/attribute.h"
#include "graph/node.h"
#include "scene/sceneUnits.h"

namespace host::scene {

/// An attribute that an addAttr statement declares.
struct AddedAttribute {
    graph::AttributeSpec spec{};
    std::string parent{};        ///< long or short name of the compound that it belongs to; empty if none
    bool takesChildren = false;  ///< other statements declare its children
};

/// Reads an addAttr statement. Nothing if its type is not covered or something is missing.
std::optional<AddedAttribute> readAddAttr(std::string_view statement, const SceneUnits& units);

/// Puts children into their compounds.
/// @return the root attributes, in the order of their declarations
std::vector<graph::AttributeSpec> assembled(std::vector<AddedAttribute> added);

/// The statements that declare a dynamic attribute, the children of a compound after it; each ends with a
/// line end. Flags are in the host's order.
std::string addAttrText(const graph::Attribute& attribute, const SceneUnits& units, std::string_view lineEnd);

}  // namespace host::scene
