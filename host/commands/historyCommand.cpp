// The command listHistory.

#include <algorithm>
#include <deque>
#include <unordered_set>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "nodes/meshNode.h"

namespace host::commands {

namespace {

struct HistoryRequest {
    bool isFuture = false;
    bool isBreadthFirst = false;
    bool prunesDag = false;
    bool takesAll = false;
    int levels = 0;  // 0 for all
};

struct Reached {
    graph::Node* node = nullptr;
    int level = 0;
};

/// The history of a transform is that of its shapes.
void addStarts(const graph::Graph& graph, const graph::NodeRef& node, std::deque<Reached>& starts) {
    std::vector<graph::Node*> shapes;
    if (!node->isA("shape")) {
        for (graph::Node* child : node->children()) {
            if (child->isA("shape") && !nodes::isIntermediate(graph, *child)) shapes.push_back(child);
        }
    }
    if (shapes.empty()) shapes.push_back(node.get());
    for (graph::Node* shape : shapes)
        starts.push_back({shape, 0});
}

/// What feeds a node, or what it feeds, in the order of its attributes. A transform is no history of what is
/// computed from it: what moves it is left out, unless the call asks for all connections.
std::vector<graph::Node*> neighbours(const graph::Node& node, const HistoryRequest& request) {
    std::vector<graph::Node*> found;
    if (!request.takesAll && node.type().isDag() && !node.isA("shape")) return found;
    const auto add = [&](const graph::PlugKey& key, graph::Node* other) {
        const bool isData = key.attribute->kind() != graph::ValueKind::Message;
        const bool isSet = other->isA("objectSet") && request.isFuture;
        if (request.takesAll || (isData && !isSet)) found.push_back(other);
    };
    if (!request.isFuture) {
        for (const auto& [key, link] : node.incoming())
            add(key, link.node);
    } else {
        for (const auto& [key, links] : node.outgoing()) {
            for (const graph::Link& link : links)
                add(key, link.node);
        }
    }
    return found;
}

std::vector<std::string> history(const graph::Graph& graph, std::deque<Reached> ahead,
                                 const HistoryRequest& request) {
    std::vector<std::string> names;
    std::unordered_set<const graph::Node*> done;
    while (!ahead.empty()) {
        const Reached at = ahead.front();
        ahead.pop_front();
        if (!done.insert(at.node).second) continue;
        const bool isPruned = request.prunesDag && at.node->type().isDag();
        if (!isPruned) names.push_back(graph.uniqueName(*at.node));
        if ((isPruned && at.level > 0) || (request.levels > 0 && at.level >= request.levels)) continue;
        std::vector<Reached> next;
        for (graph::Node* other : neighbours(*at.node, request))
            next.push_back({other, at.level + 1});
        ahead.insert(request.isBreadthFirst ? ahead.end() : ahead.begin(), next.begin(), next.end());
    }
    return names;
}

CommandResult listHistory(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    if (items.value.empty()) return CommandResult::failure("listHistory: No object was given or selected.");
    HistoryRequest request;
    request.isFuture = arguments.boolean("future") || arguments.isSet("allFuture");
    request.isBreadthFirst = arguments.isSet("breadthFirst");
    request.prunesDag = arguments.boolean("pruneDagObjects");
    request.takesAll = arguments.isSet("allConnections") || arguments.isSet("allFuture");
    request.levels = arguments.integer("levels");
    std::deque<Reached> starts;
    for (const graph::NodeRef& node : nodesOf(items.value))
        addStarts(context.graph, node, starts);
    return CommandResult::success(history(context.graph, std::move(starts), request));
}

}  // namespace

void registerHistoryCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("f", "future", {kSwitch}).flag("af", "allFuture").flag("ac", "allConnections");
    syntax.flag("bf", "breadthFirst")
        .flag("pdo", "pruneDagObjects", {kSwitch})
        .flag("lv", "levels", {kWhole});
    syntax.objects(ObjectKind::Strings);
    registry.add(
        "listHistory", syntax, listHistory,
        "ag allGraphs fi fastIteration gl groupLevels ha historyAttr il interestLevel lf leaf q query");
}

}  // namespace host::commands
