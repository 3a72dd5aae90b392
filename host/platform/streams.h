#pragma once

#include <string>

namespace host::platform {

/// Makes the standard streams safe to write to. Call it before anything else is opened. A closed stream stays
/// unusable, instead of becoming the next file that is opened. A write beyond the file size that the user is
/// allowed fails, instead of ending the program.
void prepareStreams();

/// Writes to standard error at once if it is a terminal, and otherwise not at all.
void writeToTerminal(const std::string& text);

}  // namespace host::platform
