#pragma once

#include <string>

/// Files that a test program makes: in a folder of its own, which is gone when the program ends.

/// Path of a file of this name, with forward slashes, as scripts take it. The file need not exist.
std::string scratchFile(const std::string& name);

/// Makes the file with this content.
/// @return its path
std::string writeScratchFile(const std::string& name, const std::string& content);

/// The bytes of any file; a test failure and "" when it cannot be read.
std::string fileBytes(const std::string& path);
