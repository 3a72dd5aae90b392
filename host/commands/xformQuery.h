#pragma once

#include <vector>

#include "commands/commandSupport.h"

/// The queries of xform, and the command pointPosition.
namespace host::commands {

/// Names of the rotate orders, by the number in the attribute.
constexpr const char* kRotateOrderNames[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};

/// Returns the value of the first flag in the query, for all items in turn.
CommandResult queryXform(CommandContext& context, const ParsedArguments& arguments,
                         const std::vector<graph::SelectionItem>& items);

CommandResult pointPosition(CommandContext& context, const ParsedArguments& arguments);

}  // namespace host::commands
