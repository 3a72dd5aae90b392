#pragma once

#include <string>

#include "commands/commandSupport.h"
#include "nodes/blendShapeNode.h"

/// How the blendShape command changes an existing node. Every function returns an empty text, or the error to
/// show.
namespace host::commands {

/// -origin, -topologyCheck, -envelope.
std::string setBlendShapeOptions(graph::Graph& graph, const graph::NodeRef& blendShape,
                                 const ParsedArguments& arguments);
/// -weight, which may be used several times.
std::string setBlendShapeWeights(graph::Graph& graph, const graph::NodeRef& blendShape,
                                 const ParsedArguments& arguments);
/// Everything that is allowed with -edit: options, -target with or without -inBetween and -remove, -weight.
std::string editBlendShape(graph::Graph& graph, const graph::NodeRef& blendShape,
                           const ParsedArguments& arguments);

}  // namespace host::commands
