#include <dlfcn.h>

#include "platform/library.h"

namespace host::platform {

Library::~Library() {
    dlclose(handle_);
}

void* Library::symbol(const std::string& name) const {
    return dlsym(handle_, name.c_str());
}

LibraryResult openLibrary(const std::string& path) {
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle != nullptr) return {std::make_shared<Library>(handle)};
    const char* reason = dlerror();
    return {nullptr, reason != nullptr ? reason : "unknown reason"};
}

const std::vector<std::string>& pluginSuffixes() {
#if defined(__APPLE__)
    static const std::vector<std::string> suffixes{".bundle", ".dylib", ".so"};
#else
    static const std::vector<std::string> suffixes{".so"};
#endif
    return suffixes;
}

char searchPathSeparator() {
    return ':';
}

}  // namespace host::platform
