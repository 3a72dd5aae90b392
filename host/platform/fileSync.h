#pragma once

#include <string>

namespace host::platform {

/// Waits until a file's content is on the disk. @return 0, or the system's error code
int synchronise(const std::string& path);

}  // namespace host::platform
