#pragma once

#include <maya/MDagPath.h>

#include "graph/instances.h"

namespace host::api {

/// Converts between MDagPath and the node that it leads to.
struct PathAccess {
    /// @param instance  the number of the node's path
    static MDagPath path(const graph::NodeRef& node, std::size_t instance = 0);
    static MDagPath path(const graph::Instance& instance) {
        return path(instance.node->ref(), instance.number);
    }
    /// The node and the number of its path. The node must be in the scene.
    static graph::Instance instance(const MDagPath& path) { return {node(path).get(), path.instance_}; }
    /// The node in the scene, otherwise null.
    static graph::NodeRef node(const MDagPath& path);
};

}  // namespace host::api
