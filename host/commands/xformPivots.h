#pragma once

#include "commands/commandSupport.h"
#include "commands/transformSupport.h"
#include "geometry/math.h"

/// The edits of pivots by xform, and what its other edits share with them.
namespace host::commands {

bool isWorld(const ParsedArguments& arguments);
/// The three numbers of a flag that is set.
geometry::Vec3 tripleOf(const ParsedArguments& arguments, const char* flag);

/// Moves the pivots of a transform as a call says.
/// @return empty, or the error
std::string setPivots(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments);

}  // namespace host::commands
