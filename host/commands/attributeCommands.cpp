// The commands aliasAttr, removeMultiInstance and attributeQuery.

#include <algorithm>
#include <optional>

#include "commands/attributeValues.h"
#include "commands/commandSupport.h"
#include "commands/commands.h"

namespace host::commands {

namespace {

/// Whether a name already means something else than this plug on the node.
bool isTaken(const graph::Plug& plug, const std::string& name) {
    const graph::Node& node = *plug.node();
    if (node.findAttribute(name) != nullptr) return true;
    const graph::PlugKey* key = node.aliases().find(name);
    return key != nullptr && !(*key == plug.key());
}

CommandResult setAliases(graph::Graph& graph, const std::vector<std::string>& words) {
    if (words.size() % 2 != 0 || words.empty())
        return CommandResult::failure(
            "aliasAttr: An alias and an attribute are needed for each alias to set.");
    for (std::size_t k = 0; k < words.size(); k += 2) {
        const std::string& alias = words[k];
        const Found<graph::PlugMatch> found = findOnePlug(graph, words[k + 1]);
        if (!found.ok()) return CommandResult::failure(found.error);
        if (!graph::isLegalName(alias))
            return CommandResult::failure("aliasAttr: '" + alias + "' is no legal alias.");
        if (isTaken(found.value.plug, alias))
            return CommandResult::failure("aliasAttr: The name '" + alias + "' is already used on node '" +
                                          graph.uniqueName(*found.value.plug.node()) + "'.");
        graph.setAlias(found.value.plug, alias);
    }
    return CommandResult::success(static_cast<int>(words.size() / 2));
}

CommandResult removeAliases(graph::Graph& graph, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        const Found<graph::PlugMatch> found = findOnePlug(graph, name);
        if (!found.ok()) return CommandResult::failure(found.error);
        const graph::Plug& plug = found.value.plug;
        if (plug.node()->alias(plug.key()).empty())
            return CommandResult::failure("aliasAttr: '" + name + "' has no alias.");
        graph.setAlias(plug, {});
    }
    return CommandResult::success(static_cast<int>(names.size()));
}

CommandResult queryAliases(graph::Graph& graph, const std::vector<std::string>& names) {
    std::vector<std::string> listed;
    for (const std::string& name : names) {
        if (name.find('.') != std::string::npos) {
            const Found<graph::PlugMatch> found = findOnePlug(graph, name);
            if (!found.ok()) return CommandResult::failure(found.error);
            const graph::Plug& plug = found.value.plug;
            if (names.size() == 1) return CommandResult::success(plug.node()->alias(plug.key()));
            listed.push_back(plug.node()->alias(plug.key()));
            continue;
        }
        const Found<graph::NodeRef> node = findOneNode(graph, name);
        if (!node.ok()) return CommandResult::failure(node.error);
        for (const auto& [alias, key] : node.value->aliases()) {
            listed.push_back(alias);
            listed.push_back(graph::Plug(node.value, key).attributePath());
        }
    }
    return CommandResult::success(std::move(listed));
}

CommandResult aliasAttr(CommandContext& context, const ParsedArguments& arguments) {
    const std::vector<std::string> words = arguments.objectNames();
    if (arguments.isQuery()) return queryAliases(context.graph, words);
    if (arguments.isSet("remove")) return removeAliases(context.graph, words);
    return setAliases(context.graph, words);
}

CommandResult removeMultiInstance(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const std::string name = arguments.objectNames().front();
    const Found<graph::PlugMatch> found = findOnePlug(graph, name);
    if (!found.ok()) return CommandResult::failure(found.error);
    const graph::Plug& plug = found.value.plug;
    if (!plug.isElement() || plug.logicalIndex() != found.value.last)
        return CommandResult::failure("removeMultiInstance: '" + name +
                                      "' is no element of a multi-attribute.");
    if (!graph.hasElement(plug)) return CommandResult::success(false);
    const std::vector<graph::Connection> connections = graph.connectionsBelow(plug);
    if (!connections.empty() && !arguments.boolean("break"))
        return CommandResult::failure("removeMultiInstance: '" + name +
                                      "' is connected; use -b true to break its connections first.");
    if (isLocked(plug)) return CommandResult::failure("removeMultiInstance: '" + name + "' is locked.");
    for (const graph::Connection& connection : connections)
        graph.disconnect(connection.destination);
    graph.removeElement(plug);
    return CommandResult::success(true);
}

std::vector<std::string> childNames(const graph::Attribute& attribute) {
    std::vector<std::string> names;
    for (const auto& child : attribute.children())
        names.push_back(child->longName());
    return names;
}

std::optional<Value> rangeAnswer(const graph::Graph& graph, const graph::Attribute& attribute,
                                 const ParsedArguments& arguments) {
    const graph::AttributeSpec& spec = attribute.spec();
    const auto limit = [&](const std::optional<double>& value) {
        return toScriptUnit(graph, spec.kind, value.value_or(0.0));
    };
    if (arguments.isSet("minExists")) return Value(spec.minimum.has_value());
    if (arguments.isSet("maxExists")) return Value(spec.maximum.has_value());
    if (arguments.isSet("rangeExists")) return Value(spec.minimum.has_value() && spec.maximum.has_value());
    if (arguments.isSet("minimum")) return Value(std::vector<double>{limit(spec.minimum)});
    if (arguments.isSet("maximum")) return Value(std::vector<double>{limit(spec.maximum)});
    if (arguments.isSet("range")) return Value(std::vector<double>{limit(spec.minimum), limit(spec.maximum)});
    return std::nullopt;
}

std::vector<double> defaultsOf(const graph::Graph& graph, const graph::Attribute& attribute) {
    if (!attribute.isCompound())
        return {toScriptUnit(graph, attribute.kind(), attribute.spec().defaultValue)};
    std::vector<double> defaults;
    for (const auto& child : attribute.children())
        defaults.push_back(toScriptUnit(graph, child->kind(), child->spec().defaultValue));
    return defaults;
}

std::optional<Value> nameAnswer(const graph::Graph& graph, const graph::Attribute& attribute,
                                const ParsedArguments& arguments) {
    const graph::AttributeSpec& spec = attribute.spec();
    if (arguments.isSet("longName")) return Value(spec.longName);
    if (arguments.isSet("shortName")) return Value(spec.shortName);
    if (arguments.isSet("niceName")) return Value(niceName(spec.longName));
    if (arguments.isSet("attributeType")) return Value(attributeTypeName(attribute));
    if (arguments.isSet("listEnum")) return Value(std::vector<std::string>{graph::enumText(spec.enumNames)});
    if (arguments.isSet("categories")) return Value(spec.categories);
    if (arguments.isSet("listChildren")) return Value(childNames(attribute));
    if (arguments.isSet("listDefault")) return Value(defaultsOf(graph, attribute));
    if (!arguments.isSet("listParent")) return std::nullopt;
    const graph::Attribute* parent = attribute.parent();
    return Value(parent != nullptr ? std::vector<std::string>{parent->longName()}
                                   : std::vector<std::string>());
}

std::optional<Value> traitAnswer(const graph::Attribute& attribute, const ParsedArguments& arguments) {
    const graph::AttributeSpec& spec = attribute.spec();
    if (arguments.isSet("multi")) return Value(spec.isArray);
    if (arguments.isSet("message")) return Value(spec.kind == graph::ValueKind::Message);
    if (arguments.isSet("enum")) return Value(spec.kind == graph::ValueKind::Enum);
    if (arguments.isSet("hidden")) return Value(spec.isHidden);
    if (arguments.isSet("keyable")) return Value(spec.isKeyable);
    if (arguments.isSet("writable")) return Value(!spec.isOutput);
    if (arguments.isSet("numberOfChildren")) return Value(static_cast<int>(attribute.children().size()));
    return std::nullopt;
}

CommandResult attributeQuery(CommandContext& context, const ParsedArguments& arguments) {
    const std::string name = arguments.objectNames().front();
    const graph::Attribute* attribute = nullptr;
    if (arguments.isSet("type")) {
        const graph::NodeType* type = context.graph.types().find(arguments.text("type"));
        if (type == nullptr)
            return CommandResult::failure("attributeQuery: Unknown node type: " + arguments.text("type"));
        attribute = type->find(name);
    } else if (arguments.isSet("node")) {
        const Found<graph::NodeRef> node = findOneNode(context.graph, arguments.text("node"));
        if (!node.ok()) return CommandResult::failure(node.error);
        const graph::PlugMatch match = graph::findPlug(context.graph, node.value, name);
        if (match.ok) attribute = &match.plug.attribute();
    } else {
        return CommandResult::failure("attributeQuery: A node or a node type must be given.");
    }
    if (arguments.isSet("exists")) return CommandResult::success(attribute != nullptr);
    if (attribute == nullptr)
        return CommandResult::failure("attributeQuery: Attribute '" + name + "' was not found.");
    if (auto answer = nameAnswer(context.graph, *attribute, arguments))
        return CommandResult::success(std::move(*answer));
    if (auto answer = rangeAnswer(context.graph, *attribute, arguments))
        return CommandResult::success(std::move(*answer));
    if (auto answer = traitAnswer(*attribute, arguments)) return CommandResult::success(std::move(*answer));
    return CommandResult::failure("attributeQuery: Nothing was asked for.");
}

}  // namespace

void registerAttributeCommands(mel::CommandRegistry& registry) {
    Syntax naming;
    naming.flag("rm", "remove").objects(ObjectKind::Strings, 1).enableQuery();
    registry.add("aliasAttr", naming, aliasAttr);

    Syntax removing;
    removing.flag("b", "break", {kSwitch}).objects(ObjectKind::Strings, 1, 1);
    registry.add("removeMultiInstance", removing, removeMultiInstance, "all");

    Syntax asking;
    asking.flag("n", "node", {kText}).flag("typ", "type", {kText}).flag("ex", "exists");
    asking.flag("ln", "longName").flag("sn", "shortName").flag("nn", "niceName").flag("at", "attributeType");
    asking.flag("le", "listEnum")
        .flag("lc", "listChildren")
        .flag("lp", "listParent")
        .flag("ld", "listDefault");
    asking.flag("nc", "numberOfChildren").flag("mne", "minExists").flag("mxe", "maxExists");
    asking.flag("re", "rangeExists").flag("min", "minimum").flag("max", "maximum").flag("r", "range");
    asking.flag("m", "multi").flag("msg", "message").flag("e", "enum").flag("h", "hidden");
    asking.flag("k", "keyable")
        .flag("w", "writable")
        .flag("ct", "categories")
        .objects(ObjectKind::Strings, 1, 1);
    registry.add(
        "attributeQuery", asking, attributeQuery,
        "affectsAppearance aa affectsWorldspace aws cachedInternally ca channelBox ch "
        "connectable c "
        "indeterminant idt indexMatters im internal i internalGet ig internalSet is localizedListEnum lle "
        "readable rd renderSource rs softMax smx softMaxExists sxe softMin smn softMinExists sme softRange s "
        "softRangeExists sre storable st usedAsColor uac usedAsFilename uaf usesMultiBuilder umb worldspace "
        "ws");
}

}  // namespace host::commands
