#pragma once

#include "graph/plug.h"

namespace host::api {

/// Whether a plug is not null and its node is in the scene.
bool isUsable(const graph::Plug& place);

/// Whether the plug or anything that it is part of is locked.
bool isLocked(const graph::Plug& place);

}  // namespace host::api
