#include <algorithm>

#include "commands/commandSupport.h"
#include "commands/commands.h"

namespace host::commands {

namespace {

struct Request {
    bool sources = true;
    bool destinations = true;
    bool plugs = false;
    bool pairs = false;
    bool shapes = false;
    bool fullNames = false;
    bool exactType = false;
    std::string type;
};

Request requestOf(const ParsedArguments& arguments) {
    Request request;
    request.sources = arguments.boolean("source", true);
    request.destinations = arguments.boolean("destination", true);
    request.plugs = arguments.boolean("plugs");
    request.pairs = arguments.boolean("connections");
    request.shapes = arguments.boolean("shapes");
    request.fullNames = arguments.boolean("fullNodeName");
    request.exactType = arguments.boolean("exactType");
    request.type = arguments.text("type");
    return request;
}

/// Connections of a node, or of a plug with everything below it. A transform does not include its shapes.
std::vector<graph::Connection> connectionsOf(const graph::Graph& graph, const graph::SelectionItem& item) {
    return item.plug ? graph.connectionsBelow(*item.plug) : graph.connections(*item.node);
}

std::string otherName(const graph::Graph& graph, const graph::Plug& other, const Request& request) {
    const graph::Node* node = other.node().get();
    const auto nameOf = [&](const graph::Node& named) {
        return request.fullNames ? graph.fullPath(named) : graph.uniqueName(named);
    };
    if (request.plugs) return nameOf(*node) + '.' + other.attributePath();
    // A shape is listed by its transform, unless the call asks for shapes.
    if (!request.shapes && node->isA("shape") && node->parent() != nullptr) node = node->parent();
    return nameOf(*node);
}

void appendOther(const graph::Graph& graph, const graph::Plug& own, const graph::Plug& other,
                 const Request& request, std::vector<std::string>& names) {
    const graph::Node& node = *other.node();
    if (!request.type.empty() &&
        (request.exactType ? node.type().name() != request.type : !node.isA(request.type)))
        return;
    if (request.pairs) names.push_back(graph.plugName(own));
    names.push_back(otherName(graph, other, request));
}

CommandResult listConnections(CommandContext& context, const ParsedArguments& arguments) {
    const graph::Graph& graph = context.graph;
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    const Request request = requestOf(arguments);
    std::vector<std::string> names;
    for (const graph::SelectionItem& item : items.value) {
        for (const graph::Connection& connection : connectionsOf(graph, item)) {
            const bool isIncoming = connection.destination.node() == item.node;
            const bool isOutgoing = connection.source.node() == item.node;
            if (isIncoming && request.sources)
                appendOther(graph, connection.destination, connection.source, request, names);
            if (isOutgoing && request.destinations)
                appendOther(graph, connection.source, connection.destination, request, names);
        }
    }
    return CommandResult::success(std::move(names));
}

}  // namespace

void registerListConnectionsCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("s", "source", {kSwitch}).flag("d", "destination", {kSwitch}).flag("p", "plugs", {kSwitch});
    syntax.flag("c", "connections", {kSwitch}).flag("t", "type", {kText}).flag("et", "exactType", {kSwitch});
    syntax.flag("sh", "shapes", {kSwitch}).flag("fnn", "fullNodeName", {kSwitch});
    // There are no conversion nodes to skip.
    syntax.flag("scn", "skipConversionNodes", {kSwitch}).objects(ObjectKind::Strings);
    registry.add("listConnections", syntax, listConnections);
}

}  // namespace host::commands
