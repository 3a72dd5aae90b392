#pragma once

#include <maya/MIntArray.h>

#include "geometry/closestPoint.h"

/// What the running scene's variants (graph::Variants) mean for meshes.
namespace host::api {

geometry::FaceTieRule faceTieRule();

/// Brings the neighbours of an element from the host's order into the one that the variants ask for.
void arrangeNeighbours(MIntArray& neighbours);

}  // namespace host::api
