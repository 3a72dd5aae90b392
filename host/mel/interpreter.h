#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mel/commandTable.h"
#include "mel/value.h"

namespace host::mel {

struct InterpreterOptions {
    /// Number of statements, loop turns and calls after which the outermost run fails; 0 for no limit.
    /// `catch` does not catch this.
    std::uint64_t stepLimit = 0;
    /// How deep procedure calls and runs may be nested.
    int depthLimit = 256;
    /// The largest number of elements of an array, and of bytes of a string, in a script.
    std::size_t sizeLimit = std::size_t{1} << 28;
};

struct RunOptions {
    /// Show an error of this run even if it is nested in another run (and not silenced by catchQuiet). The
    /// outermost run always shows its error.
    bool showErrors = false;
    /// Pass the value of the run, if it has one, to Output::result.
    bool echoResult = false;
    /// Like echoResult, but only for a text that is one call or another expression.
    bool echoSingleCall = false;
    /// Number of the text's first line in its source.
    int firstLine = 1;
    /// A command composed the text: no user knows its lines. Its errors name the statement that called the
    /// command, if there is one.
    bool isComposed = false;
};

struct ScriptError {
    std::string message;
    SourcePosition position;
    bool shown = false;  ///< the user has seen it (or the failing command has shown its own)
};

/// How a run ended. `value` is that of the last statement if it is an expression or a call, else None.
struct RunResult {
    bool ok = true;
    Value value;
    ScriptError error;

    /// For a command that runs text for its caller, and fails if the text fails (source).
    CommandResult toCommandResult() &&;
};

enum class TextEnd : std::uint8_t;
class Evaluator;

/// Runs MEL text. Procedures and built-in functions belong to the interpreter; all other words are looked up
/// in the command table.
///
/// Keeps procedures and global variables from run to run. A run first parses its whole text: with a syntax
/// error, nothing runs. Re-entrant (a command may run text), not thread-safe. Parsing is linear in the length
/// of the text.
class Interpreter {
  public:
    Interpreter(CommandTable& commands, Output& output, InterpreterOptions options = {});
    ~Interpreter();
    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;

    /// An error is shown once: by the outermost run, by a `catch`, or by the run that asks for it.
    /// @param sourceName  file that the text comes from; empty for typed lines and composed commands.
    ///                    Procedures that are not global are visible only to text with the same source name.
    RunResult run(std::string_view text, std::string_view sourceName = {}, const RunOptions& options = {});

    /// How a text ends if it is read as `run` would read it now.
    TextEnd endOf(std::string_view text) const;

    /// Calls a procedure, built-in function or command by name; looked up in this order. Shows no error.
    CommandResult callCommand(std::string_view name, std::vector<Value> arguments);

    bool hasProcedure(std::string_view name) const;
    /// File in which a global procedure was defined ("" if it was typed); nothing if there is no such
    /// procedure.
    std::optional<std::string> procedureSource(std::string_view name) const;
    /// Whether the name is a function of the language itself (size, abs, tokenize, catch, eval, ...).
    static bool isBuiltinFunction(std::string_view name);

    /// A variable at top level or declared `global`, named with or without its dollar sign. nullptr if there
    /// is none or it was never assigned. Valid until the next run.
    const Value* globalVariable(std::string_view name) const;
    /// Assigns, and creates the variable if necessary. False if it exists with a kind to which the value
    /// cannot be converted.
    bool setGlobalVariable(std::string_view name, Value value);

    /// Position of the statement that is being executed; line 0 outside a run.
    SourcePosition currentPosition() const;
    /// Whether a `catchQuiet` is active: errors must not be shown.
    bool isQuiet() const;
    /// Whether a run is in progress.
    bool isRunning() const;

    /// Ends all current runs after the current command, without an error; no `catch` stops this (quit). Later
    /// runs do nothing and succeed.
    void stop();
    bool isStopped() const;

    /// When someone, such as a signal handler, sets this flag, the current runs fail at their next step; no
    /// `catch` stops this. The flag is then cleared. It must outlive the interpreter.
    void setInterruptFlag(std::atomic<bool>& flag);
    /// While interrupts are held, once or several times, the flag waits: for work that must not be left half
    /// done.
    void holdInterrupts(bool isHeld);

  private:
    std::unique_ptr<Evaluator> evaluator_;
};

}  // namespace host::mel
