#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include "platform/library.h"

namespace host::platform {

namespace {

std::wstring widened(const std::string& text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

}  // namespace

Library::~Library() {
    FreeLibrary(static_cast<HMODULE>(handle_));
}

void* Library::symbol(const std::string& name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name.c_str()));
}

LibraryResult openLibrary(const std::string& path) {
    if (HMODULE handle = LoadLibraryW(widened(path).c_str())) return {std::make_shared<Library>(handle)};
    return {nullptr, "system error " + std::to_string(GetLastError())};
}

const std::vector<std::string>& pluginSuffixes() {
    static const std::vector<std::string> suffixes{".mll", ".dll"};
    return suffixes;
}

char searchPathSeparator() {
    return ';';
}

}  // namespace host::platform
