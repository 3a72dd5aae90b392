#pragma once

#include <maya/MDagPathArray.h>
#include <maya/MObject.h>

#include <vector>

#include "graph/node.h"

namespace host::api {

bool isTransform(const graph::Node& node);
/// Children that are not transforms, including intermediate shapes.
std::vector<graph::NodeRef> shapesBelow(const graph::Node& node);
/// Appends the paths of a node, up to graph::kMaxPaths.
void appendPaths(const graph::NodeRef& node, MDagPathArray& paths);
/// The first parent; for a node at the top, the world.
MObject parentObject(const graph::Node& node);

}  // namespace host::api
