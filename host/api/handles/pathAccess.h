#pragma once

#include <maya/MDagPath.h>

#include "graph/node.h"

namespace host::api {

/// Converts between MDagPath and the node that it leads to.
struct PathAccess {
    static MDagPath path(const graph::NodeRef& node);
    /// The node in the scene, otherwise null.
    static graph::NodeRef node(const MDagPath& path);
};

}  // namespace host::api
