#pragma once

#include <cstddef>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

/// Data files on disk, byte for byte. File names are UTF-8.

/// Whether the name of a file asks for the JSON layout: it ends in "json", in lower case.
bool isJsonFile(std::string_view name);

/// The content of a file.
class FileContent {
  public:
    /// Reads a regular file; the content stays empty otherwise.
    /// @return false for a file that is missing or unreadable, for a directory or device, and for
    ///         one that does not fit the memory
    bool read(const std::string& name);

    /// Valid as long as this object and until the next read.
    std::string_view text() const { return {bytes_.get(), size_}; }

  private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
};

/// A file being written, piece by piece.
class OutputFile {
  public:
    /// Opens a file, which is empty from then on.
    bool open(const std::string& name);

    /// Adds to the file. What goes wrong shows when it is closed.
    void write(std::string_view text);

    /// Completes the file.
    /// @return false when any of it did not reach the file (a full disk); the half file is removed
    ///         then
    bool close();

  private:
    std::string name_;
    std::ofstream stream_;
};
