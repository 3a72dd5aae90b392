#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "graph/node.h"
#include "graph/nodeType.h"
#include "scene/sceneText.h"

namespace host::scene {

/// What a file shows of a node type that this host does not have.
struct FileType {
    bool isDag = false;        ///< a node of it has a parent
    bool isTransform = false;  ///< a node of it is a parent, or has a position
};

using FileTypes = std::map<std::string, FileType, std::less<>>;

/// What a file shows of those types of its nodes that this host does not have.
FileTypes fileTypes(const SceneText& text, const graph::NodeTypes& known);

/// The node type of a name. One that this host does not have is registered as kept, below transform, shape or
/// node, as the file shows. Null for a type of which there can be no nodes.
const graph::NodeType* nodeTypeFor(graph::NodeTypes& types, const std::string& name, const FileTypes& shown);

/// The type of a node that every scene of the real host has and that is not in the DAG, by the node's name;
/// nothing for other names.
std::optional<std::string> defaultTypeOf(std::string_view name);
/// Whether a node is one of those: it has the name and the type.
bool isDefaultNode(const graph::Node& node);

}  // namespace host::scene
