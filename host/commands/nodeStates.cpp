#include "commands/nodeStates.h"

#include <algorithm>

#include "graph/instances.h"
#include "nodes/defaultCameras.h"
#include "nodes/meshNode.h"
#include "scene/fileTypes.h"

namespace host::commands {

namespace {

constexpr double kTemplate = 1.0;  // overrideDisplayType

/// A number of a node, or what it is on nodes without that attribute.
double numberOr(graph::Graph& graph, const graph::Node& node, const char* name, double otherwise) {
    const graph::Plug plug = const_cast<graph::Node&>(node).plug(name);
    return plug ? graph.number(plug) : otherwise;
}

bool hides(graph::Graph& graph, const graph::Node& node) {
    if (numberOr(graph, node, "visibility", 1.0) == 0.0) return true;
    return numberOr(graph, node, "overrideEnabled", 0.0) != 0.0 &&
           numberOr(graph, node, "overrideVisibility", 1.0) == 0.0;
}

bool templates(graph::Graph& graph, const graph::Node& node) {
    if (numberOr(graph, node, "template", 0.0) != 0.0) return true;
    return numberOr(graph, node, "overrideEnabled", 0.0) != 0.0 &&
           numberOr(graph, node, "overrideDisplayType", 0.0) == kTemplate;
}

bool isInvisible(graph::Graph& graph, const graph::SelectionItem& item) {
    return item.node->type().isDag() && !isVisible(graph, item);
}

bool isTemplated(graph::Graph& graph, const graph::SelectionItem& item) {
    if (!item.node->type().isDag()) return false;
    const std::vector<graph::Instance> places = graph::upwards(item);
    return std::any_of(places.begin(), places.end(),
                       [&](const graph::Instance& place) { return templates(graph, *place.node); });
}

bool isUntemplated(graph::Graph& graph, const graph::SelectionItem& item) {
    return item.node->type().isDag() && !isTemplated(graph, item);
}

bool isGhosting(graph::Graph& graph, const graph::SelectionItem& item) {
    return numberOr(graph, *item.node, "ghosting", 0.0) != 0.0;
}

bool isLockedNode(graph::Graph&, const graph::SelectionItem& item) {
    return item.node->isLocked();
}

bool isDefault(graph::Graph&, const graph::SelectionItem& item) {
    return scene::isDefaultNode(*item.node);
}

bool isUndeletable(graph::Graph&, const graph::SelectionItem& item) {
    return scene::isDefaultNode(*item.node) || nodes::isDefaultCamera(*item.node) || item.node->isLocked();
}

bool isLeaf(graph::Graph&, const graph::SelectionItem& item) {
    return item.node->type().isDag() && item.node->children().empty();
}

/// No node is live or highlighted, which happens in a view only, and references are not loaded.
bool never(graph::Graph&, const graph::SelectionItem&) {
    return false;
}

}  // namespace

bool isVisible(graph::Graph& graph, const graph::SelectionItem& item) {
    if (!item.node->type().isDag() || nodes::isIntermediate(graph, *item.node)) return false;
    const std::vector<graph::Instance> places = graph::upwards(item);
    return std::none_of(places.begin(), places.end(),
                        [&](const graph::Instance& place) { return hides(graph, *place.node); });
}

const NodeState kNodeStates[kNodeStateCount] = {{"v", "visible", isVisible},
                                                {"iv", "invisible", isInvisible},
                                                {"tm", "templated", isTemplated},
                                                {"ut", "untemplated", isUntemplated},
                                                {"gh", "ghost", isGhosting},
                                                {"ln", "lockedNodes", isLockedNode},
                                                {"dn", "defaultNodes", isDefault},
                                                {"ro", "readOnly", isDefault},
                                                {"ud", "undeletable", isUndeletable},
                                                {"lf", "leaf", isLeaf},
                                                {"rn", "referencedNodes", never},
                                                {"lv", "live", never},
                                                {"hl", "hilite", never},
                                                {"psh", "preSelectHilite", never}};

}  // namespace host::commands
