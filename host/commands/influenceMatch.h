#pragma once

#include <optional>
#include <string>
#include <vector>

#include "commands/commandSupport.h"
#include "nodes/skinClusterNode.h"

/// Which influence of one skin stands for which of another.
namespace host::commands {

/// A way to find the influence of the other skin.
enum class InfluenceScheme {
    ClosestJoint,  // by place
    ClosestBone,   // by the places of the joint and of its first child
    Name,          // the same name, or the same without namespaces
    Label,         // the same labels; joints without one have no match
    OneToOne,      // the same position in the order of influences
};

std::optional<InfluenceScheme> influenceScheme(const std::string& name);

/// For each influence of the source, the position in `destination` of its match; -1 if it has none.
///
/// A scheme is asked for the influences that the schemes before it left without a match.
/// @param mirrorAxis  the source's places are mirrored across the world's plane perpendicular to this axis (0
///                    is x), and left labels match right ones
std::vector<int> matchInfluences(graph::Graph& graph, const std::vector<nodes::Influence>& source,
                                 const std::vector<nodes::Influence>& destination,
                                 const std::vector<InfluenceScheme>& schemes, std::optional<int> mirrorAxis);

}  // namespace host::commands
