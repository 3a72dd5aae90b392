// The commands objectType, listAttr and filterExpand.

#include <algorithm>

#include "commands/attributeValues.h"
#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "nodes/meshNode.h"

namespace host::commands {

namespace {

CommandResult objectType(CommandContext& context, const ParsedArguments& arguments) {
    const std::string name = arguments.objectNames().front();
    const std::string nodeName = name.substr(0, name.find('.'));
    const Found<graph::NodeRef> node = findOneNode(context.graph, nodeName);
    if (!node.ok()) return CommandResult::failure(node.error);
    const std::string& type = node.value->type().name();
    if (arguments.isSet("isType")) return CommandResult::success(type == arguments.text("isType"));
    if (arguments.isSet("isAType")) return CommandResult::success(node.value->isA(arguments.text("isAType")));
    return CommandResult::success(type);
}

// listAttr

/// Which attributes a call of listAttr wants.
class AttributeFilter {
  public:
    AttributeFilter(const graph::Graph& graph, const ParsedArguments& arguments)
        : graph_(graph),
          arguments_(arguments),
          patterns_(texts(arguments, "string")),
          categories_(texts(arguments, "category")) {}

    bool takes(const graph::Plug& plug) const {
        const graph::Attribute& attribute = plug.attribute();
        const graph::PlugState state = plug.node()->state(plug.key());
        const bool isWritable = !attribute.isOutput();
        return fits("userDefined", attribute.path().front()->isDynamic()) &&
               fits("keyable", state.isKeyable) && fits("channelBox", state.isInChannelBox) &&
               fits("locked", isLocked(plug)) && fits("unlocked", !isLocked(plug)) &&
               fits("visible", !attribute.spec().isHidden) &&
               fits("scalar", graph::isNumber(attribute.kind())) && fits("array", attribute.isArray()) &&
               fits("write", isWritable) && fits("output", attribute.isOutput()) &&
               fits("settable", isWritable && !isLocked(plug) && !hasSource(graph_, plug)) &&
               fits("hasData", plug.node()->slot(plug.key()) != nullptr) && fitsName(attribute) &&
               fitsCategory(attribute);
    }

  private:
    bool fits(const char* flag, bool isTrue) const { return !arguments_.isSet(flag) || isTrue; }

    bool fitsCategory(const graph::Attribute& attribute) const {
        const std::vector<std::string>& own = attribute.spec().categories;
        return categories_.empty() ||
               std::any_of(categories_.begin(), categories_.end(), [&](const std::string& wanted) {
                   return std::find(own.begin(), own.end(), wanted) != own.end();
               });
    }

    bool fitsName(const graph::Attribute& attribute) const {
        return patterns_.empty() ||
               std::any_of(patterns_.begin(), patterns_.end(), [&](const std::string& pattern) {
                   return graph::matchesPattern(attribute.longName(), pattern) ||
                          graph::matchesPattern(attribute.shortName(), pattern);
               });
    }

    const graph::Graph& graph_;
    const ParsedArguments& arguments_;
    std::vector<std::string> patterns_;
    std::vector<std::string> categories_;
};

/// Lists attributes with those below them, and the elements of arrays if the call asks for them.
class AttributeList {
  public:
    AttributeList(graph::Graph& graph, const ParsedArguments& arguments)
        : graph_(graph),
          filter_(graph, arguments),
          isShort_(arguments.isSet("shortNames")),
          hasElements_(arguments.isSet("multi")) {}

    void add(const graph::Plug& plug, const std::string& prefix = {}) {
        const graph::Attribute& attribute = plug.attribute();
        const std::string name = prefix + (isShort_ ? attribute.shortName() : attribute.longName());
        if (plug.isArray() && hasElements_) {
            for (const int index : graph_.elements(plug))
                addElement(plug.element(index), name);
            return;
        }
        if (filter_.takes(plug)) names_.push_back(name);
        // What is inside an array has no name of its own.
        const std::string below = plug.isArray() ? name + '.' : prefix;
        for (const auto& child : attribute.children())
            add(plug.isArray() ? graph::Plug(plug.node(), {child.get(), plug.key().indices, plug.key().depth})
                               : plug.child(*child),
                below);
    }
    std::vector<std::string> take() { return std::move(names_); }

  private:
    void addElement(const graph::Plug& element, const std::string& array) {
        const std::string alias = element.node()->alias(element.key());
        const std::string name = array + '[' + std::to_string(element.logicalIndex()) + ']';
        if (filter_.takes(element)) names_.push_back(alias.empty() ? name : alias);
        for (const auto& child : element.attribute().children())
            add(element.child(*child), name + '.');
    }

    graph::Graph& graph_;
    AttributeFilter filter_;
    bool isShort_;
    bool hasElements_;
    std::vector<std::string> names_;
};

CommandResult listAttr(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    AttributeList list(graph, arguments);
    std::vector<graph::SelectionItem> items;
    for (const std::string& name : arguments.objectNames()) {
        if (name.find('.') != std::string::npos) {
            const Found<graph::PlugMatch> found = findOnePlug(graph, name);
            if (!found.ok()) return CommandResult::failure(found.error);
            list.add(found.value.plug);
            continue;
        }
        const Found<std::vector<graph::SelectionItem>> found = findItems(graph, {name});
        if (!found.ok()) return CommandResult::failure(found.error);
        items.insert(items.end(), found.value.begin(), found.value.end());
    }
    if (arguments.objects().empty()) items = graph.selection().items();
    if (arguments.objects().empty() && items.empty())
        return CommandResult::failure("listAttr: No object was given or selected.");
    for (const graph::NodeRef& node : nodesOf(items)) {
        for (const graph::Attribute* attribute : node->attributes()) {
            if (attribute != nullptr && !attribute->isKept()) list.add(node->plug(*attribute));
        }
    }
    return CommandResult::success(list.take());
}

// filterExpand

constexpr int kMeshMask = 12;

/// The host's number for a kind of component.
int maskOf(graph::ComponentKind kind) {
    switch (kind) {
        case graph::ComponentKind::Vertex:
            return 31;
        case graph::ComponentKind::Edge:
            return 32;
        case graph::ComponentKind::Face:
            return 34;
        case graph::ComponentKind::ControlVertex:
            break;
    }
    return 28;
}

CommandResult filterExpand(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    std::vector<int> masks;
    masks.reserve(static_cast<std::size_t>(arguments.uses("selectionMask")));
    for (int use = 0; use < arguments.uses("selectionMask"); ++use)
        masks.push_back(arguments.values("selectionMask", use)[0].toInt());
    const auto isWanted = [&](int mask) {
        return std::find(masks.begin(), masks.end(), mask) != masks.end();
    };
    const bool isFull = arguments.boolean("fullPath");
    std::vector<std::string> names;
    for (const graph::SelectionItem& item : items.value) {
        if (!item.component) {
            const graph::NodeRef shape = nodes::shapeOf(graph, item.node);
            const bool isMesh = item.isWholeNode() && shape != nullptr && shape->isA("mesh");
            if (isMesh && isWanted(kMeshMask))
                names.push_back(isFull ? graph.fullPath(*item.node) : graph.uniqueName(*item.node));
            continue;
        }
        if (!isWanted(maskOf(item.component->kind()))) continue;
        std::vector<std::string> own = graph::itemNames(graph, item, isFull);
        if (arguments.boolean("expand", true) && !own.empty()) {
            const std::string prefix = own.front().substr(0, own.front().find('.') + 1);
            own.clear();
            for (const int element : item.component->elements())
                own.push_back(prefix + graph::runText(item.component->kind(), {element, element}));
        }
        names.insert(names.end(), own.begin(), own.end());
    }
    return CommandResult::success(std::move(names));
}

}  // namespace

void registerObjectCommands(mel::CommandRegistry& registry) {
    Syntax typing;
    typing.flag("i", "isType", {kText}).flag("isa", "isAType", {kText}).objects(ObjectKind::Strings, 1, 1);
    registry.add("objectType", typing, objectType,
                 "cid convertTag tgt tagFromType tpt typeFromTag typ typeTag");

    Syntax listing;
    listing.flag("k", "keyable").flag("ud", "userDefined").flag("l", "locked").flag("u", "unlocked");
    listing.flag("cb", "channelBox").flag("v", "visible").flag("s", "scalar").flag("a", "array");
    listing.flag("w", "write").flag("o", "output").flag("se", "settable").flag("hd", "hasData");
    listing.flag("m", "multi").flag("sn", "shortNames").flag("r", "read").flag("c", "connectable");
    listing.multiUseFlag("st", "string", {kText})
        .multiUseFlag("ct", "category", {kText})
        .objects(ObjectKind::Strings);
    registry.add("listAttr", listing, listAttr,
                 "at attributeType ca caching ex extension fp fullNodeName hnd hasNullData inUse "
                 "iu lf leaf nn niceName ra ramp sa scalarAndArray svd settableValueData ufn usedAsFilename");

    Syntax filtering;
    filtering.multiUseFlag("sm", "selectionMask", {kWhole}).flag("ex", "expand", {kSwitch});
    filtering.flag("fp", "fullPath", {kSwitch}).objects(ObjectKind::Strings);
    registry.add("filterExpand", filtering, filterExpand, "smp symbolicMask");
}

}  // namespace host::commands
