#pragma once

#include <unordered_set>
#include <vector>

#include "graph/node.h"

namespace host::graph {

/// Calls `visit(Node&)` for a node and everything below it: each node once, after one of its parents, and
/// children in their order. Hierarchies may be deeper than the machine's stack, so nothing recurses. `visit`
/// may not change parents or children.
template <typename Visit>
void visitHierarchy(Node& root, Visit&& visit) {
    std::vector<Node*> ahead{&root};
    std::unordered_set<const Node*> seen;  // those that can be reached again
    while (!ahead.empty()) {
        Node& node = *ahead.back();
        ahead.pop_back();
        if (!node.otherParents().empty() && !seen.insert(&node).second) continue;
        visit(node);
        ahead.insert(ahead.end(), node.children().rbegin(), node.children().rend());
    }
}

/// Calls `visit(Node*)` for each parent of a node, null for the top level, the first parent first.
template <typename Visit>
void visitParents(const Node& node, Visit&& visit) {
    visit(node.parent());
    for (Node* other : node.otherParents())
        visit(other);
}

/// Whether a condition holds for any node above this one, through whichever parents. Each node is asked once.
template <typename Condition>
bool anyAbove(const Node& node, Condition&& condition) {
    const Node* at = &node;
    for (; at->otherParents().empty(); at = at->parent()) {
        if (at->parent() == nullptr) return false;
        if (condition(*at->parent())) return true;
    }
    std::vector<const Node*> ahead{at};
    std::unordered_set<const Node*> seen;
    while (!ahead.empty()) {
        const Node& next = *ahead.back();
        ahead.pop_back();
        bool isFound = false;
        visitParents(next, [&](Node* parent) {
            if (isFound || parent == nullptr || !seen.insert(parent).second) return;
            isFound = condition(*parent);
            ahead.push_back(parent);
        });
        if (isFound) return true;
    }
    return false;
}

/// Whether a node is another one, or is below it through whichever parents.
inline bool isBelow(const Node& node, const Node& above) {
    return &node == &above || anyAbove(node, [&](const Node& at) { return &at == &above; });
}

}  // namespace host::graph
