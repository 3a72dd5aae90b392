#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "graph/graph.h"
#include "mel/argumentParser.h"
#include "mel/commandTable.h"
#include "mel/interpreter.h"
#include "mel/pluginCommand.h"
#include "mel/syntax.h"
#include "mel/tools.h"

namespace host::mel {

class CommandRegistry;
class PluginService;

/// What a built-in command works with.
struct CommandContext {
    graph::Graph& graph;
    CommandRegistry& registry;
    Interpreter& interpreter;
};

using CommandFunction = std::function<CommandResult(CommandContext&, const ParsedArguments&)>;

struct ExecuteOptions {
    /// Keep undo entries for what the text does. Inside a plug-in's command they become part of that
    /// command's entry.
    bool undo = false;
    /// Show the result.
    bool display = false;
};

/// The arguments of a call by a language with types. Nothing in them is text unless it is meant as text.
struct TypedArguments {
    struct Flag {
        std::string name{};           ///< short or long, without dash
        std::vector<Value> values{};  ///< of one use
    };
    bool isQuery = false;
    bool isEdit = false;
    std::vector<Flag> flags{};     ///< in the given order; a flag that is used twice stands here twice
    std::vector<Value> objects{};  ///< names and values; an array counts as its elements
};

/// What kind of failure an error is, for languages with kinds of exceptions.
enum class ErrorKind { Other, NoObject, SeveralObjects, Arguments };

/// All script commands of the host, including those of plug-ins, and the engine that runs them.
///
/// While a built-in command runs, a new list of changes is the graph's recorder. If the command fails, the
/// list is undone, so that a command that fails changes nothing. If it succeeds and changed something, the
/// list becomes an undo entry.
///
/// Owns the interpreter that runs the scripts. Belongs to the main thread.
class CommandRegistry final : public CommandTable {
  public:
    CommandRegistry(graph::Graph& graph, Output& output, const InterpreterOptions& options = {});
    ~CommandRegistry() override;

    graph::Graph& graph() { return graph_; }
    Interpreter& interpreter() { return interpreter_; }

    /// Adds a built-in command.
    /// @param uncovered  flags, separated by blanks, that the command has in Maya but not here: the error
    ///                   then says so
    /// @return false if the name is taken
    bool add(const std::string& name, Syntax syntax, CommandFunction run, std::string_view uncovered = {});
    /// Adds a plug-in's command.
    /// @param owner  the plug-in's name
    /// @return false if the name is taken
    bool addPlugin(const std::string& name, const std::string& owner, std::shared_ptr<PluginCommand> command);
    /// Removes a command of a plug-in.
    /// @return false if the owner has no such command
    bool removePlugin(const std::string& name, const std::string& owner);

    bool has(std::string_view name) const override;
    CommandResult call(std::string_view name, std::vector<Value>&& arguments,
                       Interpreter& interpreter) override;
    std::optional<CommandResult> loadProcedure(std::string_view name, Interpreter& interpreter) override;
    /// Runs script files by the name of the procedure that they define; nothing if there is no such file.
    using ProcedureLoader = std::function<std::optional<CommandResult>(const std::string&, Interpreter&)>;
    void setProcedureLoader(ProcedureLoader loader) { loadProcedure_ = std::move(loader); }

    /// Runs a command for a caller outside any script, and then what was deferred. Shows no error of the
    /// command.
    CommandResult callParsed(const std::string& name, TypedArguments&& arguments);
    /// The kind of a failure, by its text, which is part of the host's interface.
    static ErrorKind kindOf(const CommandResult& result);

    /// All commands by ascending name.
    std::vector<std::string> names() const;
    /// Syntax of a command; null if there is no such command or a plug-in's command declares none.
    const Syntax* syntax(std::string_view name) const;
    /// Whether a command has a flag of this name, without dash, in Maya but not here.
    bool isUncovered(std::string_view command, const std::string& flag) const;
    /// Name of the plug-in that registered a command; empty for built-in and unknown commands.
    std::string owner(std::string_view name) const;

    /// Runs text for a plug-in or for a built-in command (see ExecuteOptions). Errors are shown.
    RunResult executeText(std::string_view text, const ExecuteOptions& options = {});

    /// Runs a script, then the texts that it deferred. For the outermost caller: program and prompt. The
    /// result is a failure of the script, or else the first failure of a deferred text.
    RunResult run(std::string_view text, std::string_view sourceName = {}, const RunOptions& options = {});
    /// Defers text until the outermost script has ended. Texts run in the order of these calls. Those of low
    /// priority come after the others.
    void defer(std::string text, bool lowPriority = false);
    /// The same for something else than a text. It must not throw.
    void defer(std::function<void()> work, bool lowPriority = false);
    /// Runs what was deferred, unless a script is running: then its end does.
    RunResult runDeferred();

    /// Counts changes of the set of commands.
    std::uint64_t version() const { return version_; }

    /// One step of the undo queue.
    /// @return false if there is nothing to undo (redo)
    bool undo();
    bool redo();

    /// The plug-in loader; null if there is none. It must outlive the registry, or be replaced first.
    PluginService* plugins() const { return plugins_; }
    void setPlugins(PluginService* plugins) { plugins_ = plugins; }

    ToolBox& tools() { return tools_; }

    /// Exit status that `quit` asked for.
    int exitStatus() const { return exitStatus_; }
    void setExitStatus(int status) { exitStatus_ = status; }

  private:
    struct Command {
        Syntax syntax;
        CommandFunction run;                    // empty for a plug-in's command
        std::shared_ptr<PluginCommand> plugin;  // null for a built-in command
        std::string owner;
        std::string uncovered;  // flag names, each between blanks
    };

    CommandResult runBuiltin(const Command& command, std::vector<Value>&& arguments, std::string&& line);
    CommandResult runPlugin(const Command& command, std::vector<Value>&& arguments, std::string&& line);
    /// @param line  the command line, which names the entry
    void keep(std::unique_ptr<graph::UndoEntry> entry, std::string&& line);

    graph::Graph& graph_;
    std::map<std::string, std::shared_ptr<Command>, std::less<>> commands_;
    graph::EntryGroup* collector_ = nullptr;  // of the running plug-in command
    bool isSuspended_ = false;                // no undo entries are kept
    using Deferred = std::variant<std::string, std::function<void()>>;
    std::vector<Deferred> deferred_;
    std::vector<Deferred> deferredLow_;
    bool isIdling_ = false;  // what was deferred runs
    std::uint64_t version_ = 0;
    PluginService* plugins_ = nullptr;
    ProcedureLoader loadProcedure_;
    ToolBox tools_;
    int exitStatus_ = 0;
    Interpreter interpreter_;
};

}  // namespace host::mel
