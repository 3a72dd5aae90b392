// The commands addAttr and deleteAttr.

#include <algorithm>
#include <map>
#include <memory>
#include <optional>

#include "commands/addAttrQuery.h"
#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "graph/attributeTypes.h"

namespace host::commands {

namespace {

using graph::AttributeSpec;
using graph::AttributeTypeChoice;

/// A compound attribute is declared child by child. It exists once its last child is declared.
struct OpenCompound {
    AttributeSpec spec;
    std::size_t childCount = 0;
    std::string parent;  // long name of the open compound that it belongs to; empty if none
};

/// The compounds still being declared, by node.
using OpenCompounds = std::map<std::uint64_t, std::vector<OpenCompound>>;

Found<AttributeTypeChoice> chosenType(const ParsedArguments& arguments) {
    for (int use = 1; use < arguments.uses("dataType"); ++use) {
        if (arguments.values("dataType", use)[0].toString() != arguments.text("dataType"))
            return {{}, "addAttr: An attribute of several data types is not covered by this host."};
    }
    const bool isData = arguments.isSet("dataType");
    if (isData && arguments.isSet("attributeType"))
        return {{}, "addAttr: The flags -attributeType and -dataType cannot be used together."};
    const std::string name = arguments.text(isData ? "dataType" : "attributeType", "double");
    const std::optional<AttributeTypeChoice> choice =
        isData ? graph::dataTypeNamed(name)
               : graph::attributeTypeNamed(name, arguments.integer("numberOfChildren"));
    if (!choice) return {{}, "addAttr: Attribute type '" + name + "' is not covered by this host."};
    return {*choice, {}};
}

Found<AttributeSpec> specOf(const graph::Graph& graph, const ParsedArguments& arguments,
                            const AttributeTypeChoice& type) {
    const std::string longName = arguments.text("longName", arguments.text("shortName"));
    const std::string shortName = arguments.text("shortName", longName);
    if (longName.empty())
        return {{}, "addAttr: New attribute needs either a long (-ln) or short (-sn) attribute name."};
    for (const std::string& name : {longName, shortName}) {
        if (!graph::isLegalName(name)) return {{}, "addAttr: '" + name + "' is no legal attribute name."};
    }
    AttributeSpec spec = graph::number(longName, shortName, type.kind);
    spec.dataType = type.dataType;
    spec.isArray = arguments.isSet("multi");
    spec.isHidden = arguments.boolean("hidden");
    spec.isKeyable = arguments.boolean("keyable");
    const auto inGraphUnit = [&](std::string_view flag) {
        return fromScriptUnit(graph, type.kind, arguments.number(flag));
    };
    spec.defaultValue = inGraphUnit("defaultValue");
    if (arguments.isSet("minValue")) spec.minimum = inGraphUnit("minValue");
    if (arguments.isSet("maxValue")) spec.maximum = inGraphUnit("maxValue");
    spec.enumNames = graph::enumNamesIn(arguments.text("enumName"));
    spec.isProxy = arguments.boolean("usedAsProxy");
    spec.categories = texts(arguments, "category");
    return {std::move(spec), {}};
}

/// The attribute for which the new one is to stand; an empty plug if the call names none.
Found<graph::Plug> masterOf(graph::Graph& graph, const ParsedArguments& arguments) {
    if (!arguments.isSet("proxy")) return {};
    const std::string name = arguments.text("proxy");
    const Found<graph::PlugMatch> found = findOnePlug(graph, name);
    if (!found.ok()) return {{}, found.error};
    if (found.value.plug.isArray() || found.value.plug.attribute().isCompound() || arguments.isSet("parent"))
        return {{}, "addAttr: A proxy of '" + name + "' is not covered by this host."};
    return {found.value.plug, {}};
}

/// Makes a new attribute one that stands for another.
AttributeSpec proxySpec(AttributeSpec spec, const graph::Attribute& master) {
    AttributeSpec proxy = master.spec();
    proxy.longName = spec.longName;
    proxy.shortName = spec.shortName;
    proxy.categories = std::move(spec.categories);
    proxy.isKeyable = spec.isKeyable || proxy.isKeyable;
    proxy.isArray = proxy.isOutput = proxy.isWatched = false;
    proxy.isProxy = true;
    return proxy;
}

bool clashesBelow(const AttributeSpec& spec, const std::string& name) {
    if (spec.longName == name || spec.shortName == name) return true;
    return std::any_of(spec.children.begin(), spec.children.end(),
                       [&](const AttributeSpec& child) { return clashesBelow(child, name); });
}

bool isNameTaken(const graph::Node& node, const std::vector<OpenCompound>& open, const std::string& name) {
    if (node.findAttribute(name) != nullptr) return true;
    return node.aliases().find(name) != nullptr ||
           std::any_of(open.begin(), open.end(),
                       [&](const OpenCompound& compound) { return clashesBelow(compound.spec, name); });
}

OpenCompound* findOpen(std::vector<OpenCompound>& open, const std::string& name) {
    const auto found = std::find_if(open.begin(), open.end(), [&](const OpenCompound& compound) {
        return compound.spec.longName == name || compound.spec.shortName == name;
    });
    return found != open.end() ? &*found : nullptr;
}

/// Adds a complete attribute to the compound that it belongs to. A compound that is now complete is added to
/// its own compound, and the last one to the node.
void place(graph::Graph& graph, graph::Node& node, std::vector<OpenCompound>& open, AttributeSpec spec,
           std::string parent) {
    while (OpenCompound* above = parent.empty() ? nullptr : findOpen(open, parent)) {
        above->spec.children.push_back(std::move(spec));
        if (above->spec.children.size() < above->childCount) return;
        spec = std::move(above->spec);
        parent = above->parent;
        open.erase(open.begin() + (above - open.data()));
    }
    graph.addAttribute(node, std::move(spec));
}

/// Adds one attribute to one node.
/// @return the error; empty on success
std::string addTo(graph::Graph& graph, OpenCompounds& all, graph::Node& node, const AttributeSpec& spec,
                  const AttributeTypeChoice& type, const ParsedArguments& arguments) {
    std::vector<OpenCompound>& open = all[node.id()];
    for (const std::string& name : {spec.longName, spec.shortName}) {
        if (isNameTaken(node, open, name)) {
            return "addAttr: The name '" + name +
                   "' of the new attribute clashes with an existing attribute of '" + graph.uniqueName(node) +
                   "'.";
        }
    }
    std::string parent = arguments.text("parent");
    if (!parent.empty() && findOpen(open, parent) == nullptr)
        return "addAttr: '" + parent + "' is no compound attribute that is still open for children.";
    if (!parent.empty()) parent = findOpen(open, parent)->spec.longName;
    if (type.childCount == 0 || arguments.isSet("dataType")) {
        AttributeSpec complete = spec;
        graph::addNumberedChildren(complete, type);
        place(graph, node, open, std::move(complete), parent);
    } else {
        open.push_back({spec, type.childCount, parent});
    }
    return {};
}

/// Undo also restores the compounds that are still being declared.
void recordOpen(graph::Graph& graph, const std::shared_ptr<OpenCompounds>& open, OpenCompounds before) {
    if (graph.recorder() == nullptr) return;
    graph.recorder()->add([open, old = std::move(before)](graph::Graph&) { *open = old; },
                          [open, now = *open](graph::Graph&) { *open = now; });
}

/// The nodes that get the attribute, if a call asks for nothing that is not covered.
Found<std::vector<graph::NodeRef>> nodesToExtend(CommandContext& context, const ParsedArguments& arguments) {
    // An attribute is readable, writable and storable unless a call says otherwise.
    for (const char* flag : {"exists", "hasMinValue", "hasMaxValue", "readable", "writable", "storable"}) {
        if (arguments.isSet(flag) && !arguments.boolean(flag))
            return {{}, std::string("addAttr: -") + flag + " is covered in queries only."};
    }
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return {{}, items.error};
    std::vector<graph::NodeRef> nodes = nodesOf(items.value);
    if (nodes.empty()) return {{}, "addAttr: Found no valid items to add the attribute to."};
    for (const graph::NodeRef& node : nodes) {
        std::string problem = lockProblem(context.graph, *node, "addAttr");
        if (!problem.empty()) return {{}, std::move(problem)};
    }
    return {std::move(nodes), {}};
}

CommandResult addAttr(CommandContext& context, const ParsedArguments& arguments,
                      const std::shared_ptr<OpenCompounds>& open) {
    if (arguments.isQuery()) return queryAddAttr(context, arguments);
    graph::Graph& graph = context.graph;
    const Found<std::vector<graph::NodeRef>> nodes = nodesToExtend(context, arguments);
    if (!nodes.ok()) return CommandResult::failure(nodes.error);
    const Found<graph::Plug> master = masterOf(graph, arguments);
    if (!master.ok()) return CommandResult::failure(master.error);
    // A proxy has the type of what it stands for, whatever the call says.
    Found<AttributeTypeChoice> type;
    if (!master.value) type = chosenType(arguments);
    if (!type.ok()) return CommandResult::failure(type.error);
    Found<AttributeSpec> spec = specOf(context.graph, arguments, type.value);
    if (!spec.ok()) return CommandResult::failure(spec.error);
    if (master.value) spec.value = proxySpec(std::move(spec.value), master.value.attribute());
    const bool touchesOpen =
        arguments.isSet("parent") || (type.value.childCount > 0 && !arguments.isSet("dataType"));
    if (touchesOpen) {
        OpenCompounds before = *open;
        std::string error;
        for (const graph::NodeRef& node : nodes.value) {
            error = addTo(graph, *open, *node, spec.value, type.value, arguments);
            if (!error.empty()) break;
        }
        recordOpen(graph, open, std::move(before));
        return error.empty() ? CommandResult::success() : CommandResult::failure(std::move(error));
    }
    for (const graph::NodeRef& node : nodes.value) {
        std::string error = addTo(graph, *open, *node, spec.value, type.value, arguments);
        if (!error.empty()) return CommandResult::failure(std::move(error));
        if (master.value) graph.connect(master.value, node->plug(spec.value.longName));
    }
    return CommandResult::success();
}

CommandResult deleteAttr(CommandContext& context, const ParsedArguments& arguments) {
    if (arguments.isQuery()) return queryDeleteAttr(context, arguments);
    if (arguments.objects().empty()) return CommandResult::failure("Not enough objects or values.");
    graph::Graph& graph = context.graph;
    std::vector<std::string> names = arguments.objectNames();
    if (arguments.isSet("attribute")) {
        for (std::string& name : names)
            name += '.' + arguments.text("attribute");
    }
    for (const std::string& name : names) {
        const Found<graph::PlugMatch> found = findOnePlug(graph, name);
        if (!found.ok()) return CommandResult::failure(found.error);
        const graph::Plug& plug = found.value.plug;
        const graph::Attribute& attribute = plug.attribute();
        std::string problem = lockProblem(graph, *plug.node(), "deleteAttr");
        if (!problem.empty()) return CommandResult::failure(std::move(problem));
        if (!attribute.isDynamic() || attribute.parent() != nullptr)
            return CommandResult::failure("deleteAttr: Attribute '" + name +
                                          "' is not a dynamic attribute of its node and cannot be deleted.");
        if (isLocked(plug))
            return CommandResult::failure("deleteAttr: The attribute '" + name +
                                          "' is locked and cannot be deleted.");
        graph.deleteAttribute(*plug.node(), attribute);
    }
    return CommandResult::success();
}

}  // namespace

void registerAddAttrCommands(mel::CommandRegistry& registry) {
    Syntax adding;
    adding.flag("ln", "longName", {kText}).flag("sn", "shortName", {kText});
    adding.flag("at", "attributeType", {kText}).multiUseFlag("dt", "dataType", {kText});
    adding.flag("dv", "defaultValue", {kReal}).flag("en", "enumName", {kText});
    adding.flag("min", "minValue", {kReal}).flag("max", "maxValue", {kReal});
    adding.flag("h", "hidden", {kSwitch}).flag("k", "keyable", {kSwitch}).flag("m", "multi");
    adding.flag("p", "parent", {kText}).flag("nc", "numberOfChildren", {ArgumentType::Unsigned});
    // These flags have no effect without a window or a value cache.
    adding.flag("ci", "cachedInternally", {kSwitch}).flag("nn", "niceName", {kText});
    adding.flag("smn", "softMinValue", {kReal}).flag("smx", "softMaxValue", {kReal});
    adding.flag("uac", "usedAsColor").flag("uaf", "usedAsFilename").objects(ObjectKind::Strings);
    adding.multiUseFlag("ct", "category", {kText}).flag("pxy", "proxy", {kText});
    adding.flag("uap", "usedAsProxy", {kSwitch});
    addQueryFlags(adding);
    adding.enableQuery();
    const auto open = std::make_shared<OpenCompounds>();
    registry.add(
        "addAttr", adding,
        [open](CommandContext& context, const ParsedArguments& arguments) {
            return addAttr(context, arguments, open);
        },
        "bt binaryTag dcb disconnectBehaviour e edit fcx fromPlugin hsn hasSoftMinValue hsx "
        "hasSoftMaxValue im indexMatters is internalSet");

    Syntax deleting;
    deleting.flag("at", "attribute", {kText}).objects(ObjectKind::Strings).enableQuery().enableEdit();
    registry.add("deleteAttr", deleting, deleteAttr);
}

}  // namespace host::commands
