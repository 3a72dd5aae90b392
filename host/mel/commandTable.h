#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "mel/value.h"

namespace host::mel {

class Interpreter;

/// A place in a script. Lines and columns count from 1. Line 0 means "not in a script".
struct SourcePosition {
    std::string file;  ///< empty for text that does not come from a file (typed lines, eval)
    int line = 0;
    int column = 0;
    /// Names of the procedures that were running there, innermost first. If there were many, the last one is
    /// "...".
    std::vector<std::string> procedures{};
};

/// What a caller with more types than MEL makes of a result.
struct ResultForm {
    bool isListWhenEmpty = false;     ///< an empty array is an empty list; otherwise it is nothing
    int tupleWidth = 0;               ///< how many numbers of an array belong together; 0: none do
    bool isTuple = false;             ///< the whole is a tuple, not a list
    std::vector<std::string> keys{};  ///< names of the values of an array, one each
    Value instead{};                  ///< what such a caller gets in place of the value; None: the value
};

/// How a command call ended.
///
/// If `ok` is false, `error` is the text to show. A command that has already shown its message sets
/// `errorShown`: nothing more is printed, but the calling statement still fails.
struct CommandResult {
    bool ok = true;
    Value value;
    std::string error;
    bool errorShown = false;
    /// Where the error arose, for commands that run script text themselves. Without it, the error names the
    /// calling statement.
    std::optional<SourcePosition> position;
    /// Null for a result like any other. Calls are nested deeply, so a result is small.
    std::shared_ptr<const ResultForm> form{};

    CommandResult&& with(ResultForm resultForm) && {
        form = std::make_shared<const ResultForm>(std::move(resultForm));
        return std::move(*this);
    }

    static CommandResult success(Value value = {}) {
        return {true, std::move(value), {}, false, std::nullopt, nullptr};
    }
    static CommandResult failure(std::string error) {
        return {false, {}, std::move(error), false, std::nullopt, nullptr};
    }
    static CommandResult failureShown() { return {false, {}, {}, true, std::nullopt, nullptr}; }
};

/// Looks up and runs the words that are neither procedures nor built-in functions, for the interpreter.
class CommandTable {
  public:
    virtual ~CommandTable() = default;

    virtual bool has(std::string_view name) const = 0;
    /// Runs a command for which `has` is true. Every word of the command line is one value: numbers are Int
    /// or Float, an array variable is one array value, everything else is String (flags too). May call back
    /// into the interpreter.
    virtual CommandResult call(std::string_view name, std::vector<Value>&& arguments,
                               Interpreter& interpreter) = 0;
    /// Runs the script file that is named like a procedure that nobody knows.
    /// @return how that ended; nothing if there is no such file
    virtual std::optional<CommandResult> loadProcedure(std::string_view /*name*/,
                                                       Interpreter& /*interpreter*/) {
        return std::nullopt;
    }
};

/// Receives the interpreter's text. The implementation gives messages their final form.
class Output {
  public:
    virtual ~Output() = default;

    /// Text of `print`, with nothing added.
    virtual void print(std::string_view text) = 0;
    virtual void info(std::string_view text) = 0;
    virtual void warning(std::string_view text, const SourcePosition& position) = 0;
    virtual void error(std::string_view text, const SourcePosition& position) = 0;
    /// The value of a line typed at a prompt.
    virtual void result(std::string_view text) = 0;
};

}  // namespace host::mel
