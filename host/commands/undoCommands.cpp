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

CommandResult queryUndo(const graph::UndoQueue& queue, const ParsedArguments& arguments) {
    if (arguments.isSet("state") || arguments.isSet("stateWithoutFlush"))
        return CommandResult::success(queue.isEnabled());
    if (arguments.isSet("infinity")) return CommandResult::success(true);
    if (arguments.isSet("undoQueueEmpty")) return CommandResult::success(!queue.canUndo());
    if (arguments.isSet("redoQueueEmpty")) return CommandResult::success(!queue.canRedo());
    if (arguments.flagsSet() == 0) return CommandResult::success(static_cast<int>(queue.size()));
    return CommandResult::failure("undoInfo: Only states can be queried.");
}

CommandResult undoInfo(CommandContext& context, const ParsedArguments& arguments) {
    graph::UndoQueue& queue = context.graph.undoQueue();
    if (arguments.isQuery()) return queryUndo(queue, arguments);
    if (arguments.isSet("infinity") && !arguments.boolean("infinity"))
        return CommandResult::failure("undoInfo: A limited undo queue is not covered by this host.");
    if (arguments.isSet("state")) {
        queue.setEnabled(arguments.boolean("state"));
        if (!queue.isEnabled()) queue.clear();
    }
    if (arguments.isSet("stateWithoutFlush")) queue.setEnabled(arguments.boolean("stateWithoutFlush"));
    if (arguments.isSet("openChunk")) queue.openChunk();
    if (arguments.isSet("closeChunk")) queue.closeChunk();
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
    // Only menus show the name.
    syntax.flag("cn", "chunkName", {kText}).flag("uqe", "undoQueueEmpty").flag("rqe", "redoQueueEmpty");
    syntax.enableQuery();
    registry.add("undoInfo", syntax, undoInfo, "l length pq printQueue rn redoName un undoName");
}

}  // namespace host::commands
