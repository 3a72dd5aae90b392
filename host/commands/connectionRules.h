#pragma once

#include <string>

#include "graph/plug.h"

namespace host::commands {

/// Why the one plug cannot feed the other, as a sentence; empty when it can. Looks at what the attributes
/// are, not at locks or at what is connected now.
std::string connectionProblem(const graph::Plug& source, const graph::Plug& destination);

}  // namespace host::commands
