#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "graph/graph.h"
#include "scene/savedNode.h"
#include "scene/sceneText.h"

namespace host::scene {

/// A node's block in the file: the statement that makes the node or turns to it, and those about it that
/// follow.
struct SavedBlock {
    std::uint32_t first = 0;
    std::uint32_t last = 0;  ///< after its last statement
    graph::NodeRef node{};   ///< null if the statement was not understood: it is kept as it is
    std::string name{};      ///< only if the node got another name than the file says
};

/// A connection as the file says it.
struct SavedLink {
    std::uint32_t statement = 0;
    graph::Plug source{};
    graph::Plug destination{};
};

/// A further parent of a node, as the file says it.
struct SavedInstance {
    std::uint32_t statement = 0;
    graph::NodeRef node{};
    graph::NodeRef parent{};
};

/// A statement outside the blocks that names nodes.
struct SavedMention {
    std::uint32_t statement = 0;
    std::vector<graph::NodeRef> nodes{};  ///< in the order of the names; null for a name of nothing
};

/// A statement that names nodes and that no file has yet.
struct AddedMention {
    std::string text{};
    std::vector<graph::NodeRef> nodes{};  ///< as in SavedMention
};

/// What a file says that has no place in the graph: kept word for word until the scene is saved.
struct SceneDocument {
    std::shared_ptr<const SceneText> text{};
    std::vector<SavedBlock> blocks{};        ///< in the order of the file
    std::vector<SavedLink> links{};          ///< likewise; without those that could not be made
    std::vector<SavedInstance> instances{};  ///< likewise
    std::vector<SavedMention> mentions{};    ///< likewise
    std::vector<AddedMention> addedMentions{};
    std::unordered_map<const graph::Node*, bool> locks{};  ///< Node::isLocked of the nodes that it is about
    std::unordered_map<const graph::Node*, SavedNode*> sources{};
    bool isNew = false;                     ///< no file was read; the text is that of an empty scene
    std::vector<std::string> references{};  ///< paths of files that are not loaded
    /// What was there before the file was read: the nodes that every scene has, and their connections, which
    /// files do not name.
    std::vector<graph::NodeRef> givenNodes{};
    std::vector<graph::Connection> givenLinks{};
    /// Texts of the scene (fileInfo) that were changed, by their keys; nothing for one that was removed.
    std::map<std::string, std::optional<std::string>> changedInfo{};
    std::uint64_t changes = 0;      ///< of the graph (Graph::changes) when the file was read
    std::uint64_t nameVersion = 0;  ///< likewise
};

}  // namespace host::scene
