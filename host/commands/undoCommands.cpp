#include "commands/commandSupport.h"
#include "commands/commands.h"

namespace host::commands {

namespace {

CommandResult undo(CommandContext& context, const ParsedArguments&) {
    if (!context.registry.undo()) context.graph.messages().warning("There are no more commands to undo.");
    return CommandResult::success();
}

CommandResult redo(CommandContext& context, const ParsedArguments&) {
    if (!context.registry.redo()) context.graph.messages().warning("There are no more commands to redo.");
    return CommandResult::success();
}

/// What a limited queue keeps unless a script says how much.
constexpr std::size_t kUsualLimit = 50;

CommandResult queryUndo(const graph::UndoQueue& queue, const ParsedArguments& arguments) {
    if (arguments.isSet("state") || arguments.isSet("stateWithoutFlush"))
        return CommandResult::success(queue.isEnabled());
    if (arguments.isSet("infinity")) return CommandResult::success(queue.limit() == 0);
    if (arguments.isSet("length")) return CommandResult::success(static_cast<int>(queue.limit()));
    if (arguments.isSet("undoName")) return CommandResult::success(queue.undoName());
    if (arguments.isSet("redoName")) return CommandResult::success(queue.redoName());
    if (arguments.isSet("undoQueueEmpty")) return CommandResult::success(!queue.canUndo());
    if (arguments.isSet("redoQueueEmpty")) return CommandResult::success(!queue.canRedo());
    if (arguments.flagsSet() == 0) return CommandResult::success(static_cast<int>(queue.size()));
    return CommandResult::failure("undoInfo: -openChunk, -closeChunk and -chunkName cannot be queried.");
}

void printQueue(CommandContext& context) {
    std::string text;
    for (const std::string& name : context.graph.undoQueue().names())
        text.append(name).append(1, '\n');
    context.graph.messages().print(text);
}

CommandResult undoInfo(CommandContext& context, const ParsedArguments& arguments) {
    graph::UndoQueue& queue = context.graph.undoQueue();
    if (arguments.isQuery()) return queryUndo(queue, arguments);
    if (arguments.isSet("length")) queue.setLimit(static_cast<std::size_t>(arguments.integer("length")));
    // Infinity overrides a length.
    if (arguments.isSet("infinity")) {
        if (arguments.boolean("infinity")) {
            queue.setLimit(0);
        } else if (queue.limit() == 0) {
            queue.setLimit(kUsualLimit);
        }
    }
    if (arguments.isSet("state")) {
        queue.setEnabled(arguments.boolean("state"));
        if (!queue.isEnabled()) queue.clear();
    }
    if (arguments.isSet("stateWithoutFlush")) queue.setEnabled(arguments.boolean("stateWithoutFlush"));
    if (arguments.isSet("openChunk")) queue.openChunk(arguments.text("chunkName"));
    if (arguments.isSet("closeChunk")) queue.closeChunk();
    if (arguments.isSet("printQueue")) printQueue(context);
    return CommandResult::success();
}

CommandResult flushUndo(CommandContext& context, const ParsedArguments&) {
    context.graph.undoQueue().clear();
    return CommandResult::success();
}

}  // namespace

void registerUndoCommands(mel::CommandRegistry& registry) {
    registry.add("undo", Syntax(), undo);
    registry.add("redo", Syntax(), redo);
    registry.add("flushUndo", Syntax(), flushUndo);
    Syntax syntax;
    syntax.flag("st", "state", {kSwitch}).flag("swf", "stateWithoutFlush", {kSwitch});
    syntax.flag("in", "infinity", {kSwitch}).flag("ock", "openChunk").flag("cck", "closeChunk");
    syntax.flag("cn", "chunkName", {kText}).flag("uqe", "undoQueueEmpty").flag("rqe", "redoQueueEmpty");
    syntax.flag("l", "length", {ArgumentType::Unsigned}).flag("un", "undoName").flag("rn", "redoName");
    syntax.flag("pq", "printQueue").enableQuery();
    registry.add("undoInfo", syntax, undoInfo);
}

}  // namespace host::commands
