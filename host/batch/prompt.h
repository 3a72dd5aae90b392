#pragma once

#include "batch/console.h"
#include "mel/commandRegistry.h"

namespace host::batch {

/// Reads script from the terminal, or from standard input when that is none, and runs it piece by piece with
/// its results echoed, until the input ends or a script calls `quit`. An error ends a piece, not the session.
///
/// A piece ends with the line on which its last statement ends. At a terminal a statement needs no semicolon
/// at the end of a line; other input is read as a file is, where a line end means nothing: who writes a line
/// and waits for what comes of it ends it with a semicolon.
/// An interrupt (Ctrl-C) ends the piece that runs with an error and keeps the scene. At a terminal that waits
/// for a line it drops what was typed and says how to leave; other input that is waited for it ends with the
/// program.
/// @return false when a piece failed and the input was no terminal
bool runPrompt(mel::CommandRegistry& registry, Console& console);

}  // namespace host::batch
