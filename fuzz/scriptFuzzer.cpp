#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "mel/argumentParser.h"
#include "mel/interpreter.h"
#include "mel/lexer.h"

using namespace host::mel;

namespace {

/// Counts what is shown, since a run has to show an error exactly once.
class Counter : public Output {
  public:
    void print(std::string_view) override {}
    void info(std::string_view) override {}
    void warning(std::string_view, const SourcePosition&) override {}
    void error(std::string_view, const SourcePosition& position) override {
        ++errors;
        if (position.line < 1 || position.column < 1) std::abort();
    }
    void result(std::string_view) override {}

    int errors = 0;
};

/// Every other word is a command; its arguments go through the argument parser and come back as its result.
class AnyCommand : public CommandTable {
  public:
    AnyCommand() {
        syntax_.flag("n", "name", {ArgumentType::String})
            .flag("i", "index", {ArgumentType::Int})
            .multiUseFlag("w", "weight", {ArgumentType::Int, ArgumentType::Double})
            .objects(ObjectKind::Values, 0, 1000)
            .enableQuery()
            .enableEdit();
    }

    bool has(std::string_view name) const override { return !name.empty() && name.front() != 'x'; }

    CommandResult call(std::string_view name, std::vector<Value>&& arguments,
                       Interpreter& interpreter) override {
        if (name == "source" && !arguments.empty())
            return interpreter.run(arguments[0].toString(), "fuzz.mel").toCommandResult();
        if (name == "callByName" && !arguments.empty())
            return interpreter.callCommand(arguments[0].toString(), {arguments.begin() + 1, arguments.end()});
        ArgumentParseResult parsed = parseArguments(syntax_, std::move(arguments));
        if (!parsed.ok()) return CommandResult::failure(parsed.error);
        return CommandResult::success(parsed.arguments.objectNames());
    }

  private:
    Syntax syntax_;
};

}  // namespace

/// Any text runs, is refused or reaches one of the limits. A failing run shows its error once, a good one
/// ends with nothing but the errors that `catch` has shown.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    InterpreterOptions options;
    options.stepLimit = 2000;
    options.depthLimit = 40;
    options.sizeLimit = 2000;
    Counter output;
    AnyCommand commands;
    Interpreter interpreter(commands, output, options);
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    const bool isUnfinished = interpreter.endOf(text) == TextEnd::TooEarly || BracketCount().isOpenIn(text);
    const RunResult result = interpreter.run(text);
    if (result.ok && isUnfinished) {
        std::fprintf(stderr, "a text that runs is said to end too early\n");
        std::abort();
    }
    const bool mayCatch = text.find("catch") != std::string_view::npos;
    const int expected = result.ok ? 0 : 1;
    if (result.error.shown == result.ok || (!mayCatch && output.errors != expected)) {
        std::fprintf(stderr, "%d errors were shown, the run %s\n", output.errors,
                     result.ok ? "succeeded" : "failed");
        std::abort();
    }
    return 0;
}
