#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "scene/sceneDocument.h"

namespace host::scene {

/// The nodes of files whose meshes were read, by their topology. A mesh that another node has now, as after a
/// copy or below a new deformer, is written with the file's own words.
using MeshSources = std::map<const geometry::Topology*, const SavedNode*>;

/// What becomes of a node's statements in the file. Statements that are not named stay as they are.
struct BlockEdits {
    std::map<std::uint32_t, std::string>
        replaced{};       ///< the new text, without blanks before it; empty: it goes
    std::string added{};  ///< statements after the others, with line ends
};

/// The edits that bring the statements of a node up to date: those whose values the node still holds stay.
BlockEdits blockEdits(graph::Graph& graph, graph::Node& node, const SavedNode& source,
                      const MeshSources& meshes);

/// All statements of a node that has a part of a file, in place of that part: for a node that stands
/// elsewhere now, or in another file.
std::string movedNodeText(graph::Graph& graph, graph::Node& node, const SavedNode& source,
                          const MeshSources& meshes);

/// All statements of a node that no file has, with line ends.
/// @param uuid  the node's
std::string newNodeText(graph::Graph& graph, graph::Node& node, const std::string& uuid, const TextForm& form,
                        const MeshSources& meshes);

/// `createNode type -n "name" -p "parent";`
std::string createNodeText(const graph::Graph& graph, const graph::Node& node, bool isShared);

}  // namespace host::scene
