#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mel/interpreter.h"

namespace host::mel::test {

/// Keeps what a script shows.
class RecordedOutput : public Output {
  public:
    void print(std::string_view text) override { printed += text; }
    void info(std::string_view text) override { infos.emplace_back(text); }
    void warning(std::string_view text, const SourcePosition& position) override {
        warnings.push_back(located(text, position));
    }
    void error(std::string_view text, const SourcePosition& position) override {
        errors.push_back(located(text, position));
        errorFiles.push_back(position.file);
    }
    void result(std::string_view text) override { results.emplace_back(text); }

    std::string printed;
    std::vector<std::string> infos;
    std::vector<std::string> warnings;
    std::vector<std::string> errors;  ///< "line.column: text", "line.column in inner, outer: text"
    std::vector<std::string> errorFiles;
    std::vector<std::string> results;

  private:
    static std::string located(std::string_view text, const SourcePosition& position) {
        std::string place = std::to_string(position.line) + "." + std::to_string(position.column);
        for (std::size_t k = 0; k < position.procedures.size(); ++k)
            place += (k == 0 ? " in " : ", ") + position.procedures[k];
        return place + ": " + std::string(text);
    }
};

/// A few commands that show what arrives at a command and what comes back from one.
///
/// echo prints its arguments with their kinds; ints, floats and strings return their arguments as an array,
/// nothing returns no value; fail fails with its text, failShown after having shown it; runText runs text and
/// succeeds whatever happens, runComposed does so as for text of a command's own making, sourceText fails
/// when the text does; callByName calls what its first argument names; quit stops.
class EchoCommands : public CommandTable {
  public:
    explicit EchoCommands(RecordedOutput& output) : output_(output) {}

    bool has(std::string_view name) const override {
        for (const char* known : {"echo", "ints", "floats", "strings", "nothing", "fail", "failShown",
                                  "runText", "runComposed", "sourceText", "callByName", "quit"})
            if (name == known) return true;
        return false;
    }

    CommandResult call(std::string_view name, std::vector<Value>&& arguments,
                       Interpreter& interpreter) override {
        if (name == "echo") output_.print(described(arguments));
        if (name == "ints") return CommandResult::success(converted<int>(arguments, &Value::toInt));
        if (name == "floats") return CommandResult::success(converted<double>(arguments, &Value::toFloat));
        if (name == "strings")
            return CommandResult::success(converted<std::string>(arguments, &Value::toString));
        if (name == "quit") interpreter.stop();
        if (name == "echo" || name == "nothing" || name == "quit") return CommandResult::success();

        const std::string text = arguments.empty() ? "" : arguments[0].toString();
        if (name == "fail") return CommandResult::failure(text);
        if (name == "callByName")
            return interpreter.callCommand(text, {arguments.begin() + 1, arguments.end()});
        if (name == "sourceText") return interpreter.run(text, "other.mel").toCommandResult();
        if (name == "runText" || name == "runComposed") {
            RunOptions options;
            options.showErrors = true;
            options.isComposed = name == "runComposed";
            interpreter.run(text, "", options);
            return CommandResult::success();
        }
        output_.error(text, interpreter.currentPosition());
        return CommandResult::failureShown();
    }

  private:
    /// "int 1 | string -flag | float[] 1 2" and a line end.
    static std::string described(const std::vector<Value>& arguments) {
        std::string text;
        for (const Value& value : arguments)
            text += std::string(text.empty() ? "" : " | ") + kindName(value.kind()) + " " + value.toString();
        return text + "\n";
    }

    template <typename T>
    static std::vector<T> converted(const std::vector<Value>& arguments, T (Value::*convert)() const) {
        std::vector<T> result;
        for (const Value& value : arguments)
            result.push_back((value.*convert)());
        return result;
    }

    RecordedOutput& output_;
};

}  // namespace host::mel::test
