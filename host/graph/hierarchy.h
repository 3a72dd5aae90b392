#pragma once

#include <vector>

#include "graph/node.h"

namespace host::graph {

/// Calls `visit(Node&)` for a node and everything below it: parents before their children, children in their
/// order. Hierarchies may be deeper than the machine's stack, so nothing recurses. `visit` may not change
/// parents or children.
template <typename Visit>
void visitHierarchy(Node& root, Visit&& visit) {
    std::vector<Node*> ahead{&root};
    while (!ahead.empty()) {
        Node& node = *ahead.back();
        ahead.pop_back();
        visit(node);
        ahead.insert(ahead.end(), node.children().rbegin(), node.children().rend());
    }
}

}  // namespace host::graph
