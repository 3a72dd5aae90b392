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

/// Replaces a file's content byte for byte. Gives the error text, empty on success; a path that cannot be
/// opened and a write that came to a short end, as on a full disk, are errors.
std::string writeTextFile(const std::string& path, std::string_view text);

}  // namespace host::geometry
