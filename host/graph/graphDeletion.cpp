// Deleting nodes of the graph: what goes with them, and what stays in place of their connections.

#include <algorithm>
#include <set>
#include <unordered_map>

#include "graph/graph.h"

namespace host::graph {

namespace {

bool servesOthers(const Node& node) {
    const auto& isService = node.type().behaviour().isService;
    return node.type().diesWithLastOutput() || (isService && isService(node));
}

using NodeSet = std::set<const Node*>;

/// The nodes to delete.
struct Doomed {
    std::vector<Node*> nodes{};
    NodeSet gone{};  // the same
    std::unordered_map<const Node*, std::size_t> lostParents{};

    /// Adds a node, and what is below it and has no parent left that stays.
    void add(Node& node) {
        std::vector<Node*> ahead{&node};
        while (!ahead.empty()) {
            Node& next = *ahead.back();
            ahead.pop_back();
            if (!next.isAlive() || !gone.insert(&next).second) continue;
            nodes.push_back(&next);
            for (Node* child : next.children()) {
                const std::size_t others = child->otherParents().size();
                if (others == 0 || ++lostParents[child] > others) ahead.push_back(child);
            }
        }
    }
};

bool hasSurvivor(const std::vector<Link>& links, const NodeSet& gone) {
    return std::any_of(links.begin(), links.end(),
                       [&](const Link& link) { return gone.count(link.node) == 0; });
}

/// Whether something that the node computes goes to a node that stays. Messages and plain values do not keep
/// a service node.
bool feedsSurvivor(const Node& node, const NodeSet& gone) {
    const auto& outgoing = node.outgoing();
    return std::any_of(outgoing.begin(), outgoing.end(), [&](const auto& entry) {
        return entry.first.attribute->isOutput() && hasSurvivor(entry.second, gone);
    });
}

/// Whether a node is of a type that is deleted with the nodes that feed this attribute, and all of these are
/// deleted.
bool losesAllSources(const Node& node, const Attribute& attribute, const NodeSet& gone) {
    const auto& diesWithSources = node.type().behaviour().diesWithSources;
    if (!diesWithSources || !diesWithSources(attribute)) return false;
    const auto& incoming = node.incoming();
    return std::all_of(incoming.begin(), incoming.end(), [&](const auto& entry) {
        return !diesWithSources(*entry.first.attribute) || gone.count(entry.second.node) != 0;
    });
}

/// Whether a node only prepares the input of the next node, and is deleted with it: a service, by its own
/// state, that passes its input on.
bool isHelper(const Node& node) {
    const NodeBehaviour& behaviour = node.type().behaviour();
    return behaviour.passThrough && behaviour.isService && behaviour.isService(node);
}

/// The plug that replaces an output when its node is deleted: the source of the input that the output passes
/// through. If that node is deleted too, the one before it. Empty if there is none.
Plug passedSource(const Graph& graph, const Plug& output, const NodeSet& gone) {
    Plug at = output;
    std::vector<Plug> passed;
    const auto goes = [&](const Node& node) {
        return gone.count(&node) != 0 || (isHelper(node) && !feedsSurvivor(node, gone));
    };
    while (at && goes(*at.node())) {
        // A chain that leads back to itself has no source.
        if (std::find(passed.begin(), passed.end(), at) != passed.end()) return {};
        passed.push_back(at);
        const auto& passThrough = at.node()->type().behaviour().passThrough;
        const Plug input = passThrough ? passThrough(at) : Plug();
        at = input ? graph.source(input) : Plug();
    }
    return at;
}

/// Nodes that stay and get their values through deleted nodes that pass them on.
NodeSet neededBySurvivors(const Graph& graph, const std::vector<Node*>& doomed, const NodeSet& gone) {
    NodeSet needed;
    for (Node* node : doomed) {
        for (const auto& [key, links] : node->outgoing()) {
            if (!hasSurvivor(links, gone)) continue;
            if (const Plug source = passedSource(graph, Plug(node->ref(), key), gone))
                needed.insert(source.node().get());
        }
    }
    return needed;
}

/// How many nodes are above a node through first parents. Together, those of a chain cost one walk.
int depthOf(const Node& node, std::unordered_map<const Node*, int>& depths) {
    std::vector<const Node*> unknown;
    const Node* up = &node;
    for (; up != nullptr && depths.count(up) == 0; up = up->parent())
        unknown.push_back(up);
    int depth = up != nullptr ? depths[up] : -1;
    for (; !unknown.empty(); unknown.pop_back())
        depths[unknown.back()] = ++depth;
    return depth;
}

}  // namespace

std::vector<NodeRef> Graph::dependents(const std::vector<NodeRef>& nodes) const {
    Doomed doomed;
    const NodeSet& gone = doomed.gone;
    for (const NodeRef& node : nodes)
        doomed.add(*node);
    for (bool grows = true; grows;) {
        grows = false;
        const NodeSet needed = neededBySurvivors(*this, doomed.nodes, gone);
        const std::vector<Node*> current = doomed.nodes;
        for (Node* node : current) {
            for (const auto& entry : node->incoming()) {
                Node* source = entry.second.node;
                if (gone.count(source) != 0 || !servesOthers(*source)) continue;
                if (needed.count(source) != 0 || feedsSurvivor(*source, gone)) continue;
                doomed.add(*source);
                grows = true;
            }
            for (const auto& entry : node->outgoing()) {
                for (const Link& link : entry.second) {
                    if (gone.count(link.node) != 0) continue;
                    if (!losesAllSources(*link.node, *link.key.attribute, gone)) continue;
                    doomed.add(*link.node);
                    grows = true;
                }
            }
        }
    }
    std::sort(doomed.nodes.begin(), doomed.nodes.end(),
              [](const Node* a, const Node* b) { return a->id() < b->id(); });
    std::vector<NodeRef> result;
    result.reserve(doomed.nodes.size());
    for (Node* node : doomed.nodes)
        result.push_back(node->ref());
    return result;
}

/// Leaves of the nodes to delete a tree of their first parents, with nothing below that stays.
void Graph::leaveOtherParents(const std::vector<NodeRef>& doomed, const std::set<const Node*>& gone) {
    if (!hasInstances()) return;
    for (const NodeRef& node : doomed) {
        const std::vector<Node*> children = node->children_;
        for (Node* child : children) {
            if (gone.count(child) == 0) removeInstance(*child, node.get());
        }
    }
    for (const NodeRef& node : doomed) {
        while (!node->otherParents_.empty())
            removeInstance(*node, node->otherParents_.back());
    }
}

void Graph::deleteNodes(const std::vector<NodeRef>& nodes) {
    const std::vector<NodeRef> doomed = dependents(nodes);
    NodeSet gone;
    Selection remaining = content_->selection;
    for (const NodeRef& node : doomed) {
        gone.insert(node.get());
        remaining.removeNode(*node);
    }
    if (remaining.items().size() != content_->selection.items().size()) select(std::move(remaining));
    // Survivors first: the values that they keep are evaluated while the deleted nodes are still connected.
    for (const NodeRef& node : doomed) {
        for (const Connection& connection : connections(*node)) {
            if (gone.count(connection.destination.node().get()) != 0) continue;
            if (const Plug source = passedSource(*this, connection.source, gone)) {
                connect(source, connection.destination);
            } else {
                disconnect(connection.destination);
            }
        }
    }
    for (const NodeRef& node : doomed) {
        for (const Connection& connection : connections(*node)) {
            breakLink(connection.source, connection.destination);
            if (gone.count(connection.source.node().get()) == 0) dropHollowElements(connection.source);
        }
    }
    leaveOtherParents(doomed, gone);
    // Children first, so that a node has none when it leaves.
    std::vector<std::pair<int, NodeRef>> byDepth;
    byDepth.reserve(doomed.size());
    std::unordered_map<const Node*, int> depths;
    for (const NodeRef& node : doomed)
        byDepth.emplace_back(depthOf(*node, depths), node);
    std::stable_sort(byDepth.begin(), byDepth.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    for (const auto& entry : byDepth) {
        const NodeRef node = entry.second;
        const NodeRef parent = node->parent() != nullptr ? node->parent()->ref() : nullptr;
        int position = -1;
        if (node->type().isDag()) {
            const auto& list = siblings(parent.get());
            position = static_cast<int>(std::find(list.begin(), list.end(), node.get()) - list.begin());
        }
        leaveScene(*node);
        record([node, parent, position](Graph& graph) { graph.enterAgain(node, parent, position); },
               [node](Graph& graph) { graph.leaveAgain(*node); });
    }
}

}  // namespace host::graph
