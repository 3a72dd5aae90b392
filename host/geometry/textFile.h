#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace host::geometry {

struct FileText {
    std::string text;
    std::string error;  ///< names the file; empty on success

    bool ok() const { return error.empty(); }
};

/// The bytes of a file. A missing or unreadable file, or a directory, is an error.
FileText readTextFile(const std::string& path);

/// Replaces a file's content byte for byte. Every file that is written in one go goes through here. Returns
/// the error text, empty on success.
///
/// The text goes into a new file in the same folder, which replaces the old file when it is complete. So a
/// write that fails, as on a full disk, leaves the old file whole, and nothing beside it. Permissions are
/// kept. If the path is a link, the file that it leads to is replaced. Devices, and files that this user can
/// write but never replace, are written in place. A file that may not be written is an error.
std::string writeTextFile(const std::string& path, std::string_view text);

/// Writes the content of a file. Called once more if the file has to be written in place after all.
using FileContent = std::function<void(std::ostream&)>;
/// Something to do with a file, by its path. Returns the system's error code, 0 on success.
using FileStep = std::function<int(const std::string& path)>;

/// The same for content that is written piece by piece.
/// @param settle  done with the complete new file before it replaces the old one; may be empty
std::string writeFile(const std::string& path, const FileContent& write, const FileStep& settle = {});

}  // namespace host::geometry
