#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>

#include <optional>
#include <string_view>

#include "graph/component.h"
#include "graph/node.h"

namespace host::api {

/// Whether a node of this type has the function set.
bool hasFunctionSet(const graph::NodeType& type, MFn::Type functionSet);
/// The most derived function set of a node type.
MFn::Type functionSetOf(const graph::NodeType& type);

bool hasFunctionSet(const graph::Attribute& attribute, MFn::Type functionSet);
MFn::Type functionSetOf(const graph::Attribute& attribute);

/// The function set of a data type with a script name such as "pointArray"; kData if the API has none for it.
MFn::Type functionSetOfData(std::string_view typeName);

MFn::Type functionSetOf(graph::ComponentKind kind);
/// Nothing for a type that is not a mesh component.
std::optional<graph::ComponentKind> componentKindOf(MFn::Type type);

/// "kMesh"; "kInvalid" for types that no object of this host has.
const char* enumeratorName(MFn::Type type);

}  // namespace host::api
