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

/// A file being written, piece by piece. Whatever was there stays whole until it is complete.
///
/// The text goes into a file of its own beside the one that it is for, and takes that one's place and
/// permissions when it is closed. Of a link, the file that it leads to is replaced. A device is written as
/// the text comes; so is a file whose folder takes no new ones, from the first piece on.
class OutputFile {
  public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Without `close` the old file stays, and nothing of the new one.
    ~OutputFile();

    /// Begins a file; to be called once.
    /// @return false when there may be none of this name, or the one that is there may not be written
    bool open(const std::string& name);

    /// Adds to the file. What goes wrong shows when it is closed.
    void write(std::string_view text);

    /// Completes the file.
    /// @return false when any of it did not reach the disk (a full one, say); the old file is as it was
    ///         then, unless it had to be written in place
    bool close();

  private:
    int openBeside();
    void drop();
    void empty();
    bool replace();

    std::filesystem::path file_;    // to be written
    std::filesystem::path beside_;  // what takes its place; empty when it is written in place
    std::ofstream stream_;
    bool isEmptied_ = false;  // of a file that is written in place
};
