// The commands connectAttr, disconnectAttr, isConnected and connectionInfo.

#include <optional>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/connectionRules.h"

namespace host::commands {

namespace {

struct Ends {
    graph::Plug source;
    graph::Plug destination;
};

/// Both ends, found by name. A name that matches nothing is an error with the texts of these commands.
Found<Ends> namedEnds(CommandContext& context, const ParsedArguments& arguments) {
    const std::vector<std::string> names = arguments.objectNames();
    const Found<graph::PlugMatch> source = findOnePlug(context.graph, names[0]);
    if (!source.ok()) return {{}, "The source attribute '" + names[0] + "' cannot be found."};
    const Found<graph::PlugMatch> destination = findOnePlug(context.graph, names[1]);
    if (!destination.ok()) return {{}, "The destination attribute '" + names[1] + "' cannot be found."};
    return {{atInstance(context.graph, source.value.plug, names[0]), destination.value.plug}, {}};
}

CommandResult connectAttr(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    Found<Ends> found = namedEnds(context, arguments);
    if (!found.ok()) return CommandResult::failure(found.error);
    Ends& ends = found.value;
    if (ends.destination.isArray() && arguments.isSet("nextAvailable"))
        ends.destination = ends.destination.element(graph.nextIndex(ends.destination));
    const std::string source = fullPlugName(graph, ends.source);
    const std::string destination = fullPlugName(graph, ends.destination);
    const std::string problem = connectionProblem(ends.source, ends.destination);
    if (!problem.empty())
        return CommandResult::failure("Connection not made: '" + source + "' -> '" + destination + "'.  " +
                                      problem);
    const graph::Plug feeding = graph.source(ends.destination);
    if (feeding == ends.source) {
        graph.messages().warning("'" + source + "' is already connected to '" + destination + "'.");
        return CommandResult::failureShown();
    }
    if (isLocked(ends.destination))
        return CommandResult::failure("Connection not made: '" + source + "' -> '" + destination +
                                      "'.  Destination is locked.");
    if (feeding && !arguments.isSet("force"))
        return CommandResult::failure("The destination attribute '" + destination +
                                      "' already has an incoming connection from '" +
                                      fullPlugName(graph, feeding) + "'.");
    graph.connect(ends.source, ends.destination);
    if (arguments.isSet("lock")) {
        graph::PlugState state = ends.destination.node()->state(ends.destination.key());
        state.isLocked = arguments.boolean("lock");
        graph.setState(ends.destination, state);
    }
    return CommandResult::success("Connected " + source + " to " + destination + '.');
}

/// The element of a multi that the source is connected to; an empty plug if there is none.
graph::Plug fedElement(const graph::Graph& graph, const Ends& ends) {
    for (const graph::Plug& fed : graph.destinations(ends.source)) {
        if (fed.isElement() && fed.array() == ends.destination) return fed;
    }
    return {};
}

CommandResult disconnectAttr(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    Found<Ends> found = namedEnds(context, arguments);
    if (!found.ok()) return CommandResult::failure(found.error);
    Ends& ends = found.value;
    if (ends.destination.isArray() && arguments.isSet("nextAvailable")) {
        if (const graph::Plug element = fedElement(graph, ends)) ends.destination = element;
    }
    const std::string source = fullPlugName(graph, ends.source);
    const std::string destination = fullPlugName(graph, ends.destination);
    if (graph.source(ends.destination) != ends.source)
        return CommandResult::failure("There is no connection from '" + source + "' to '" + destination +
                                      "' to disconnect");
    if (isLocked(ends.destination))
        return CommandResult::failure("The destination attribute '" + destination + "' is locked.");
    graph.disconnect(ends.destination);
    return CommandResult::success("Disconnect " + source + " from " + destination + '.');
}

CommandResult isConnected(CommandContext& context, const ParsedArguments& arguments) {
    Found<Ends> found = namedEnds(context, arguments);
    if (!found.ok()) return CommandResult::failure(found.error);
    return CommandResult::success(context.graph.source(found.value.destination) == found.value.source);
}

/// The source of the plug, or of a compound or array above it. `fed` is the plug of that level.
graph::Plug sourceAtOrAbove(const graph::Graph& graph, const graph::Plug& plug, graph::Plug& fed) {
    for (fed = plug; fed; fed = fed.parent()) {
        if (graph::Plug source = graph.source(fed)) return source;
    }
    return {};
}

bool feedsAtOrAbove(const graph::Graph& graph, const graph::Plug& plug) {
    for (graph::Plug at = plug; at; at = at.parent()) {
        if (!graph.destinations(at).empty()) return true;
    }
    return false;
}

CommandResult connectionInfo(CommandContext& context, const ParsedArguments& arguments) {
    const graph::Graph& graph = context.graph;
    if (arguments.flagsSet() != 1) {
        return CommandResult::failure(arguments.flagsSet() == 0
                                          ? "connectionInfo: Nothing was asked for."
                                          : "connectionInfo: Only one flag can be given at a time.");
    }
    const Found<graph::PlugMatch> found = findOnePlug(context.graph, arguments.objectNames().front());
    if (!found.ok()) return CommandResult::failure(found.error);
    const graph::Plug& plug = found.value.plug;
    graph::Plug fed;
    const graph::Plug source = sourceAtOrAbove(graph, plug, fed);
    const auto nameOf = [&](const graph::Plug& named) {
        return named ? graph.plugName(named) : std::string();
    };
    if (arguments.isSet("sourceFromDestination")) return CommandResult::success(nameOf(source));
    if (arguments.isSet("destinationFromSource")) {
        std::vector<std::string> names;
        for (const graph::Plug& destination : graph.destinations(plug))
            names.push_back(graph.plugName(destination));
        mel::ResultForm form;
        form.isListWhenEmpty = true;
        return CommandResult::success(std::move(names)).with(std::move(form));
    }
    if (arguments.isSet("isDestination")) return CommandResult::success(static_cast<bool>(source));
    if (arguments.isSet("isExactDestination"))
        return CommandResult::success(static_cast<bool>(graph.source(plug)));
    if (arguments.isSet("isSource")) return CommandResult::success(feedsAtOrAbove(graph, plug));
    if (arguments.isSet("isExactSource")) return CommandResult::success(!graph.destinations(plug).empty());
    if (arguments.isSet("getExactDestination"))
        return CommandResult::success(nameOf(source ? fed : graph::Plug()));
    if (arguments.isSet("getExactSource"))
        return CommandResult::success(graph.destinations(plug).empty() ? std::string() : nameOf(plug));
    return CommandResult::success(isLocked(plug));
}

}  // namespace

void registerConnectionCommands(mel::CommandRegistry& registry) {
    Syntax connecting;
    connecting.flag("f", "force").flag("l", "lock", {kSwitch}).flag("na", "nextAvailable");
    connecting.objects(ObjectKind::Strings, 2, 2);
    registry.add("connectAttr", connecting, connectAttr, "rd referenceDest");

    Syntax disconnecting;
    disconnecting.flag("na", "nextAvailable").objects(ObjectKind::Strings, 2, 2);
    registry.add("disconnectAttr", disconnecting, disconnectAttr);

    Syntax testing;
    // There are no conversion nodes to skip.
    testing.flag("iuc", "ignoreUnitConversion").objects(ObjectKind::Strings, 2, 2);
    registry.add("isConnected", testing, isConnected);

    Syntax informing;
    informing.flag("sfd", "sourceFromDestination").flag("dfs", "destinationFromSource");
    informing.flag("id", "isDestination").flag("is", "isSource").flag("ied", "isExactDestination");
    informing.flag("ies", "isExactSource").flag("ged", "getExactDestination").flag("ges", "getExactSource");
    informing.flag("il", "isLocked").objects(ObjectKind::Strings, 1, 1);
    registry.add("connectionInfo", informing, connectionInfo, "gla getLockedAncestor");
}

}  // namespace host::commands
