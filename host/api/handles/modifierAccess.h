#pragma once

#include <maya/MDGModifier.h>

#include <memory>

#include "graph/graph.h"

namespace host::api {

struct ModifierAccess {
    /// Adds a change that has already been made, so that the modifier can undo it.
    static void addDone(MDGModifier& modifier, std::unique_ptr<graph::ChangeList> change);
};

}  // namespace host::api
