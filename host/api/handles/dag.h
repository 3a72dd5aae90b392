#pragma once

#include <maya/MObject.h>

#include <vector>

#include "graph/node.h"

namespace host::api {

bool isTransform(const graph::Node& node);
/// Children that are not transforms, including intermediate shapes.
std::vector<graph::NodeRef> shapesBelow(const graph::Node& node);
/// The parent; for a node at the top, the world.
MObject parentObject(const graph::Node& node);

}  // namespace host::api
