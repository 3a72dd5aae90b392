#pragma once

#include <string_view>

#include "batch/console.h"
#include "mel/commandRegistry.h"

namespace host::batch {

/// Whether typed text is a whole piece of script: brackets, strings and comments are closed, and the head of
/// a procedure, loop or condition has got its body. An `else` has to begin on the line on which the text
/// before it ends.
bool isWholeEntry(std::string_view text);

/// Reads script from the terminal, or from standard input when that is none, and runs it piece by piece with
/// its results echoed, until the input ends or a script calls `quit`. An error ends a piece, not the session.
/// @return false when a piece failed and the input was no terminal
bool runPrompt(mel::CommandRegistry& registry, Console& console);

}  // namespace host::batch
