#pragma once

#include <string>

#include "commands/commandSupport.h"
#include "nodes/blendShapeNode.h"

/// What the blendShape command changes on a node that is there. Every function returns an empty text, or the
/// error to show.
namespace host::commands {

/// -origin, -topologyCheck, -envelope.
std::string setBlendShapeOptions(graph::Graph& graph, const graph::NodeRef& blendShape,
                                 const ParsedArguments& arguments);
/// -weight, which may be given several times.
std::string setBlendShapeWeights(graph::Graph& graph, const graph::NodeRef& blendShape,
                                 const ParsedArguments& arguments);
/// Everything that may stand beside -edit: options, -target with or without -inBetween and -remove, -weight.
std::string editBlendShape(graph::Graph& graph, const graph::NodeRef& blendShape,
                           const ParsedArguments& arguments);

}  // namespace host::commands
