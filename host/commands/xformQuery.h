#pragma once

#include <vector>

#include "commands/commandSupport.h"
#include "commands/transformSupport.h"
#include "geometry/math.h"

/// The queries of xform, and the command pointPosition.
namespace host::commands {

/// Names of the rotate orders, by the number in the attribute.
constexpr const char* kRotateOrderNames[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};

/// Adds to a box all visible meshes at and below a node, each by the box of its own box, in the space to
/// which a matrix leads from world space.
void expandBox(graph::Graph& graph, const Placed& node, const geometry::Matrix4& toSpace,
               geometry::BoundingBox& box);

/// Returns the value of the first flag in the query, for all items in turn.
CommandResult queryXform(CommandContext& context, const ParsedArguments& arguments,
                         const std::vector<graph::SelectionItem>& items);

CommandResult pointPosition(CommandContext& context, const ParsedArguments& arguments);

}  // namespace host::commands
