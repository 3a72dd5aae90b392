// Statements of scene files that scripts use as well: fileInfo, requires and currentUnit.

#include <algorithm>
#include <memory>
#include <tuple>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "scene/sceneSession.h"
#include "scene/sceneUnits.h"

namespace host::commands {

namespace {

using scene::SceneSession;

CommandResult queryInfo(const std::vector<std::string>& words, const SceneSession& session) {
    std::vector<std::string> result;
    for (const auto& [key, text] : session.fileInfo()) {
        if (words.empty()) {
            result.push_back(key);
            result.push_back(text);
        } else if (key == words.front()) {
            result.push_back(text);
        }
    }
    return CommandResult::success(Value(std::move(result)));
}

CommandResult fileInfo(const ParsedArguments& arguments, SceneSession& session) {
    const std::vector<std::string> words = arguments.objectNames();
    if (arguments.isQuery()) return queryInfo(words, session);
    if (arguments.isSet("remove")) {
        const std::string key = arguments.text("remove");
        if (!session.removeFileInfo(key))
            return CommandResult::failure("fileInfo: There is no text of the key '" + key + "'.");
        return CommandResult::success();
    }
    if (words.size() != 2) return CommandResult::failure("fileInfo: A key and a text are needed.");
    session.setFileInfo(words[0], words[1]);
    return CommandResult::success();
}

/// No version is refused, and what a plug-in of a scene would read is kept without it.
CommandResult require(CommandContext& context, const ParsedArguments& arguments) {
    const std::string name = arguments.objectNames().front();
    if (name != "maya") {
        context.graph.messages().warning("requires: This host loads no plug-in by its name. Load '" + name +
                                         "' with loadPlugin if there is one for it.");
    }
    return CommandResult::success();
}

/// Only the unit of time can be another one. A file keeps the one that its numbers are in.
CommandResult currentUnit(CommandContext& context, const ParsedArguments& arguments,
                          const SceneSession& session) {
    scene::SceneUnits wanted;
    wanted.framesPerSecond = context.graph.framesPerSecond();
    const std::tuple<const char*, const char*, std::string> units[] = {
        {"linear", "-l", "cm"},
        {"angle", "-a", "deg"},
        {"time", "-t", scene::timeUnitName(wanted.framesPerSecond)}};
    for (const auto& [flag, statementFlag, now] : units) {
        if (!arguments.isSet(flag)) continue;
        if (arguments.isQuery()) return CommandResult::success(now);
        const std::string name = arguments.text(flag);
        const bool isKnown = scene::setUnit(wanted, statementFlag, name);
        if (!isKnown || wanted.centimetres != 1.0 || wanted.radians != 0.0)
            return CommandResult::failure("currentUnit: The unit '" + name +
                                          "' is not covered by this host.");
    }
    if (wanted.framesPerSecond == context.graph.framesPerSecond()) return CommandResult::success();
    if (!session.document().isNew) {
        return CommandResult::failure(
            "currentUnit: The times of an opened scene are in its own unit. Only that of a new scene can be "
            "changed by this host.");
    }
    context.graph.setFramesPerSecond(wanted.framesPerSecond);
    return CommandResult::success();
}

}  // namespace

void registerSceneStatementCommands(mel::CommandRegistry& registry,
                                    const std::shared_ptr<SceneSession>& session) {
    Syntax info;
    info.flag("rm", "remove", {kText}).enableQuery().objects(ObjectKind::Strings, 0, 2);
    registry.add("fileInfo", info, [session](CommandContext&, const ParsedArguments& arguments) {
        return fileInfo(arguments, *session);
    });

    Syntax requirement;
    requirement.multiUseFlag("nt", "nodeType", {kText}).multiUseFlag("dt", "dataType", {kText});
    requirement.objects(ObjectKind::Strings, 2, 2);
    registry.add("requires", requirement, require);

    Syntax units;
    units.flag("l", "linear", {kText}).flag("a", "angle", {kText}).flag("t", "time", {kText}).enableQuery();
    registry.add(
        "currentUnit", units,
        [session](CommandContext& context, const ParsedArguments& arguments) {
            return currentUnit(context, arguments, *session);
        },
        "f fullName ua updateAnimation");
}

}  // namespace host::commands
