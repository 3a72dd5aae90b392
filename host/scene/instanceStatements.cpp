#include "scene/instanceStatements.h"

#include <algorithm>

#include "graph/instances.h"
#include "scene/plugText.h"
#include "scene/words.h"

namespace host::scene {

std::optional<std::vector<std::string>> readAddedParent(std::string_view statement) {
    WordScanner words(statement);
    words.next();
    std::vector<std::string> names;
    bool isAdding = false;
    for (Word word = words.next(); !word.isEnd(); word = words.next()) {
        if (word.isText()) {
            names.push_back(word.text());
        } else if (word.isBare("-add") || word.isBare("-addObject")) {
            isAdding = true;
        } else if (!word.isBare("-s") && !word.isBare("-shape") && !word.isBare("-nc") &&
                   !word.isBare("-noConnections") && !word.isBare("-r") && !word.isBare("-relative")) {
            return std::nullopt;
        }
    }
    return isAdding && names.size() > 1 ? std::optional(std::move(names)) : std::nullopt;
}

std::string addedParentText(const graph::Graph& graph, const graph::Node& node, const graph::Node& parent) {
    return "parent -s -nc -r -add " + inQuotes(graph.fullPath(node)) + ' ' +
           inQuotes(nodeText(graph, parent)) + ';';
}

namespace {

using graph::Node;

/// What is below some nodes: which of them are below which, by their position in `nodes`.
struct Ways {
    std::vector<const Node*> nodes{};
    std::unordered_map<const Node*, std::size_t> positions{};
    std::vector<std::vector<std::size_t>> below{};
    std::vector<std::vector<std::size_t>> above{};

    std::size_t positionOf(const Node& node) {
        const auto [found, isNew] = positions.emplace(&node, nodes.size());
        if (isNew) {
            nodes.push_back(&node);
            below.emplace_back();
            above.emplace_back();
        }
        return found->second;
    }
};

Ways waysBelow(const std::vector<SavedInstance>& instances) {
    std::unordered_map<const Node*, std::vector<const Node*>> added;
    Ways ways;
    for (const SavedInstance& instance : instances) {
        added[instance.parent.get()].push_back(instance.node.get());
        ways.positionOf(*instance.node);
    }
    for (std::size_t at = 0; at < ways.nodes.size(); ++at) {
        const Node& node = *ways.nodes[at];
        std::vector<const Node*> children(node.children().begin(), node.children().end());
        const auto more = added.find(&node);
        if (more != added.end()) children.insert(children.end(), more->second.begin(), more->second.end());
        for (const Node* child : children) {
            const std::size_t below = ways.positionOf(*child);
            ways.below[at].push_back(below);
            ways.above[below].push_back(at);
        }
    }
    return ways;
}

/// Marks what no way comes to, and then what no way comes to from the rest, and so on.
/// @param to  where ways lead from each place; `from` is the reverse
void peel(const std::vector<std::vector<std::size_t>>& to, const std::vector<std::vector<std::size_t>>& from,
          std::vector<bool>& gone) {
    std::vector<std::size_t> left(to.size());
    std::vector<std::size_t> ahead;
    for (std::size_t at = 0; at < to.size(); ++at) {
        left[at] = static_cast<std::size_t>(
            std::count_if(from[at].begin(), from[at].end(), [&](std::size_t other) { return !gone[other]; }));
        if (left[at] == 0 && !gone[at]) ahead.push_back(at);
    }
    while (!ahead.empty()) {
        const std::size_t at = ahead.back();
        ahead.pop_back();
        gone[at] = true;
        for (const std::size_t next : to[at]) {
            if (!gone[next] && --left[next] == 0) ahead.push_back(next);
        }
    }
}

}  // namespace

void PendingInstances::add(SavedInstance instance) {
    pairs_.emplace(instance.node.get(), instance.parent.get());
    parents_[instance.node.get()].push_back(instance.parent.get());
    instances_.push_back(std::move(instance));
}

const std::vector<graph::Node*>& PendingInstances::parentsOf(const graph::Node& node) const {
    static const std::vector<graph::Node*> none;
    const auto found = parents_.find(&node);
    return found != parents_.end() ? found->second : none;
}

std::vector<SavedInstance> PendingInstances::take(std::set<std::uint32_t>& circles) {
    std::vector<SavedInstance> instances = std::move(instances_);
    *this = PendingInstances();
    const Ways ways = waysBelow(instances);
    // What is left has a way down to itself, or is between two such nodes.
    std::vector<bool> gone(ways.nodes.size());
    peel(ways.below, ways.above, gone);
    peel(ways.above, ways.below, gone);
    const auto isLeft = [&](const graph::NodeRef& node) {
        const auto found = ways.positions.find(node.get());
        return found != ways.positions.end() && !gone[found->second];
    };
    for (const SavedInstance& instance : instances) {
        if (isLeft(instance.node) && isLeft(instance.parent)) circles.insert(instance.statement);
    }
    instances.erase(std::remove_if(instances.begin(), instances.end(),
                                   [&](const auto& at) { return circles.count(at.statement) != 0; }),
                    instances.end());
    return instances;
}

}  // namespace host::scene
