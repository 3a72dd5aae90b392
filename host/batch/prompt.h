#pragma once

#include "batch/console.h"
#include "mel/commandRegistry.h"

namespace host::batch {

/// Reads script from the terminal, or else from standard input, and runs it piece by piece. The results are
/// shown. It ends with the input, or when a script calls `quit`. An error ends a piece, not the session.
///
/// A piece ends with the line on which its last statement ends. At a terminal, a statement needs no semicolon
/// at the end of a line. Other input is read like a file, where the end of a line means nothing: a program
/// that writes a line and waits for its result must end it with a semicolon.
///
/// An interrupt (Ctrl-C) ends the running piece with an error and keeps the scene. At a terminal that waits
/// for a line, it drops the typed text and says how to leave. While the program waits for other input, it
/// ends the program.
/// @return false if a piece failed and the input was not a terminal
bool runPrompt(mel::CommandRegistry& registry, Console& console);

}  // namespace host::batch
