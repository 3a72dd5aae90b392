#pragma once

#include <maya/MPlug.h>

#include "graph/plug.h"

namespace host::api {

/// Between MPlug and the place that it stands for.
struct PlugAccess {
    /// The place that a plug stands for; an empty one where the plug has expired (graph::Variants).
    static const graph::Plug& place(const MPlug& plug);
    /// What a plug holds, expired or not.
    static graph::Plug& held(MPlug& plug);
    static const graph::Plug& held(const MPlug& plug);
    /// @param isNetworked  the plug is one of a connection
    static MPlug plug(graph::Plug place, bool isNetworked = false);
};

/// Whether a plug is not null and its node is in the scene.
bool isUsable(const graph::Plug& place);

/// Whether the plug or anything that it is part of is locked.
bool isLocked(const graph::Plug& place);

}  // namespace host::api
