#pragma once

#include <string>
#include <string_view>

namespace host::geometry {

struct FileText {
    std::string text;
    std::string error;  ///< names the file; empty when it was read

    bool ok() const { return error.empty(); }
};

/// The bytes of a file. A missing or unreadable file and a directory are errors.
FileText readTextFile(const std::string& path);

/// Replaces a file's content byte for byte; every file that is written whole goes through here. Gives the
/// error text, empty on success.
///
/// The text goes into a file of its own beside the old one, which it replaces when it is complete: a write
/// that comes to a short end, as on a full disk, leaves the old file whole. Permissions are kept; of a link,
/// the file that it leads to is replaced. Devices, and files whose folder takes no new ones, are written in
/// place. A file that may not be written is an error.
std::string writeTextFile(const std::string& path, std::string_view text);

}  // namespace host::geometry
