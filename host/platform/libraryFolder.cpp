#include <filesystem>
#include <system_error>
#include <vector>

#include "platform/libraryFolder.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace host::platform {

namespace {

/// The file that this code was loaded from.
std::filesystem::path libraryPath() {
#if defined(_WIN32)
    HMODULE library = nullptr;
    const DWORD how = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExW(how, reinterpret_cast<LPCWSTR>(&libraryFolder), &library) == 0) return {};
    std::vector<wchar_t> buffer(1 << 15);
    const DWORD length = GetModuleFileNameW(library, buffer.data(), static_cast<DWORD>(buffer.size()));
    return std::filesystem::path(buffer.data(), buffer.data() + length);
#else
    Dl_info found{};
    if (dladdr(reinterpret_cast<void*>(&libraryFolder), &found) == 0 || found.dli_fname == nullptr) return {};
    std::error_code error;
    return std::filesystem::canonical(found.dli_fname, error);
#endif
}

}  // namespace

std::string libraryFolder() {
    return libraryPath().parent_path().u8string();
}

}  // namespace host::platform
