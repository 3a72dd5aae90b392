#pragma once

namespace host::platform {

/// Makes the standard streams safe to write to, to be called before anything else is opened: a closed one
/// stays unusable instead of becoming the next file that is opened, and a write beyond the size that a user
/// is allowed fails instead of ending the program.
void prepareStreams();

}  // namespace host::platform
