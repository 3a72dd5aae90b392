#pragma once

#include <maya/MPlug.h>

#include "graph/plug.h"

namespace host::api {

/// Converts between MPlug and the place that it refers to.
struct PlugAccess {
    /// The place of a plug; an empty one if the plug has expired (graph::Variants).
    static const graph::Plug& place(const MPlug& plug);
    /// The place that a plug stores, expired or not.
    static graph::Plug& held(MPlug& plug);
    static const graph::Plug& held(const MPlug& plug);
    /// @param isNetworked  the plug comes from a connection
    static MPlug plug(graph::Plug place, bool isNetworked = false);
};

/// Whether a plug is not null and its node is in the scene.
bool isUsable(const graph::Plug& place);

/// Whether the plug, or anything that contains it, is locked.
bool isLocked(const graph::Plug& place);

}  // namespace host::api
