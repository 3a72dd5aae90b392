#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

/// Data files on disk, byte for byte. File names are UTF-8.

/// The content of a file.
class FileContent {
  public:
    /// Reads a regular file. After a failure the content is empty.
    /// @return false if the file is missing, unreadable, a directory or a device, or too large for the memory
    bool read(const std::string& name);

    /// Valid until the next read or the end of this object.
    std::string_view text() const { return {bytes_.get(), size_}; }

  private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
};

/// A file that is written in pieces. The old file stays whole until the new one is complete, with the
/// exceptions below.
///
/// The text goes to a temporary file in the same folder. close() puts it in place of the old file, with the
/// permissions of the old file. If the name is a link, the file that it leads to is replaced.
///
/// Written in place, from the first piece on: a device; an existing file in a folder that allows no new
/// files; a file whose permissions the temporary file cannot get. If close() cannot replace the old file, it
/// copies the text over it.
class OutputFile {
  public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Without `close` the old file stays, and the temporary file is deleted.
    ~OutputFile();

    /// Begins a file. Call it once.
    /// @return false if a file of this name cannot be made, or if the existing file may not be written
    bool open(const std::string& name);

    /// Adds text to the file. Errors are reported by close().
    void write(std::string_view text);

    /// Completes the file.
    /// @return false if a part of it did not reach the disk, for example because the disk is full. The old
    ///         file is then unchanged, unless it had to be written in place
    bool close();

  private:
    int openBeside();
    void drop();
    void empty();
    bool replace();

    std::filesystem::path file_;    // the file to write
    std::filesystem::path beside_;  // the temporary file; empty if file_ is written in place
    std::ofstream stream_;
    bool isEmptied_ = false;  // the old text of a file that is written in place is gone
};
