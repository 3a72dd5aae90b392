#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "graph/graph.h"
#include "graph/hierarchy.h"

/// The paths of DAG nodes. A node with several parents has a path through each of them, and so has what is
/// below it. Paths are numbered from 0: those through the first parent come first, in the order that they
/// have there.
namespace host::graph {

/// How many paths of a node are told apart. There may be as many as powers of two.
constexpr std::size_t kMaxPaths = 10000;

/// A DAG node at one of its places: the number of its path.
struct Instance {
    Node* node = nullptr;
    std::size_t number = 0;
};

/// Whether a node has several paths.
bool isInstanced(const Node& node);
/// How many paths a node has; kMaxPaths + 1 if there are more than kMaxPaths. Linear in what is above.
std::size_t pathCount(const Node& node);
/// The full paths of a node by their numbers, not more than kMaxPaths.
std::vector<std::string> paths(const Node& node);
/// The same, as short as they can be and still be told from each other and from other nodes.
std::vector<std::string> shortPaths(const Graph& graph, const Node& node);
/// A node and those above it on one of its paths, from the node up. Empty if there is no such path.
std::vector<Instance> upwards(const Instance& instance);
/// The full path of an instance; empty if there is none.
std::string fullPath(const Instance& instance);
/// A child of an instance, at its place there.
Instance childOf(const Instance& parent, Node& child);
/// A place and those below it: each node once, after one of its parents, and children in their order.
std::vector<Instance> hierarchyBelow(const Instance& root);

/// The numbers of many instances, asked for one after the other: what is above a node is counted once. The
/// scene may not change in between.
class InstanceNumbers {
  public:
    /// The place to which a chain of nodes leads, each of which is a parent of the one before.
    Instance at(const std::vector<Node*>& chain);
    Instance childOf(const Instance& parent, Node& child);
    std::vector<Instance> upwards(const Instance& instance);
    std::string fullPath(const Instance& instance);

  private:
    std::unordered_map<const Node*, std::size_t> counts_;  // of paths
    /// Of a node with several parents: how many paths come before those through each parent.
    std::unordered_map<const Node*, std::unordered_map<const Node*, std::size_t>> before_;
};

/// A node and those above it that the parts of a path name, from the node up. Empty if they name none.
/// @param above          the path up to the bar before the node: "|group|arm", "arm"; empty for the top level
/// @param parentsCalled  appends to a vector those parents of a node that a part of the path names
template <typename ParentsCalled>
std::vector<Node*> chainAbove(Node& node, std::string_view above, ParentsCalled&& parentsCalled) {
    struct Reached {
        Node* node;
        std::size_t below;
    };
    std::vector<Reached> reached{{&node, 0}};
    std::vector<Node*> parents;
    std::size_t level = 0;
    bool isAbsolute = true;
    for (std::string_view path = above; !path.empty();) {
        const std::size_t bar = path.rfind('|');
        const std::size_t end = reached.size();
        // Only several nodes may have the same parent.
        std::unordered_set<const Node*> seen;
        for (std::size_t k = level; k < end; ++k) {
            parents.clear();
            parentsCalled(*reached[k].node, path.substr(bar + 1), parents);
            for (Node* parent : parents) {
                if (end - level == 1 || seen.insert(parent).second) reached.push_back({parent, k});
            }
        }
        if (reached.size() == end) return {};
        level = end;
        isAbsolute = bar != std::string_view::npos;
        path = path.substr(0, isAbsolute ? bar : 0);
    }
    for (std::size_t top = level; top < reached.size(); ++top) {
        if (isAbsolute && reached[top].node->parent() != nullptr) continue;
        std::vector<Node*> chain;
        for (std::size_t k = top; k != 0; k = reached[k].below)
            chain.push_back(reached[k].node);
        chain.push_back(&node);
        return {chain.rbegin(), chain.rend()};
    }
    return {};
}

}  // namespace host::graph
