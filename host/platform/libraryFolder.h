#pragma once

#include <string>

namespace host::platform {

/// Folder of the host's library, in UTF-8; that of the program if the library is a part of it. Empty if the
/// system does not tell it.
std::string libraryFolder();

}  // namespace host::platform
