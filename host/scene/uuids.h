#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_set>

#include "graph/graph.h"
#include "scene/sceneText.h"

namespace host::scene {

/// Gives ids to nodes that have none. No clock and no chance: ids follow from the scene's name and from how
/// many were given, so the same script writes the same file.
class UuidGiver {
  public:
    /// @param text  whose ids are taken
    UuidGiver(const SceneText& text, std::string_view sceneName);
    /// The node's id, given now if it had none. That is no change of the scene: asking for an id does not
    /// make a node of a file differ from the file.
    const std::string& obtain(graph::Node& node);
    /// Makes an id count as taken. @return false if it was already
    bool take(const std::string& uuid) { return taken_.insert(uuid).second; }
    /// An id that no node has.
    std::string next();

  private:
    std::unordered_set<std::string> taken_;
    std::map<graph::NodeRef, std::string> given_;
    std::uint64_t seed_;
    std::uint64_t count_ = 0;
};

/// Whether a text has the form of an id: "8-4-4-4-12" hexadecimal digits.
bool isUuid(std::string_view text);

}  // namespace host::scene
