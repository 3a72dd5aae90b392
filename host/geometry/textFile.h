#pragma once

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
/// write that fails, as on a full disk, leaves the old file whole. Permissions are kept. If the path is a
/// link, the file that it leads to is replaced. Devices, and files in a folder that takes no new files, are
/// written in place. A file that may not be written is an error.
std::string writeTextFile(const std::string& path, std::string_view text);

}  // namespace host::geometry
