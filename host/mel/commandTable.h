#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "mel/value.h"

namespace host::mel {

class Interpreter;

/// A place in a script. Lines and columns count from 1; line 0 stands for "nowhere in a script".
struct SourcePosition {
    std::string file;  ///< empty for text that comes from no file (typed lines, eval)
    int line = 0;
    int column = 0;
    /// Names of the procedures that were running there, innermost first; the last is "..." when there were
    /// many.
    std::vector<std::string> procedures{};
};

/// How a command call ended.
///
/// When `ok` is false, `error` is the text to show. A command that has shown its message itself sets
/// `errorShown`: nothing more is printed, but the calling statement still fails.
struct CommandResult {
    bool ok = true;
    Value value;
    std::string error;
    bool errorShown = false;
    /// Where the error arose, for commands that run script text themselves; without it the calling statement
    /// is named.
    std::optional<SourcePosition> position;

    static CommandResult success(Value value = {}) {
        return {true, std::move(value), {}, false, std::nullopt};
    }
    static CommandResult failure(std::string error) {
        return {false, {}, std::move(error), false, std::nullopt};
    }
    static CommandResult failureShown() { return {false, {}, {}, true, std::nullopt}; }
};

/// What the interpreter asks when a word is neither a procedure nor a built-in function.
class CommandTable {
  public:
    virtual ~CommandTable() = default;

    virtual bool has(std::string_view name) const = 0;
    /// Runs a command for which `has` is true. Every word of the command line is one value: numbers are Int
    /// or Float, everything else is String (flags too), an array variable is one array value. May call back
    /// into the interpreter.
    virtual CommandResult call(std::string_view name, std::vector<Value>&& arguments,
                               Interpreter& interpreter) = 0;
};

/// Where the interpreter's text goes. The implementation gives messages their final form.
class Output {
  public:
    virtual ~Output() = default;

    /// Text of `print`, without anything added.
    virtual void print(std::string_view text) = 0;
    virtual void info(std::string_view text) = 0;
    virtual void warning(std::string_view text, const SourcePosition& position) = 0;
    virtual void error(std::string_view text, const SourcePosition& position) = 0;
    /// The value of a line typed at a prompt.
    virtual void result(std::string_view text) = 0;
};

}  // namespace host::mel
