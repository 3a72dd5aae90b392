#include "commands/driverSearch.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "nodes/plugs.h"
#include "scene/fileTypes.h"

namespace host::commands {

namespace {

std::string lockedProblem(const graph::Graph& graph, const graph::Plug& plug) {
    return "delete: The attribute '" + graph.plugName(plug) + "' is locked.";
}

/// Whether a node stands between a driver and what it drives.
bool isBetween(const graph::Node& node) {
    return node.isA("unitConversion") || node.isA("blendWeighted") || node.isA("pairBlend");
}

}  // namespace

DriverSearch::DriverSearch(const graph::Graph& graph, const ParsedArguments& arguments)
    : graph_(graph),
      attributes_(texts(arguments, "attribute")),
      hasControlPoints_(arguments.boolean("controlPoints")) {}

bool DriverSearch::isWanted(const graph::Attribute& attribute) const {
    const std::string& root = attribute.path().front()->longName();
    if (!hasControlPoints_ && (root == "pnts" || root == "controlPoints")) return false;
    if (attributes_.empty()) return true;
    for (const graph::Attribute* part : attribute.path()) {
        if (std::find(attributes_.begin(), attributes_.end(), part->longName()) != attributes_.end() ||
            std::find(attributes_.begin(), attributes_.end(), part->shortName()) != attributes_.end())
            return true;
    }
    return false;
}

std::vector<graph::NodeRef> DriverSearch::driversOf(const std::vector<graph::NodeRef>& nodes,
                                                    std::string_view type) const {
    std::vector<graph::NodeRef> drivers;
    std::unordered_set<const graph::Node*> seen;
    std::vector<graph::NodeRef> ahead;
    const auto meet = [&](const graph::NodeRef& node) {
        if (node->isA(type) && seen.insert(node.get()).second) drivers.push_back(node);
        if (isBetween(*node) && seen.insert(node.get()).second) ahead.push_back(node);
    };
    for (const graph::NodeRef& node : nodes) {
        if (node->isA(type) && seen.insert(node.get()).second) drivers.push_back(node);
        for (const graph::Connection& connection : graph_.connections(*node)) {
            if (connection.destination.node() == node && isWanted(connection.destination.attribute()))
                meet(connection.source.node());
        }
    }
    while (!ahead.empty()) {
        const graph::NodeRef node = ahead.back();
        ahead.pop_back();
        for (const graph::Connection& connection : graph_.connections(*node)) {
            if (connection.destination.node() == node) meet(connection.source.node());
        }
    }
    return drivers;
}

Found<std::vector<graph::NodeRef>> withConversions(const graph::Graph& graph,
                                                   std::vector<graph::NodeRef> drivers) {
    for (std::size_t k = 0; k < drivers.size(); ++k) {
        const graph::NodeRef node = drivers[k];
        for (const graph::Connection& connection : graph.connections(*node)) {
            const graph::Plug& driven = connection.destination;
            if (connection.source.node() != node) continue;
            if (isLocked(driven)) return {{}, lockedProblem(graph, driven)};
            if (driven.node()->isA("unitConversion") && driven.attribute().longName() == "input")
                drivers.push_back(driven.node());
        }
    }
    return {std::move(drivers), {}};
}

bool isStaticCurve(graph::Graph& graph, const graph::NodeRef& curve) {
    const graph::Plug keys = curve->plug("keyTimeValue");
    std::vector<double> values;
    for (const int index : graph.elements(keys))
        values.push_back(graph.number(nodes::childPlug(keys.element(index), "keyValue")));
    if (std::adjacent_find(values.begin(), values.end(), std::not_equal_to<>()) != values.end()) return false;
    // Tangents that are not stored are flat between equal values.
    for (const char* side : {"keyTanInY", "keyTanOutY"}) {
        const graph::Plug slopes = curve->plug(side);
        for (const int index : graph.elements(slopes)) {
            if (graph.number(slopes.element(index)) != 0.0) return false;
        }
    }
    return true;
}

CommandResult deleteInputs(graph::Graph& graph, const std::vector<graph::SelectionItem>& items) {
    std::vector<graph::NodeRef> ahead;
    for (const graph::SelectionItem& item : items) {
        if (!item.plug)
            return CommandResult::failure("delete: -inputConnectionsAndNodes needs names of attributes.");
        const graph::Plug source = graph.source(*item.plug);
        if (!source) continue;
        if (isLocked(*item.plug)) return CommandResult::failure(lockedProblem(graph, *item.plug));
        graph.disconnect(*item.plug);
        ahead.push_back(source.node());
    }
    while (!ahead.empty()) {
        const graph::NodeRef node = ahead.back();
        ahead.pop_back();
        if (!node->isAlive() || node->type().isDag() || scene::isDefaultNode(*node) || node->isLocked() ||
            !node->outgoing().empty())
            continue;
        for (const graph::Connection& connection : graph.connections(*node))
            ahead.push_back(connection.source.node());
        graph.deleteNodes({node});
    }
    return CommandResult::success();
}

}  // namespace host::commands
