// The command file: scenes and mesh files.

#include <algorithm>
#include <cctype>
#include <chrono>
#include <filesystem>
#include <memory>

#include "commands/commands.h"
#include "commands/objFiles.h"
#include "commands/progressLine.h"
#include "platform/streams.h"
#include "scene/sceneSession.h"

namespace host::commands {

namespace {

using scene::SceneSession;

CommandResult failure(std::string error) {
    return CommandResult::failure(std::move(error));
}

/// What a file holds, by its type's name or else its suffix.
enum class FileKind { Scene, Mesh, Binary, Unknown };

FileKind kindOf(const ParsedArguments& arguments, const std::string& path) {
    const std::string type = arguments.text("type");
    if (type == "mayaAscii") return FileKind::Scene;
    if (type == "mayaBinary") return FileKind::Binary;
    if (type == "OBJ" || type == "OBJexport") return FileKind::Mesh;
    if (!type.empty()) return FileKind::Unknown;
    std::string suffix = std::filesystem::u8path(path).extension().u8string();
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (suffix == ".ma") return FileKind::Scene;
    if (suffix == ".mb") return FileKind::Binary;
    return FileKind::Mesh;
}

constexpr const char* kBinary =
    "file: Binary scenes are not covered by this host. Save the scene as mayaAscii (.ma) in Maya and use "
    "that file.";

/// The flag of the one action that a call asks for; empty for none or several.
std::string actionOf(const ParsedArguments& arguments) {
    std::string action;
    for (const char* flag : {"open", "import", "save", "rename", "newFile", "exportSelected", "exportAll"}) {
        if (!arguments.isSet(flag)) continue;
        if (!action.empty()) return {};
        action = flag;
    }
    return action;
}

void reportOpened(CommandContext& context, const SceneSession& session) {
    for (const std::string& line : session.report())
        context.graph.messages().info(line);
}

CommandResult newScene(const ParsedArguments& arguments, SceneSession& session) {
    if (!arguments.objectNames().empty()) return failure("file: A name for a new scene is not covered.");
    if (!arguments.isSet("force") && session.isModified()) return failure("Unsaved changes.");
    session.startNew();
    return CommandResult::success("untitled");
}

CommandResult openScene(CommandContext& context, const ParsedArguments& arguments, SceneSession& session,
                        const std::string& path) {
    switch (kindOf(arguments, path)) {
        case FileKind::Binary:
            return failure(kBinary);
        case FileKind::Scene:
            break;
        default:
            return failure("file: Only scenes (.ma) can be opened. Use -import for " + path + '.');
    }
    if (!arguments.isSet("force") && session.isModified()) return failure("Unsaved changes.");
    std::string error = session.open(path);
    if (!error.empty()) return failure(std::move(error));
    reportOpened(context, session);
    return CommandResult::success(session.path());
}

/// Where imported nodes go, without a colon in front or at the end. A namespace that exists is joined only on
/// demand.
Found<std::string> importNamespace(const graph::Graph& graph, const ParsedArguments& arguments) {
    if (!arguments.isSet("namespace")) return {graph.currentNamespace(), {}};
    const std::string wanted = arguments.text("namespace");
    if (wanted == ":") return {};
    Found<std::string> space = legalName(graph, wanted);
    if (!space.ok() || arguments.boolean("mergeNamespacesOnClash")) return space;
    const std::string first = space.value;
    for (int number = 1; graph.namespaces().count(space.value) != 0; ++number)
        space.value = first + std::to_string(number);
    return space;
}

CommandResult importScene(CommandContext& context, const ParsedArguments& arguments, SceneSession& session,
                          const std::string& path) {
    const graph::Graph& graph = context.graph;
    const Found<std::string> space = importNamespace(graph, arguments);
    if (!space.ok()) return failure("file: '" + arguments.text("namespace") + "' is no name of a namespace.");
    std::vector<graph::NodeRef> created;
    std::string error = session.import(path, space.value, created);
    if (!error.empty()) return failure(std::move(error));
    if (!arguments.isSet("returnNewNodes")) return CommandResult::success(path);
    std::vector<std::string> names;
    names.reserve(created.size());
    for (const graph::NodeRef& node : created)
        names.push_back(graph.fullPath(*node));
    return CommandResult::success(Value(std::move(names)));
}

CommandResult saveScene(const ParsedArguments& arguments, SceneSession& session) {
    if (session.path().empty()) {
        return failure(
            "A file must be given a name before saving. Use file -rename first, then try saving again.");
    }
    if (kindOf(arguments, session.path()) != FileKind::Scene) return failure(kBinary);
    std::string error = session.save();
    return error.empty() ? CommandResult::success(session.path()) : failure(std::move(error));
}

CommandResult exportScene(const graph::Graph& graph, const ParsedArguments& arguments, SceneSession& session,
                          const std::string& path) {
    std::error_code ignored;
    if (!arguments.isSet("force") && std::filesystem::exists(std::filesystem::u8path(path), ignored))
        return failure("file: " + path + " exists; -force replaces it.");
    std::vector<graph::NodeRef> selected;
    for (const graph::SelectionItem& item : graph.selection().items())
        selected.push_back(item.node);
    if (arguments.isSet("exportSelected") && selected.empty())
        return failure("Nothing is currently selected.");
    std::string error =
        arguments.isSet("exportSelected") ? session.exportNodes(path, selected) : session.exportTo(path);
    return error.empty() ? CommandResult::success(path) : failure(std::move(error));
}

CommandResult query(const ParsedArguments& arguments, const SceneSession& session) {
    if (arguments.isSet("sceneName")) return CommandResult::success(session.path());
    if (arguments.isSet("modified") || arguments.isSet("anyModified"))
        return CommandResult::success(session.isModified());
    if (arguments.isSet("type")) return CommandResult::success(Value(std::vector<std::string>{"mayaAscii"}));
    if (arguments.isSet("reference")) return CommandResult::success(Value(session.document().references));
    if (arguments.isSet("list")) {
        std::vector<std::string> files{session.path()};
        files.insert(files.end(), session.document().references.begin(), session.document().references.end());
        return CommandResult::success(Value(std::move(files)));
    }
    const std::vector<std::string> names = arguments.objectNames();
    if (arguments.isSet("location"))
        return CommandResult::success(session.path().empty() ? "unknown" : session.path());
    if (arguments.isSet("expandName") && !names.empty()) {
        std::error_code ignored;
        return CommandResult::success(
            std::filesystem::absolute(std::filesystem::u8path(names.front()), ignored).generic_u8string());
    }
    return failure("file: This query is not covered by this host.");
}

CommandResult file(CommandContext& context, const ParsedArguments& arguments, SceneSession& session) {
    if (arguments.isQuery()) return query(arguments, session);
    if (arguments.isSet("reference")) {
        return failure(
            "file: References cannot be made by this host. Those of an opened scene are kept, but not "
            "loaded.");
    }
    const std::string action = actionOf(arguments);
    if (action.empty()) {
        return failure(
            "file: Exactly one of -open, -import, -save, -rename, -newFile, -exportSelected and -exportAll "
            "is needed.");
    }
    if (action == "newFile") return newScene(arguments, session);
    if (action == "save") return saveScene(arguments, session);
    if (action == "rename") {
        session.rename(arguments.text("rename"));
        return CommandResult::success(session.path());
    }
    const std::vector<std::string> names = arguments.objectNames();
    if (names.empty()) return failure("file: No file was named.");
    const std::string& path = names.front();
    if (action == "open") return openScene(context, arguments, session, path);
    const FileKind kind = kindOf(arguments, path);
    if (kind == FileKind::Binary) return failure(kBinary);
    if (action == "import")
        return kind == FileKind::Scene ? importScene(context, arguments, session, path)
                                       : importObj(context, arguments, path);
    return kind == FileKind::Scene ? exportScene(context.graph, arguments, session, path)
                                   : exportObj(context, arguments, path);
}

}  // namespace

void registerFileCommand(mel::CommandRegistry& registry, const std::shared_ptr<SceneSession>& session) {
    Syntax syntax;
    syntax.flag("o", "open")
        .flag("i", "import")
        .flag("s", "save")
        .flag("rn", "rename", {kText})
        .flag("new", "newFile");
    syntax.flag("es", "exportSelected").flag("ea", "exportAll").flag("r", "reference");
    syntax.flag("f", "force").flag("typ", "type", {kText}).flag("op", "options", {kText});
    syntax.flag("rnn", "returnNewNodes").flag("ns", "namespace", {kText});
    syntax.flag("sn", "sceneName").flag("mf", "modified").flag("amf", "anyModified").flag("l", "list");
    syntax.flag("exn", "expandName").flag("loc", "location");
    // Nothing is loaded or run by opening a scene, and no version is refused.
    syntax.flag("iv", "ignoreVersion").flag("pr", "preserveReferences").flag("pmt", "prompt", {kSwitch});
    syntax.flag("esn", "executeScriptNodes", {kSwitch}).flag("lrd", "loadReferenceDepth", {kText});
    syntax.flag("mnc", "mergeNamespacesOnClash", {kSwitch});
    syntax.enableQuery().objects(ObjectKind::Strings, 0, 1);
    const auto progress = std::make_shared<ProgressLine>(
        [] {
            const auto now = std::chrono::steady_clock::now().time_since_epoch();
            return std::chrono::duration<double>(now).count();
        },
        platform::writeToTerminal);
    session->setProgress([progress](double part, std::uint64_t bytes) { progress->show(part, bytes); });
    registry.add(
        "file", syntax,
        [session, progress](CommandContext& context, const ParsedArguments& arguments) {
            progress->begin();
            CommandResult result = file(context, arguments, *session);
            progress->end();
            return result;
        },
        "rr removeReference ur unloadReference lr loadReference dr deferReference ex exists ch "
        "constructionHistory chn channels con constraints exp expressions sh shader ra renameAll rpr "
        "renamingPrefix gr groupReference gn groupName dns defaultNamespace uns usingNamespaces sa "
        "selectAll");
}

}  // namespace host::commands
