#include "graph/pathNames.h"

#include <algorithm>

namespace host::graph {

const std::string& PathNames::of(const Node& node) {
    const bool isNextTo = last_ != nullptr && last_->type().isDag() && node.type().isDag() && &node != last_;
    if (kind_ == Kind::Full) {
        if (!isNextTo || !extendFull(node)) name_ = graph_.fullPath(node);
    } else {
        if (!isNextTo || !extendUnique(node)) name_ = graph_.uniqueName(node);
    }
    last_ = &node;
    return name_;
}

bool PathNames::extendFull(const Node& node) {
    if (node.parent() == last_) {
        name_ += '|';
        name_ += node.name();
        return true;
    }
    const std::size_t above = name_.size() - last_->name().size();
    if (node.parent() == last_->parent()) {
        name_.replace(above, std::string::npos, node.name());
        return true;
    }
    if (last_->parent() != &node) return false;
    name_.resize(above - 1);
    return true;
}

/// A child's name starts with its parent's name if every namesake of the parent has a child of the child's
/// name: then the same nodes must be distinguished from the parent upwards.
bool PathNames::extendUnique(const Node& node) {
    if (node.parent() != last_) return false;
    const auto namesakes = graph_.nodesNamed(node.name());
    if (namesakes.size() == 1) return false;
    // What is below several parents has several rivals for its name.
    if (std::any_of(namesakes.begin(), namesakes.end(),
                    [](const NodeRef& other) { return !other->otherParents().empty(); }))
        return false;
    const auto below = std::count_if(namesakes.begin(), namesakes.end(), [&](const NodeRef& other) {
        return other.get() != &node && other->parent() != nullptr && other->parent()->name() == last_->name();
    });
    if (static_cast<std::size_t>(below) + 1 != graph_.nodesNamed(last_->name()).size()) return false;
    name_ += '|';
    name_ += node.name();
    return true;
}

}  // namespace host::graph
