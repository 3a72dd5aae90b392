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
    /// Statements, loop rounds and calls after which the outermost run fails; 0 for no limit. `catch` does
    /// not hold it.
    std::uint64_t stepLimit = 0;
    /// Procedure calls and nested runs inside one another.
    int depthLimit = 256;
    /// Elements of an array and bytes of a string that a script may reach.
    std::size_t sizeLimit = std::size_t{1} << 28;
};

struct RunOptions {
    /// Show an error of this run even when it is nested in another run (and not silenced by catchQuiet). The
    /// outermost run always shows its error.
    bool showErrors = false;
    /// Hand the value of the run, if it has one, to Output::result.
    bool echoResult = false;
    /// As echoResult, but only for a text that is one call or another expression.
    bool echoSingleCall = false;
    /// Number of the text's first line in what it was taken from.
    int firstLine = 1;
    /// A command has composed the text: no user knows its lines. Its errors stand where the statement stands
    /// that called the command, if there is one.
    bool isComposed = false;
};

struct ScriptError {
    std::string message;
    SourcePosition position;
    bool shown = false;  ///< the user has seen it (or the failing command has shown its own)
};

/// How a run ended. `value` is that of the last statement when it is an expression or a call, else None.
struct RunResult {
    bool ok = true;
    Value value;
    ScriptError error;

    /// For a command that runs text on behalf of its caller and fails when the text fails (source).
    CommandResult toCommandResult() &&;
};

enum class TextEnd : std::uint8_t;
class Evaluator;

/// Runs MEL text: procedures and built-in functions are its own, all other words are looked up in the command
/// table.
///
/// Keeps procedures and global variables from run to run. A run parses its whole text first: a syntax error
/// runs nothing. Re-entrant (a command may run text), not thread-safe. Parsing is linear in the length of the
/// text.
class Interpreter {
  public:
    Interpreter(CommandTable& commands, Output& output, InterpreterOptions options = {});
    ~Interpreter();
    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;

    /// @param sourceName  file that the text comes from; empty for typed lines and composed commands.
    /// Procedures that
    ///                    are not global are visible to text of the same source name only.
    /// An error is shown once: by the outermost run, by a `catch`, or by the run that asks for it.
    RunResult run(std::string_view text, std::string_view sourceName = {}, const RunOptions& options = {});

    /// How a text ends when it is read as `run` would read it now.
    TextEnd endOf(std::string_view text) const;

    /// Calls a procedure, built-in function or command by name, in this order. Shows no error.
    CommandResult callCommand(std::string_view name, std::vector<Value> arguments);

    bool hasProcedure(std::string_view name) const;
    /// File in which a global procedure was defined ("" when it was typed); nothing when there is none.
    std::optional<std::string> procedureSource(std::string_view name) const;
    /// True for the functions that the language brings along (size, abs, tokenize, catch, eval, ...).
    static bool isBuiltinFunction(std::string_view name);

    /// Variables at top level and those declared `global`; named without or with their dollar sign.
    /// nullptr when there is none or it was never assigned; valid until the next run.
    const Value* globalVariable(std::string_view name) const;
    /// Assigns, creating the variable when needed; false when it exists with a kind to which the value does
    /// not convert.
    bool setGlobalVariable(std::string_view name, Value value);

    /// Where the statement stands that is being executed; line 0 outside a run.
    SourcePosition currentPosition() const;
    /// True inside `catchQuiet`: errors are not to be shown.
    bool isQuiet() const;
    /// True while a run is in progress.
    bool isRunning() const;

    /// Ends all runs in progress after the current command, without an error and past every `catch` (quit).
    /// Later runs do nothing and succeed.
    void stop();
    bool isStopped() const;

    /// Whoever sets this flag, a signal handler perhaps, has the runs in progress fail at their next step,
    /// past every `catch`; the flag is cleared then. It must outlive the interpreter.
    void setInterruptFlag(std::atomic<bool>& flag);
    /// While held, once or more, the flag waits: for work that must not be left half done.
    void holdInterrupts(bool isHeld);

  private:
    std::unique_ptr<Evaluator> evaluator_;
};

}  // namespace host::mel
