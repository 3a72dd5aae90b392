#pragma once

#include <maya/MObject.h>

#include <vector>

#include "graph/node.h"

namespace host::api {

bool isTransform(const graph::Node& node);
/// Children that are no transforms, intermediate shapes among them.
std::vector<graph::NodeRef> shapesBelow(const graph::Node& node);
/// The parent, or the world.
MObject parentObject(const graph::Node& node);

}  // namespace host::api
