#include "graph/instances.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

#include "graph/names.h"

namespace host::graph {

namespace {

using PathCounts = std::unordered_map<const Node*, std::size_t>;

/// How many paths lead to a parent; one to the top level.
std::size_t countOf(const PathCounts& counts, const Node* parent) {
    if (parent == nullptr) return 1;
    const auto found = counts.find(parent);
    return found != counts.end() ? found->second : 0;
}

/// Adds how many paths a node and those above it have.
void addPathCounts(const Node& node, PathCounts& counts) {
    std::vector<const Node*> ahead{&node};
    while (!ahead.empty()) {
        const Node& at = *ahead.back();
        const auto [entry, isNew] = counts.emplace(&at, 0);
        if (isNew) {
            visitParents(at, [&](const Node* parent) {
                if (countOf(counts, parent) == 0) ahead.push_back(parent);
            });
            continue;
        }
        ahead.pop_back();
        if (entry->second != 0) continue;
        std::size_t sum = 0;
        visitParents(
            at, [&](const Node* parent) { sum = std::min(sum + countOf(counts, parent), kMaxPaths + 1); });
        entry->second = sum;
    }
}

/// The path from the top down to the first of these nodes.
template <typename Items, typename NameOf>
std::string joined(const Items& upwards, NameOf&& nameOf) {
    std::string path;
    for (auto at = upwards.rbegin(); at != upwards.rend(); ++at)
        path.append(1, '|').append(nameOf(*at));
    return path;
}

/// The length of the end that two paths have in common, in whole names with the bars before them.
std::size_t commonEnd(const std::string& a, const std::string& b) {
    const std::size_t limit = std::min(a.size(), b.size());
    std::size_t whole = 0;
    for (std::size_t length = 1; length <= limit && a[a.size() - length] == b[b.size() - length]; ++length) {
        if (a[a.size() - length] == '|') whole = length;
    }
    return whole;
}

/// The end of a path with one more name than `length` letters have.
std::size_t nameMore(const std::string& path, std::size_t length) {
    if (length >= path.size()) return path.size();
    return path.size() - path.rfind('|', path.size() - length - 1);
}

}  // namespace

bool isInstanced(const Node& node) {
    // What is below an instance through any parent has one above it through first parents.
    for (const Node* at = &node; at != nullptr; at = at->parent()) {
        if (!at->otherParents().empty()) return true;
    }
    return false;
}

std::size_t pathCount(const Node& node) {
    if (!isInstanced(node)) return 1;
    PathCounts counts;
    addPathCounts(node, counts);
    return counts.at(&node);
}

std::vector<std::string> paths(const Node& node) {
    struct Step {
        const Node* node;
        std::size_t next;  // of the parents to follow
    };
    std::vector<std::string> result;
    std::vector<Step> chain{{&node, 0}};
    while (!chain.empty() && result.size() < kMaxPaths) {
        const Node& at = *chain.back().node;
        const std::size_t next = chain.back().next++;
        if (next > at.otherParents().size()) {
            chain.pop_back();
            continue;
        }
        const Node* parent = next == 0 ? at.parent() : at.otherParents()[next - 1];
        if (parent != nullptr) {
            chain.push_back({parent, 0});
        } else {
            result.push_back(joined(chain, [](const Step& step) { return step.node->name(); }));
        }
    }
    return result;
}

std::vector<std::string> shortPaths(const Graph& graph, const Node& node) {
    const std::vector<std::string> all = paths(node);
    if (all.size() == 1) return {graph.uniqueName(node)};
    // Of the paths in the order of their ends, neighbours have the longest ends in common.
    std::vector<std::size_t> order(all.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return std::lexicographical_compare(all[a].rbegin(), all[a].rend(), all[b].rbegin(), all[b].rend());
    });
    std::vector<std::size_t> common(all.size(), 0);
    for (std::size_t k = 1; k < order.size(); ++k) {
        const std::size_t shared = commonEnd(all[order[k - 1]], all[order[k]]);
        common[order[k - 1]] = std::max(common[order[k - 1]], shared);
        common[order[k]] = std::max(common[order[k]], shared);
    }
    std::vector<std::string> names;
    names.reserve(all.size());
    for (std::size_t k = 0; k < all.size(); ++k) {
        const std::string& path = all[k];
        std::size_t length = nameMore(path, common[k]);
        const auto isShared = [&] {
            return findNodes(graph, path.substr(path.size() - length + 1)).size() > 1;
        };
        while (length < path.size() && isShared())
            length = nameMore(path, length);
        // Only the bar in front tells a path from a longer one with the same end.
        const bool isWhole = length == path.size() && (common[k] == path.size() || isShared());
        names.push_back(isWhole ? path : path.substr(path.size() - length + 1));
    }
    return names;
}

std::vector<Instance> upwards(const Instance& instance) {
    return InstanceNumbers().upwards(instance);
}

std::string fullPath(const Instance& instance) {
    return InstanceNumbers().fullPath(instance);
}

std::vector<Instance> InstanceNumbers::upwards(const Instance& instance) {
    std::vector<Instance> chain;
    if (instance.number >= kMaxPaths) return chain;
    if (instance.number > 0) {
        addPathCounts(*instance.node, counts_);
        if (instance.number >= countOf(counts_, instance.node)) return chain;
    }
    for (Instance at = instance; at.node != nullptr;) {
        chain.push_back(at);
        Node* through = at.node->parent();
        for (std::size_t next = 0; at.number > 0 && at.number >= countOf(counts_, through); ++next) {
            at.number -= countOf(counts_, through);
            through = at.node->otherParents()[next];
        }
        at.node = through;
    }
    return chain;
}

std::string InstanceNumbers::fullPath(const Instance& instance) {
    return joined(upwards(instance), [](const Instance& at) { return at.node->name(); });
}

Instance childOf(const Instance& parent, Node& child) {
    return InstanceNumbers().childOf(parent, child);
}

std::vector<Instance> hierarchyBelow(const Instance& root) {
    InstanceNumbers numbers;
    std::vector<Instance> result;
    std::vector<Instance> ahead{root};
    std::unordered_set<const Node*> seen;  // those that can be reached again
    while (!ahead.empty()) {
        const Instance at = ahead.back();
        ahead.pop_back();
        if (!at.node->otherParents().empty() && !seen.insert(at.node).second) continue;
        result.push_back(at);
        const std::vector<Node*>& children = at.node->children();
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            ahead.push_back(numbers.childOf(at, **child));
    }
    return result;
}

Instance InstanceNumbers::childOf(const Instance& parent, Node& child) {
    if (child.otherParents().empty()) return {&child, parent.number};
    const auto [entry, isNew] = before_.try_emplace(&child);
    if (isNew) {
        addPathCounts(child, counts_);
        std::size_t sum = 0;
        visitParents(child, [&, &before = entry->second](const Node* other) {
            before.emplace(other, sum);
            sum += countOf(counts_, other);
        });
    }
    const auto found = entry->second.find(parent.node);
    return {&child, parent.number + (found != entry->second.end() ? found->second : 0)};
}

Instance InstanceNumbers::at(const std::vector<Node*>& chain) {
    Instance at{chain.back(), 0};
    for (std::size_t k = chain.size() - 1; k-- > 0;)
        at = childOf(at, *chain[k]);
    return at;
}

}  // namespace host::graph
