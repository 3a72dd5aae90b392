// The command headlessDump: the whole scene as text.

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "geometry/textFile.h"
#include "graph/sceneDump.h"
#include "nodes/meshNode.h"

namespace host::commands {

namespace {

CommandResult headlessDump(CommandContext& context, const ParsedArguments& arguments) {
    // Evaluating stores the deltas of live targets. Otherwise equal scenes might give different dumps.
    for (const graph::NodeRef& shape : context.graph.nodesOfType("mesh"))
        nodes::meshOf(context.graph, shape);
    std::string text = graph::sceneDump(context.graph);
    if (!arguments.isSet("file")) return CommandResult::success(std::move(text));
    const std::string file = arguments.text("file");
    const std::string error = geometry::writeTextFile(file, text);
    if (!error.empty()) return CommandResult::failure("headlessDump: " + error);
    return CommandResult::success(file);
}

}  // namespace

void registerDumpCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("f", "file", {kText});
    registry.add("headlessDump", syntax, headlessDump);
}

}  // namespace host::commands
