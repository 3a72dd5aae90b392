#include "batch/outputCommand.h"

#include <string>

namespace host::batch {

namespace {

using mel::ArgumentType;
using mel::CommandResult;
using mel::ParsedArguments;

CommandResult closed(Console& console, int number) {
    return console.closeCopy(number)
               ? CommandResult::success(1)
               : CommandResult::failure("cmdFileOutput: There is no open file " + std::to_string(number) +
                                        ", or it could not be written.");
}

CommandResult cmdFileOutput(Console& console, const ParsedArguments& arguments) {
    if (arguments.flagsSet() != 1)
        return CommandResult::failure("cmdFileOutput: Exactly one of -open, -close and -closeAll is needed.");
    if (arguments.isSet("open")) return CommandResult::success(console.openCopy(arguments.text("open")));
    if (arguments.isSet("close")) return closed(console, arguments.integer("close"));
    CommandResult result = CommandResult::success(1);
    for (const int number : console.copies()) {
        CommandResult one = closed(console, number);
        if (!one.ok) result = std::move(one);
    }
    return result;
}

}  // namespace

void registerOutputCommand(mel::CommandRegistry& registry, Console& console) {
    mel::Syntax syntax;
    syntax.flag("o", "open", {ArgumentType::String})
        .flag("c", "close", {ArgumentType::Int})
        .flag("ca", "closeAll");
    registry.add(
        "cmdFileOutput", syntax,
        [&console](mel::CommandContext&, const ParsedArguments& arguments) {
            return cmdFileOutput(console, arguments);
        },
        "s status");
}

}  // namespace host::batch
