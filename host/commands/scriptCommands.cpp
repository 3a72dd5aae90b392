// The commands about scripts and the host, from source to quit, about and internalVar.

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "geometry/textFile.h"
#include "platform/library.h"
#include "platform/libraryFolder.h"

namespace host::commands {

namespace {

/// Folders to search for scripts: the current one, those of the user, and that of the kit beside the host's
/// folder.
std::vector<std::filesystem::path> scriptFolders() {
    std::vector<std::filesystem::path> folders{std::filesystem::path()};
    const char* variable = std::getenv("MAYA_SCRIPT_PATH");
    std::string_view rest = variable != nullptr ? variable : "";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(platform::searchPathSeparator()), rest.size());
        if (end > 0) folders.push_back(std::filesystem::u8path(rest.substr(0, end)));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    folders.push_back(std::filesystem::u8path(platform::libraryFolder()).parent_path() / "scripts");
    return folders;
}

/// A script file by name, with or without its suffix.
std::optional<std::string> findScript(const std::string& name) {
    std::error_code ignored;
    for (const std::filesystem::path& folder : scriptFolders()) {
        for (const char* suffix : {"", ".mel"}) {
            const std::filesystem::path path = folder / std::filesystem::u8path(name + suffix);
            if (std::filesystem::is_regular_file(path, ignored)) return path.generic_u8string();
        }
    }
    return std::nullopt;
}

CommandResult runScript(const std::string& path, mel::Interpreter& interpreter) {
    const geometry::FileText file = geometry::readTextFile(path);
    if (!file.ok()) return CommandResult::failure(file.error);
    return interpreter.run(file.text, path).toCommandResult();
}

std::optional<CommandResult> loadProcedure(const std::string& name, mel::Interpreter& interpreter) {
    // Words that are no names are no files either: "../x".
    const bool isName = std::all_of(name.begin(), name.end(),
                                    [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; });
    const std::optional<std::string> path = isName ? findScript(name + ".mel") : std::nullopt;
    return path ? std::optional(runScript(*path, interpreter)) : std::nullopt;
}

CommandResult source(CommandContext& context, const ParsedArguments& arguments) {
    const std::string name = arguments.arguments()[0].toString();
    const std::optional<std::string> path = findScript(name);
    if (!path) return CommandResult::failure("Cannot find file \"" + name + "\" for source statement.");
    return runScript(*path, context.interpreter);
}

CommandResult evalDeferred(CommandContext& context, const ParsedArguments& arguments) {
    context.registry.defer(arguments.arguments()[0].toString(), arguments.isSet("lowestPriority"));
    return CommandResult::success();
}

const char* typeName(ArgumentType type) {
    switch (type) {
        case ArgumentType::Boolean:
            return "on|off";
        case ArgumentType::Int:
            return "Int";
        case ArgumentType::Unsigned:
            return "UnsignedInt";
        case ArgumentType::Double:
            return "Float";
        case ArgumentType::Distance:
            return "Length";
        case ArgumentType::Angle:
            return "Angle";
        case ArgumentType::Time:
            return "Time";
        case ArgumentType::String:
            break;
    }
    return "String";
}

std::string flagLine(const mel::Flag& flag) {
    std::string line = "  -" + flag.shortName;
    if (!flag.longName.empty()) line += " -" + flag.longName;
    for (const ArgumentType type : flag.arguments)
        line += std::string(" ") + typeName(type);
    return line + (flag.multiUse ? " (multi-use)\n" : "\n");
}

std::string synopsis(const std::string& name, const Syntax* syntax) {
    if (syntax == nullptr) return "Synopsis: " + name + "\nNo flag is declared.\n";
    std::string text = "Synopsis: " + name + " [flags]";
    for (const ArgumentType type : syntax->arguments())
        text += std::string(" ") + typeName(type);
    if (syntax->objectKind() != ObjectKind::None) text += " [String...]";
    text += "\nFlags:\n";
    if (syntax->hasEdit()) text += "  -e -edit\n";
    if (syntax->hasQuery()) text += "  -q -query\n";
    for (const mel::Flag& flag : syntax->flags())
        text += flagLine(flag);
    return text;
}

CommandResult help(CommandContext& context, const ParsedArguments& arguments) {
    if (arguments.isSet("list") || arguments.objects().empty()) {
        const std::string pattern = arguments.objects().empty() ? "*" : arguments.objectNames().front();
        std::vector<std::string> names;
        for (std::string& name : context.registry.names()) {
            if (graph::matchesPattern(name, pattern)) names.push_back(std::move(name));
        }
        return CommandResult::success(std::move(names));
    }
    const std::string name = arguments.objectNames().front();
    if (!context.registry.has(name))
        return CommandResult::failure("help: There is no command \"" + name + "\".");
    return CommandResult::success(synopsis(name, context.registry.syntax(name)));
}

CommandResult whatIs(CommandContext& context, const ParsedArguments& arguments) {
    const std::string name = arguments.arguments()[0].toString();
    if (const auto file = context.interpreter.procedureSource(name)) {
        return CommandResult::success(file->empty() ? "Mel procedure entered interactively."
                                                    : "Mel procedure found in: " + *file);
    }
    if (!context.registry.owner(name).empty()) return CommandResult::success("Plug-in Command");
    if (context.registry.has(name) || mel::Interpreter::isBuiltinFunction(name))
        return CommandResult::success("Command");
    if (const auto script = findScript(name + ".mel"))
        return CommandResult::success("Script found in: " + *script);
    return CommandResult::success("Unknown");
}

CommandResult exists(CommandContext& context, const ParsedArguments& arguments) {
    const std::string name = arguments.arguments()[0].toString();
    return CommandResult::success(context.registry.has(name) || context.interpreter.hasProcedure(name) ||
                                  mel::Interpreter::isBuiltinFunction(name) ||
                                  findScript(name + ".mel").has_value());
}

CommandResult quit(CommandContext& context, const ParsedArguments& arguments) {
    context.registry.setExitStatus(arguments.integer("exitCode"));
    context.interpreter.stop();
    return CommandResult::success();
}

CommandResult about(CommandContext&, const ParsedArguments& arguments) {
    if (arguments.isSet("batch")) return CommandResult::success(true);
    if (arguments.isSet("version")) return CommandResult::success("2025");
    if (arguments.isSet("apiVersion")) return CommandResult::success(20250000);
    return CommandResult::failure("about: Nothing was asked for.");
}

/// Folders end with a slash.
CommandResult internalVar(CommandContext&, const ParsedArguments& arguments) {
    if (!arguments.isSet("userTmpDir")) return CommandResult::failure("internalVar: Nothing was asked for.");
    std::error_code failure;
    std::string folder = std::filesystem::temp_directory_path(failure).generic_string();
    if (failure) return CommandResult::failure("internalVar: There is no folder for temporary files.");
    if (folder.back() != '/') folder += '/';
    return CommandResult::success(std::move(folder));
}

}  // namespace

void registerScriptCommands(mel::CommandRegistry& registry) {
    Syntax oneText;
    oneText.addArgument(kText);
    registry.add("source", oneText, source);
    registry.setProcedureLoader(loadProcedure);
    registry.add("whatIs", oneText, whatIs);
    registry.add("exists", oneText, exists);

    Syntax deferring = oneText;
    deferring.flag("lp", "lowestPriority");
    registry.add("evalDeferred", deferring, evalDeferred, "en evaluateNext ls list");

    Syntax helping;
    helping.flag("l", "list").objects(ObjectKind::Strings, 0, 1);
    registry.add("help", helping, help,
                 "bm browserMode doc documentation lng language pm popupMode rng rebuild");

    Syntax quitting;
    quitting.flag("f", "force").flag("a", "abort").flag("ec", "exitCode", {kWhole});
    registry.add("quit", quitting, quit);

    Syntax asking;
    asking.flag("b", "batch").flag("v", "version").flag("api", "apiVersion");
    registry.add("about", asking, about);

    Syntax folders;
    folders.flag("utd", "userTmpDir");
    registry.add("internalVar", folders, internalVar, "uad userAppDir upd userPrefDir uwd userWorkspaceDir");
}

}  // namespace host::commands
