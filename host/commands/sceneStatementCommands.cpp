// Statements of scene files that scripts use as well: fileInfo, requires, lockNode,
// relationship, instanceable and currentUnit.

#include <algorithm>
#include <memory>
#include <tuple>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "scene/sceneSession.h"
#include "scene/sceneUnits.h"
#include "scene/words.h"
#include "text/units.h"

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

CommandResult lockNode(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    const std::vector<graph::NodeRef> nodes = nodesOf(items.value);
    if (!arguments.isQuery()) {
        for (const graph::NodeRef& node : nodes)
            context.graph.setLocked(*node, arguments.boolean("lock", true));
        return CommandResult::success();
    }
    std::vector<int> locks;
    locks.reserve(nodes.size());
    for (const graph::NodeRef& node : nodes)
        locks.push_back(node->isLocked() ? 1 : 0);
    return CommandResult::success(Value(std::move(locks)));
}

/// The statement of a call, which means nothing here: it is saved with the scene.
CommandResult keepStatement(CommandContext& context, SceneSession& session, scene::AddedMention mention,
                            const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        const Found<graph::NodeRef> node = findOneNode(context.graph, name.substr(0, name.find('.')));
        if (!node.ok()) return CommandResult::failure(node.error);
        mention.nodes.push_back(node.value);
        mention.text += ' ' + scene::inQuotes(name);
    }
    mention.text += ';';
    session.addMention(std::move(mention));
    return CommandResult::success();
}

CommandResult relationship(CommandContext& context, const ParsedArguments& arguments, SceneSession& session) {
    std::vector<std::string> words = arguments.objectNames();
    if (words.size() < 3)
        return CommandResult::failure("relationship: A kind, a node and at least one member are needed.");
    const std::string kind = words.front();
    words.erase(words.begin());
    // The kind is a string like the names, but names nothing.
    return keepStatement(context, session, {"relationship " + scene::inQuotes(kind), {nullptr}}, words);
}

CommandResult instanceable(CommandContext& context, const ParsedArguments& arguments, SceneSession& session) {
    const std::vector<std::string> names = arguments.objectNames();
    if (names.empty() || !arguments.isSet("allow"))
        return CommandResult::failure("instanceable: -allow and a node are needed.");
    return keepStatement(context, session,
                         {arguments.boolean("allow") ? "instanceable -a 1" : "instanceable -a 0", {}}, names);
}

/// Only the unit of time can be another one. A file keeps the one that its numbers are in.
CommandResult currentUnit(CommandContext& context, const ParsedArguments& arguments,
                          const SceneSession& session) {
    scene::SceneUnits wanted;
    wanted.framesPerSecond = context.graph.framesPerSecond();
    const std::tuple<const char*, const char*, std::string> units[] = {
        {"linear", "-l", "cm"},
        {"angle", "-a", "deg"},
        {"time", "-t", text::timeUnitName(wanted.framesPerSecond)}};
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

    Syntax locking;
    locking.flag("l", "lock", {kSwitch}).enableQuery().objects(ObjectKind::Strings);
    registry.add("lockNode", locking, lockNode, "ic ignoreComponents ln lockName lu lockUnpublished");

    Syntax relating;
    relating.objects(ObjectKind::Strings);
    registry.add(
        "relationship", relating,
        [session](CommandContext& context, const ParsedArguments& arguments) {
            return relationship(context, arguments, *session);
        },
        "b break rd relationshipData");

    Syntax instancing;
    instancing.flag("a", "allow", {kSwitch}).objects(ObjectKind::Strings);
    registry.add("instanceable", instancing,
                 [session](CommandContext& context, const ParsedArguments& arguments) {
                     return instanceable(context, arguments, *session);
                 });

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
