#pragma once

#include <string>

#include "commands/commandSupport.h"

/// How the skinCluster command changes an existing node.
namespace host::commands {

/// Why settings that may be given when binding and when editing cannot be had; empty if they can.
std::string skinSettingsObstacle(const ParsedArguments& arguments);
/// Sets the settings that are attributes of the node.
void setSkinSettings(graph::Graph& graph, const graph::NodeRef& skinCluster,
                     const ParsedArguments& arguments);

/// Logical index of an influence by name.
Found<int> namedInfluence(const graph::Graph& graph, const graph::NodeRef& skinCluster,
                          const std::string& name);

/// Everything that is allowed with -edit.
/// @param influence  the argument of -influence; empty if none
/// @return empty, or the error
std::string editSkinCluster(graph::Graph& graph, const graph::NodeRef& skinCluster,
                            const ParsedArguments& arguments, const std::string& influence);

}  // namespace host::commands
