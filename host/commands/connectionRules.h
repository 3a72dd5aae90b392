#pragma once

#include <string>

#include "graph/plug.h"

namespace host::commands {

/// Why a plug cannot be connected to another, as a sentence; empty if it can. Checks only the attributes, not
/// locks or existing connections.
std::string connectionProblem(const graph::Plug& source, const graph::Plug& destination);

}  // namespace host::commands
