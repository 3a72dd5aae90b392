#pragma once

#include <string>

namespace host::platform {

/// Folder of the running program, in UTF-8; empty when the system does not tell.
std::string programFolder();

}  // namespace host::platform
