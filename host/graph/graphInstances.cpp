// Nodes of the graph that have several parents.

#include <algorithm>
#include <utility>

#include "graph/graph.h"
#include "graph/hierarchy.h"
#include "graph/instances.h"
#include "graph/selectedPlaces.h"

namespace host::graph {

SelectedPlaces::SelectedPlaces(Graph& graph) : graph_(graph) {
    for (const SelectionItem& item : graph.selection().items()) {
        std::vector<Node*>& chain = chains_.emplace_back();
        if (!item.node->type().isDag()) continue;
        for (const Instance& place : upwards(item))
            chain.push_back(place.node);
    }
}

bool SelectedPlaces::isThere(const std::vector<Node*>& chain) const {
    for (std::size_t k = 0; k < chain.size(); ++k) {
        if (!graph_.hasParent(*chain[k], k + 1 < chain.size() ? chain[k + 1] : nullptr)) return false;
    }
    return true;
}

void SelectedPlaces::follow(const Node* moved, Node* parent) {
    Selection now;
    bool isSame = true;
    for (std::size_t k = 0; k < chains_.size(); ++k) {
        SelectionItem item = graph_.selection().items()[k];
        std::vector<Node*>& chain = chains_[k];
        const auto at = std::find(chain.begin(), chain.end(), moved);
        if (at != chain.end() && !isThere(chain)) {
            chain.erase(at + 1, chain.end());
            for (Node* above = parent; above != nullptr; above = above->parent())
                chain.push_back(above);
        }
        const std::size_t before = item.path;
        if (!chain.empty() && isThere(chain)) {
            item.path = InstanceNumbers().at(chain).number;
        } else if (!chain.empty()) {
            isSame = false;
            continue;
        }
        isSame = isSame && item.path == before;
        now.add(item);
    }
    if (!isSame) graph_.select(std::move(now));
}

bool Graph::hasParent(const Node& node, const Node* parent) const {
    if (node.parent_ == parent) return true;
    return !node.otherParents_.empty() && content_->instances.count({&node, parent}) != 0;
}

void Graph::attach(Node& node, Node* parent, const InstancePlace& place) {
    auto& list = siblings(parent);
    const bool isInside = place.position >= 0 && place.position < static_cast<int>(list.size());
    list.insert(isInside ? list.begin() + place.position : list.end(), &node);
    auto& others = node.otherParents_;
    Node* other = parent;
    int rank = place.rank;
    if (parent == nullptr || (rank == 0 && node.parent_ != nullptr)) {
        other = std::exchange(node.parent_, parent);
        rank = 1;
    }
    others.insert(
        rank > 0 && rank <= static_cast<int>(others.size()) ? others.begin() + rank - 1 : others.end(),
        other);
    content_->instances.emplace(&node, other);
    ++nameVersion_;
    ++changes_;
    markDirty(node);
}

Graph::InstancePlace Graph::detach(Node& node, Node* parent) {
    // Whoever takes away many begins with the last one.
    auto& list = siblings(parent);
    const auto below = std::find(list.rbegin(), list.rend(), &node).base() - 1;
    InstancePlace place{0, static_cast<int>(below - list.begin())};
    list.erase(below);
    auto& others = node.otherParents_;
    auto other = others.begin();
    if (node.parent_ == parent) {
        node.parent_ = *other;
    } else {
        other = std::find(others.rbegin(), others.rend(), parent).base() - 1;
        place.rank = static_cast<int>(other - others.begin()) + 1;
    }
    content_->instances.erase({&node, *other});
    others.erase(other);
    ++nameVersion_;
    ++changes_;
    markDirty(node);
    return place;
}

void Graph::attachAgain(const NodeRef& node, const NodeRef& parent, const InstancePlace& place) {
    if (!canStepOn(*node) || (parent != nullptr && !canStepOn(*parent))) return;
    const bool fits = !hasParent(*node, parent.get()) && (parent == nullptr || !isBelow(*parent, *node));
    if (fits) attach(*node, parent.get(), place);
}

void Graph::detachAgain(const NodeRef& node, const NodeRef& parent) {
    if (!canStepOn(*node)) return;
    if (!node->otherParents().empty() && hasParent(*node, parent.get())) detach(*node, parent.get());
}

void Graph::addInstance(Node& node, Node* parent) {
    SelectedPlaces selected(*this);
    const InstancePlace place{static_cast<int>(node.otherParents_.size()) + 1, -1};
    attach(node, parent, place);
    const NodeRef ref = node.ref();
    const NodeRef above = parent != nullptr ? parent->ref() : nullptr;
    record([ref, above](Graph& graph) { graph.detachAgain(ref, above); },
           [ref, above, place](Graph& graph) { graph.attachAgain(ref, above, place); });
    selected.follow();
    // One of the new siblings may have the same name.
    if (isNameTaken(node.name(), parent, true, &node)) rename(node, node.name());
}

void Graph::removeInstance(Node& node, Node* parent) {
    SelectedPlaces selected(*this);
    const InstancePlace place = detach(node, parent);
    const NodeRef ref = node.ref();
    const NodeRef above = parent != nullptr ? parent->ref() : nullptr;
    record([ref, above, place](Graph& graph) { graph.attachAgain(ref, above, place); },
           [ref, above](Graph& graph) { graph.detachAgain(ref, above); });
    selected.follow();
}

}  // namespace host::graph
