#include "scene/exportScope.h"

#include "nodes/defaultCameras.h"
#include "scene/fileTypes.h"

namespace host::scene {

namespace {

class Scope {
  public:
    void add(const graph::Node* node) {
        if (node == nullptr || isDefaultNode(*node) || nodes::isDefaultCamera(*node)) return;
        if (found_.insert(node).second) ahead_.push_back(node);
    }

    void addBelow(const graph::Node& node) {
        std::vector<const graph::Node*> ahead{&node};
        while (!ahead.empty()) {
            const graph::Node* at = ahead.back();
            ahead.pop_back();
            add(at);
            ahead.insert(ahead.end(), at->children().begin(), at->children().end());
        }
    }

    std::set<const graph::Node*> complete() {
        while (!ahead_.empty()) {
            const graph::Node& node = *ahead_.back();
            ahead_.pop_back();
            add(node.parent());
            for (const auto& entry : node.incoming())
                add(entry.second.node);
            addSets(node);
        }
        return std::move(found_);
    }

  private:
    /// A set is fed by its members, so it would not be found from them.
    void addSets(const graph::Node& node) {
        for (const auto& [key, links] : node.outgoing()) {
            for (const auto& link : links) {
                const bool isGroup = link.node->isA("shadingEngine") && node.isA("shape");
                const bool isUsed =
                    link.node->isA("objectSet") && link.key.attribute->path().front()->longName() == "usedBy";
                if (isGroup || isUsed) add(link.node);
            }
        }
    }

    std::set<const graph::Node*> found_;
    std::vector<const graph::Node*> ahead_;
};

}  // namespace

std::set<const graph::Node*> exportScope(const std::vector<graph::NodeRef>& nodes) {
    Scope scope;
    for (const graph::NodeRef& node : nodes)
        scope.addBelow(*node);
    return scope.complete();
}

}  // namespace host::scene
