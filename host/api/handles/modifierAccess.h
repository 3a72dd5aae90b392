#pragma once

#include <maya/MDGModifier.h>

#include <memory>

#include "graph/graph.h"

namespace host::api {

struct ModifierAccess {
    /// Gives a modifier a change that has been made, to take back.
    static void addDone(MDGModifier& modifier, std::unique_ptr<graph::ChangeList> change);
};

}  // namespace host::api
