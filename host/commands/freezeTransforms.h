#pragma once

#include <string>

#include "commands/commandSupport.h"

/// Making transforms the identity without moving anything (makeIdentity -apply).
namespace host::commands {

struct FreezeRequest {
    bool translate = true;
    bool rotate = true;
    bool scale = true;  ///< with shear
    bool jointOrient = false;
};

/// Resets the asked values of a transform and of all transforms below it. What they did goes into the points
/// of the meshes below. Pivots stay where they are in the world.
///
/// Values that are not asked for stay, except that a translation follows what is frozen above it. A joint
/// keeps its place, which is what its children see: its rotation goes into its orientation, its scale into
/// the translation of its children. With `jointOrient` joints are aligned with the world.
/// @return empty, or why something cannot be frozen
std::string freezeTransforms(graph::Graph& graph, const graph::NodeRef& top, const FreezeRequest& request);

}  // namespace host::commands
