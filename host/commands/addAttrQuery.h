#pragma once

#include "commands/commandSupport.h"

/// The queries of addAttr and deleteAttr.
namespace host::commands {

/// Adds the flags of addAttr that only a query uses.
void addQueryFlags(Syntax& syntax);

/// What a flag of addAttr says of an attribute, "node.attribute".
CommandResult queryAddAttr(CommandContext& context, const ParsedArguments& arguments);

/// The attributes of nodes that deleteAttr can delete.
CommandResult queryDeleteAttr(CommandContext& context, const ParsedArguments& arguments);

}  // namespace host::commands
