#pragma once

#include <vector>

#include "commands/commandSupport.h"

/// What xform reports, and pointPosition.
namespace host::commands {

/// Names of the rotate orders by the number that the attribute has.
constexpr const char* kRotateOrderNames[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};

/// Answers the first of the flags that was asked, for all items in turn.
CommandResult queryXform(CommandContext& context, const ParsedArguments& arguments,
                         const std::vector<graph::SelectionItem>& items);

CommandResult pointPosition(CommandContext& context, const ParsedArguments& arguments);

}  // namespace host::commands
