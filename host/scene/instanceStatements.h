#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "scene/sceneDocument.h"

/// Statements of scene files that give nodes further parents: parent -s -nc -r -add "|a|shape" "b";
namespace host::scene {

/// The names in such a statement: of the nodes, and of the parent at the end. Nothing for another statement.
std::optional<std::vector<std::string>> readAddedParent(std::string_view statement);

/// The statement that makes an instance of a node below one of its other parents.
std::string addedParentText(const graph::Graph& graph, const graph::Node& node, const graph::Node& parent);

/// Instances of a file that the scene does not have yet. One by one they could not be checked in linear time
/// for circles, in which nodes are below themselves. So names count with them, and they are made together.
class PendingInstances {
  public:
    void add(SavedInstance instance);
    bool has(const graph::Node& node, const graph::Node& parent) const {
        return pairs_.count({&node, &parent}) != 0;
    }
    /// The parents that a node is going to have besides those that it has, in order.
    const std::vector<graph::Node*>& parentsOf(const graph::Node& node) const;

    /// Takes all of them out.
    /// @param circles  set to the statements of which an instance is part of a circle
    /// @return those of the other statements, in order
    std::vector<SavedInstance> take(std::set<std::uint32_t>& circles);

  private:
    std::vector<SavedInstance> instances_;
    std::set<std::pair<const graph::Node*, const graph::Node*>> pairs_;  // nodes with their parents
    std::unordered_map<const graph::Node*, std::vector<graph::Node*>> parents_;
};

}  // namespace host::scene
