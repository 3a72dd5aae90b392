#pragma once

#include <memory>
#include <string>
#include <vector>

/// What differs from one operating system to the next.
namespace host::platform {

/// A dynamic library in memory. It is unloaded with the object.
class Library {
  public:
    /// @param handle  the operating system's handle of the library
    explicit Library(void* handle) : handle_(handle) {}
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// Address of an exported function or variable; null if there is none of that name.
    void* symbol(const std::string& name) const;

  private:
    void* handle_;
};

/// A library, or why there is none.
struct LibraryResult {
    std::shared_ptr<Library> library;
    std::string error{};
};

/// @param path  in UTF-8
LibraryResult openLibrary(const std::string& path);

/// Suffixes of plug-in files, with their dot. The usual one comes first.
const std::vector<std::string>& pluginSuffixes();

/// The character between the folders of a search path.
char searchPathSeparator();

}  // namespace host::platform
