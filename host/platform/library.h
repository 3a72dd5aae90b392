#pragma once

#include <memory>
#include <string>
#include <vector>

/// What differs from one operating system to the next.
namespace host::platform {

/// A dynamic library in memory; it leaves with the object.
class Library {
  public:
    /// @param handle  what the operating system calls the library
    explicit Library(void* handle) : handle_(handle) {}
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// Address of an exported function or variable, null when there is none of that name.
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

/// Suffixes of plug-in files, with their dot, the usual one first.
const std::vector<std::string>& pluginSuffixes();

/// What separates the folders of a search path.
char searchPathSeparator();

}  // namespace host::platform
