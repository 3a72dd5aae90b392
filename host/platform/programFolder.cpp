#include <filesystem>
#include <system_error>
#include <vector>

#include "platform/program.h"

#if defined(_WIN32)
#include <windows.h>
#elif defined(__APPLE__)
#include <mach-o/dyld.h>

#include <cstdint>
#endif

namespace host::platform {

namespace {

std::filesystem::path programPath() {
#if defined(_WIN32)
    std::vector<wchar_t> buffer(1 << 15);
    const DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    return std::filesystem::path(buffer.data(), buffer.data() + length);
#elif defined(__APPLE__)
    std::uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size);
    std::vector<char> buffer(size + 1);
    if (_NSGetExecutablePath(buffer.data(), &size) != 0) return {};
    std::error_code error;
    return std::filesystem::canonical(buffer.data(), error);
#else
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
#endif
}

}  // namespace

std::string programFolder() {
    return programPath().parent_path().u8string();
}

}  // namespace host::platform
