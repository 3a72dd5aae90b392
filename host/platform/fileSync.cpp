#include "platform/fileSync.h"

#if defined(_WIN32)
#include <windows.h>

#include <cerrno>
#include <filesystem>
#else
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace host::platform {

#if defined(_WIN32)
int synchronise(const std::string& path) {
    const HANDLE file = CreateFileW(std::filesystem::u8path(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return EIO;
    const bool isSafe = FlushFileBuffers(file) != 0;
    CloseHandle(file);
    return isSafe ? 0 : EIO;
}
#else
int synchronise(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return errno;
    const int code = fsync(file) == 0 ? 0 : errno;
    close(file);
    // Some file systems cannot synchronise single files.
    return code == EINVAL || code == ENOTSUP ? 0 : code;
}
#endif

}  // namespace host::platform
