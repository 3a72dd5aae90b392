#include "mel/commandRegistry.h"

#include <new>
#include <utility>

#include "graph/scopedValue.h"

namespace host::mel {

namespace {

/// Holds interrupts back. An undo, and a plug-in's command, whose scripts may be its clean-up, must end
/// first.
class InterruptHold {
  public:
    explicit InterruptHold(Interpreter& interpreter) : interpreter_(interpreter) {
        interpreter.holdInterrupts(true);
    }
    ~InterruptHold() { interpreter_.holdInterrupts(false); }
    InterruptHold(const InterruptHold&) = delete;
    InterruptHold& operator=(const InterruptHold&) = delete;

  private:
    Interpreter& interpreter_;
};

constexpr const char* kOutOfMemory = "Out of memory.";

/// The parser's error, or a more exact one if only this host lacks the flag.
std::string withUncovered(const std::string& error, const std::string& uncovered) {
    constexpr std::string_view kStart = "Invalid flag '-";
    if (error.compare(0, kStart.size(), kStart) != 0) return error;
    const std::string flag = error.substr(kStart.size(), error.find('\'', kStart.size()) - kStart.size());
    if (uncovered.find(' ' + flag + ' ') == std::string::npos) return error;
    return "Flag '-" + flag + "' is not covered by this host.";
}

/// A command line as the undo queue names it. It is cut after so many characters that a list of vertices
/// takes no memory.
std::string lineOf(std::string_view name, const std::vector<Value>& words) {
    constexpr std::size_t kLongest = 120;
    std::string line(name);
    for (const Value& word : words) {
        if (line.size() >= kLongest || word.isArray()) return line + " ...";
        line.append(1, ' ');
        if (const auto* text = word.getIf<std::string>()) {
            line.append(*text, 0, kLongest);
        } else {
            line.append(word.toString());
        }
    }
    return line;
}

/// Runs a script. If it fails and no other script is running, the undo chunks that it left open are closed:
/// later actions do not belong to them.
RunResult runScript(CommandRegistry& registry, std::string_view text, std::string_view sourceName,
                    const RunOptions& options) {
    graph::UndoQueue& queue = registry.graph().undoQueue();
    const int openBefore = queue.openChunks();
    RunResult result = registry.interpreter().run(text, sourceName, options);
    if (result.ok || registry.interpreter().isRunning() || queue.openChunks() <= openBefore) return result;
    while (queue.openChunks() > openBefore)
        queue.closeChunk();
    registry.graph().messages().warning(
        "The script failed inside an undo chunk that it had opened. The chunk was closed.");
    return result;
}

}  // namespace

CommandRegistry::CommandRegistry(graph::Graph& graph, Output& output, const InterpreterOptions& options)
    : graph_(graph), interpreter_(*this, output, options) {}

CommandRegistry::~CommandRegistry() = default;

bool CommandRegistry::add(const std::string& name, Syntax syntax, CommandFunction run,
                          std::string_view uncovered) {
    if (has(name)) return false;
    ++version_;
    commands_[name] = std::make_shared<Command>(
        Command{std::move(syntax), std::move(run), nullptr, {}, ' ' + std::string(uncovered) + ' '});
    return true;
}

bool CommandRegistry::addPlugin(const std::string& name, const std::string& owner,
                                std::shared_ptr<PluginCommand> command) {
    if (has(name) || Interpreter::isBuiltinFunction(name)) return false;
    commands_[name] = std::make_shared<Command>(Command{Syntax(), nullptr, std::move(command), owner, {}});
    ++version_;
    return true;
}

bool CommandRegistry::removePlugin(const std::string& name, const std::string& owner) {
    const auto found = commands_.find(name);
    if (found == commands_.end() || found->second->plugin == nullptr || found->second->owner != owner)
        return false;
    commands_.erase(found);
    ++version_;
    return true;
}

bool CommandRegistry::has(std::string_view name) const {
    return commands_.find(name) != commands_.end();
}

CommandResult CommandRegistry::call(std::string_view name, std::vector<Value>&& arguments,
                                    Interpreter& /*interpreter*/) {
    const auto found = commands_.find(name);
    if (found == commands_.end())
        return CommandResult::failure("Cannot find procedure \"" + std::string(name) + "\".");
    // The command may remove itself from the registry (unloadPlugin).
    const std::shared_ptr<Command> command = found->second;
    std::string line = lineOf(name, arguments);
    return command->plugin != nullptr ? runPlugin(*command, std::move(arguments), std::move(line))
                                      : runBuiltin(*command, std::move(arguments), std::move(line));
}

std::optional<CommandResult> CommandRegistry::loadProcedure(std::string_view name, Interpreter& interpreter) {
    return loadProcedure_ ? loadProcedure_(std::string(name), interpreter) : std::nullopt;
}

CommandResult CommandRegistry::callParsed(const std::string& name, TypedArguments&& arguments) {
    std::vector<Value> words;
    words.reserve(2 + 2 * arguments.flags.size() + arguments.objects.size());
    if (arguments.isQuery) words.emplace_back("-query");
    if (arguments.isEdit) words.emplace_back("-edit");
    for (TypedArguments::Flag& flag : arguments.flags) {
        words.emplace_back('-' + flag.name);
        for (Value& value : flag.values)
            words.push_back(std::move(value));
    }
    for (Value& object : arguments.objects)
        words.push_back(std::move(object));
    CommandResult result = call(name, std::move(words), interpreter_);
    runDeferred();
    return result;
}

ErrorKind CommandRegistry::kindOf(const CommandResult& result) {
    const auto begins = [&](std::string_view start) {
        return result.error.compare(0, start.size(), start) == 0;
    };
    if (begins("No object matches name: ")) return ErrorKind::NoObject;
    if (begins("More than one object matches name: ")) return ErrorKind::SeveralObjects;
    for (const char* start : {"Invalid flag '", "Flag '", "Argument '", "Not enough objects or values.",
                              "Too many objects or values.", "The query and edit flags"}) {
        if (begins(start)) return ErrorKind::Arguments;
    }
    return ErrorKind::Other;
}

CommandResult CommandRegistry::runBuiltin(const Command& command, std::vector<Value>&& arguments,
                                          std::string&& line) {
    const ArgumentParseResult parsed =
        parseArguments(command.syntax, std::move(arguments), graph_.framesPerSecond());
    if (!parsed.ok()) return CommandResult::failure(withUncovered(parsed.error, command.uncovered));
    CommandContext context{graph_, *this, interpreter_};
    auto changes = std::make_unique<graph::ChangeList>();
    CommandResult result;
    {
        const graph::RecordingScope recording(graph_, changes.get());
        try {
            result = command.run(context, parsed.arguments);
        } catch (const std::bad_alloc&) {
            result = CommandResult::failure(kOutOfMemory);
        }
    }
    if (!result.ok) {
        changes->undo(graph_);
    } else if (!changes->empty()) {
        keep(std::move(changes), std::move(line));
    }
    return result;
}

CommandResult CommandRegistry::runPlugin(const Command& command, std::vector<Value>&& arguments,
                                         std::string&& line) {
    const InterruptHold hold(interpreter_);
    auto nested = std::make_unique<graph::EntryGroup>();
    PluginCallResult outcome;
    {
        const graph::RecordingScope silent(graph_, nullptr);
        const graph::ScopedValue<graph::EntryGroup*> collecting(collector_, nested.get());
        try {
            outcome = command.plugin->call(std::move(arguments));
        } catch (const std::bad_alloc&) {
            outcome = {CommandResult::failure(kOutOfMemory), nullptr};
        }
    }
    if (!outcome.result.ok) return std::move(outcome.result);
    if (nested->empty()) {
        if (outcome.undo != nullptr) keep(std::move(outcome.undo), std::move(line));
        return std::move(outcome.result);
    }
    if (outcome.undo != nullptr) nested->add(std::move(outcome.undo));
    keep(std::move(nested), std::move(line));
    return std::move(outcome.result);
}

void CommandRegistry::keep(std::unique_ptr<graph::UndoEntry> entry, std::string&& line) {
    if (isSuspended_) return;
    entry->setName(std::move(line));
    if (collector_ != nullptr) {
        collector_->add(std::move(entry));
    } else {
        graph_.undoQueue().push(std::move(entry));
    }
}

std::vector<std::string> CommandRegistry::names() const {
    std::vector<std::string> result;
    result.reserve(commands_.size());
    for (const auto& entry : commands_)
        result.push_back(entry.first);
    return result;
}

const Syntax* CommandRegistry::syntax(std::string_view name) const {
    const auto found = commands_.find(name);
    if (found == commands_.end()) return nullptr;
    const Command& command = *found->second;
    return command.plugin != nullptr ? command.plugin->syntax() : &command.syntax;
}

bool CommandRegistry::isUncovered(std::string_view command, const std::string& flag) const {
    const auto found = commands_.find(command);
    return found != commands_.end() && found->second->uncovered.find(' ' + flag + ' ') != std::string::npos;
}

std::string CommandRegistry::owner(std::string_view name) const {
    const auto found = commands_.find(name);
    return found == commands_.end() ? std::string() : found->second->owner;
}

RunResult CommandRegistry::executeText(std::string_view text, const ExecuteOptions& options) {
    const graph::ScopedValue<bool> suspending(isSuspended_, isSuspended_ || !options.undo);
    RunOptions runOptions;
    runOptions.showErrors = true;
    runOptions.isComposed = true;
    runOptions.echoResult = options.display;
    return runScript(*this, text, {}, runOptions);
}

RunResult CommandRegistry::run(std::string_view text, std::string_view sourceName,
                               const RunOptions& options) {
    RunResult result = runScript(*this, text, sourceName, options);
    RunResult idle = runDeferred();
    return result.ok ? std::move(idle.ok ? result : idle) : std::move(result);
}

RunResult CommandRegistry::runDeferred() {
    RunResult failed;
    if (interpreter_.isRunning() || isIdling_) return failed;
    const graph::ScopedValue<bool> idling(isIdling_, true);
    // What runs may defer more.
    while (!deferred_.empty() || !deferredLow_.empty()) {
        std::vector<Deferred> all;
        all.swap(deferred_.empty() ? deferredLow_ : deferred_);
        for (const Deferred& entry : all) {
            if (const auto* work = std::get_if<std::function<void()>>(&entry)) {
                (*work)();
                continue;
            }
            RunResult result = runScript(*this, std::get<std::string>(entry), {}, {});
            if (!result.ok && failed.ok) failed = std::move(result);
        }
    }
    return failed;
}

void CommandRegistry::defer(std::string text, bool lowPriority) {
    (lowPriority ? deferredLow_ : deferred_).emplace_back(std::move(text));
}

void CommandRegistry::defer(std::function<void()> work, bool lowPriority) {
    (lowPriority ? deferredLow_ : deferred_).emplace_back(std::move(work));
}

bool CommandRegistry::undo() {
    const InterruptHold hold(interpreter_);
    const graph::RecordingScope silent(graph_, nullptr);
    const graph::ScopedValue<bool> suspending(isSuspended_, true);
    return graph_.undoQueue().undo(graph_);
}

bool CommandRegistry::redo() {
    const InterruptHold hold(interpreter_);
    const graph::RecordingScope silent(graph_, nullptr);
    const graph::ScopedValue<bool> suspending(isSuspended_, true);
    return graph_.undoQueue().redo(graph_);
}

}  // namespace host::mel
