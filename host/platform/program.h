#pragma once

#include <string>

namespace host::platform {

/// Folder of the running program, in UTF-8; empty if the system does not tell it.
std::string programFolder();

}  // namespace host::platform
