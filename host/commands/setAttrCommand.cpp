#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

#include "commands/attributeValues.h"
#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "mel/numberText.h"

namespace host::commands {

namespace {

/// What one setAttr line writes. It is complete before anything is written.
struct Writes {
    std::vector<std::pair<graph::Plug, double>> numbers;
    std::vector<std::pair<graph::Plug, graph::DataPtr>> data;
};

/// The largest range whose state can be set: each element stores a state of its own.
constexpr std::int64_t kMaxStates = 1'000'000;

/// The element at a position of a name with a range. Without a range, the plug itself.
graph::Plug elementOf(const graph::PlugMatch& match, std::int64_t position) {
    if (position == 0) return match.plug;
    return match.plug.array().element(match.plug.logicalIndex() + static_cast<int>(position));
}

bool isHeldBelow(const graph::Graph& graph, const graph::Plug& plug) {
    for (const auto& child : plug.attribute().children()) {
        const graph::Plug below = plug.child(*child);
        if (plug.node()->state(below.key()).isLocked || graph.source(below) || isHeldBelow(graph, below))
            return true;
    }
    return false;
}

bool isWritable(const graph::Graph& graph, const graph::Plug& plug) {
    const graph::Node& node = *plug.node();
    if (plug.attribute().isOutput()) return false;
    if (node.states().empty() && node.incoming().empty()) return true;
    return !isLocked(plug) && !hasSource(graph, plug) && !isHeldBelow(graph, plug);
}

/// Numbers between the fields that have no field of their own have an empty name.
bool hasField(const std::vector<std::string>& names, double value) {
    return value >= 0.0 && value < static_cast<double>(names.size()) &&
           !names[static_cast<std::size_t>(value)].empty();
}

/// Brings a number into the attribute's range, or returns why it cannot be written.
std::string fitNumber(const graph::Graph& graph, const graph::Plug& plug, bool clamps, double& value) {
    const graph::AttributeSpec& spec = plug.attribute().spec();
    std::optional<double> minimum = spec.minimum;
    std::optional<double> maximum = spec.maximum;
    const std::vector<std::string>& names = spec.enumNames;
    if (!names.empty()) {
        value = std::trunc(value);
        const auto first =
            std::find_if(names.begin(), names.end(), [](const auto& field) { return !field.empty(); });
        minimum = static_cast<double>(first - names.begin());
        maximum = static_cast<double>(names.size() - 1);
    }
    const bool isLow = minimum && value < *minimum;
    const bool isHigh = maximum && value > *maximum;
    if (!isLow && !isHigh) {
        if (names.empty() || hasField(names, value)) return {};
        return "setAttr: The attribute '" + graph.plugName(plug) + "' has no field of value " +
               Value(value).toString() + '.';
    }
    const double limit = isLow ? *minimum : *maximum;
    if (!clamps) {
        return "setAttr: Cannot set the attribute '" + graph.plugName(plug) + "' past its " +
               (isLow ? "minimum" : "maximum") + " value of " +
               Value(toScriptUnit(graph, spec.kind, limit)).toString() + '.';
    }
    value = limit;
    return {};
}

/// Reads the values of one line, for one plug after the other.
class ValueReader {
  public:
    ValueReader(graph::Graph& graph, const ParsedArguments& arguments)
        : graph_(graph),
          words_(arguments.objects(), 1),
          type_(arguments.text("type")),
          clamps_(arguments.isSet("clamp")) {}

    /// @return the error; empty on success
    std::string read(const graph::Plug& plug) {
        const graph::Attribute& attribute = plug.attribute();
        if (plug.isArray())
            return "setAttr: The attribute '" + name(plug) + "' is a multi-attribute and needs an index.";
        if (attribute.kind() == graph::ValueKind::Message)
            return "setAttr: Message attributes have no data values: '" + name(plug) + "'.";
        if (attribute.kind() == graph::ValueKind::Typed) return readTyped(plug);
        if (!type_.empty() && !fitsTuple(attribute)) return typeError(plug);
        if (!attribute.isCompound()) return readNumber(plug);
        for (const auto& child : attribute.children()) {
            std::string error = graph::isNumber(child->kind()) && !child->isArray()
                                    ? readNumber(plug.child(*child))
                                    : notSimple(plug);
            if (!error.empty()) return error;
        }
        return {};
    }

    bool atEnd() const { return words_.atEnd(); }
    /// The error of a line that ends before its plugs do.
    std::string missingValue() {
        words_.text();
        return words_.error();
    }
    Writes& writes() { return writes_; }

  private:
    std::string name(const graph::Plug& plug) const { return graph_.plugName(plug); }

    std::string notSimple(const graph::Plug& plug) const {
        return "setAttr: '" + name(plug) +
               "' is not a simple numeric attribute.  Its values must be set with a -type flag.";
    }

    std::string typeError(const graph::Plug& plug) const {
        if (!graph::isDataType(type_) && graph::tupleSize(type_) == 0)
            return "setAttr: Data of type '" + type_ + "' is not covered by this host.";
        return "setAttr: The attribute '" + name(plug) + "' is of type '" +
               attributeTypeName(plug.attribute()) + "', not '" + type_ + "'.";
    }

    bool fitsTuple(const graph::Attribute& attribute) const {
        const int size = graph::tupleSize(type_);
        return size > 0 && static_cast<std::size_t>(size) == attribute.children().size();
    }

    std::string readTyped(const graph::Plug& plug) {
        if (type_.empty()) return notSimple(plug);
        const std::string& own = plug.attribute().spec().dataType;
        if (!graph::isDataType(type_) || (!own.empty() && own != type_)) return typeError(plug);
        writes_.data.emplace_back(plug, readData(words_, type_));
        return words_.error();
    }

    std::string readNumber(const graph::Plug& plug) {
        const graph::ValueKind kind = plug.attribute().kind();
        const bool isWhole =
            kind == graph::ValueKind::Int || kind == graph::ValueKind::Enum || kind == graph::ValueKind::Bool;
        double value =
            fromScriptUnit(graph_, kind, type_.empty() || isWhole ? words_.number() : words_.anyNumber());
        if (!words_.ok()) return words_.error();
        std::string error = fitNumber(graph_, plug, clamps_, value);
        if (!error.empty()) return error;
        if (isWhole && !mel::fitsInt(value)) words_.reject("the integer does not fit 32 bits");
        writes_.numbers.emplace_back(plug, value);
        return words_.error();
    }

    graph::Graph& graph_;
    ValueWords words_;
    std::string type_;
    bool clamps_;
    Writes writes_;
};

std::string writeValues(graph::Graph& graph, const graph::PlugMatch& match,
                        const ParsedArguments& arguments) {
    ValueReader reader(graph, arguments);
    const std::int64_t length = rangeLength(match);
    for (std::int64_t k = 0; k < length; ++k) {
        // Only as far as there are values: the name may mean far more elements.
        if (k > 0 && reader.atEnd()) return reader.missingValue();
        const graph::Plug plug = elementOf(match, k);
        if (!isWritable(graph, plug)) {
            return "setAttr: The attribute '" + graph.plugName(plug) +
                   "' is locked or connected and cannot be modified.";
        }
        std::string error = reader.read(plug);
        if (!error.empty()) return error;
    }
    if (!reader.atEnd())
        return "setAttr: Too much data was provided for attribute '" + graph.plugName(match.plug) + "'.";
    for (const auto& [plug, value] : reader.writes().numbers)
        graph.setNumber(plug, value);
    for (auto& [plug, value] : reader.writes().data)
        graph.setData(plug, std::move(value));
    return {};
}

/// `setAttr ".aal" -type "attributeAlias" {"alias", "attribute", ...}`, with or without a count first.
std::string writeAliases(graph::Graph& graph, const ParsedArguments& arguments) {
    const std::string name = arguments.objects()[0].toString();
    const std::size_t dot = name.find('.');
    const std::string attribute = dot == std::string::npos ? "" : name.substr(dot + 1);
    if (attribute != "aal" && attribute != "attributeAliasList")
        return "setAttr: The attribute '" + name + "' is not of type 'attributeAlias'.";
    const Found<graph::NodeRef> node =
        dot > 0 ? findOneNode(graph, name.substr(0, dot))
                : Found<graph::NodeRef>{
                      graph.selection().empty() ? nullptr : graph.selection().items().front().node, {}};
    if (node.value == nullptr) return "setAttr: No object matches name: " + name;
    const bool hasCount = arguments.objects().size() > 1 && arguments.objects()[1].isNumber();
    ValueWords words(arguments.objects(), hasCount ? 2 : 1);
    while (!words.atEnd()) {
        const std::string alias = words.text();
        const std::string path = words.text();
        const graph::PlugMatch match = graph::findPlug(graph, node.value, path);
        if (!words.ok() || !match.ok || !graph::isLegalName(alias)) words.reject();
        if (!words.ok()) return words.error();
        graph.setAlias(match.plug, alias);
    }
    return {};
}

void applyStates(graph::Graph& graph, const graph::PlugMatch& match, const ParsedArguments& arguments) {
    const std::int64_t length = rangeLength(match);
    for (std::int64_t k = 0; k < length; ++k) {
        const graph::Plug plug = elementOf(match, k);
        graph::PlugState state = plug.node()->state(plug.key());
        state.isLocked = arguments.boolean("lock", state.isLocked);
        state.isKeyable = arguments.boolean("keyable", state.isKeyable);
        state.isInChannelBox = arguments.boolean("channelBox", state.isInChannelBox);
        graph.setState(plug, state);
    }
}

/// The attribute that takes a value: of proxies, the one that they stand for.
graph::PlugMatch behindProxies(const graph::Graph& graph, graph::PlugMatch match) {
    constexpr int kMostProxies = 100;  // they may feed each other in a circle
    for (int k = 0; k < kMostProxies && match.plug.attribute().spec().isProxy; ++k) {
        const graph::Plug source = graph.source(match.plug);
        if (!source || isLocked(match.plug)) break;
        match.plug = source;
        match.last = source.isElement() ? source.logicalIndex() : -1;
    }
    return match;
}

CommandResult setAttr(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    if (arguments.text("type") == "attributeAlias") {
        std::string error = writeAliases(graph, arguments);
        return error.empty() ? CommandResult::success() : CommandResult::failure(std::move(error));
    }
    const Found<graph::PlugMatch> found = findOnePlug(graph, arguments.objects()[0].toString());
    if (!found.ok()) return CommandResult::failure("setAttr: " + found.error);
    const bool setsState =
        arguments.isSet("lock") || arguments.isSet("keyable") || arguments.isSet("channelBox");
    // Unlocking comes before the value is set, locking after it.
    const bool locks = arguments.boolean("lock");
    if (setsState && rangeLength(found.value) > kMaxStates) {
        return CommandResult::failure("setAttr: The range of '" + graph.plugName(found.value.plug) +
                                      "' to index " + std::to_string(found.value.last) + " is too large.");
    }
    if (arguments.isSet("lock")) {
        std::string problem = lockProblem(graph, *found.value.plug.node(), "setAttr");
        if (!problem.empty()) return CommandResult::failure(std::move(problem));
    }
    if (setsState && !locks) applyStates(graph, found.value, arguments);
    const bool isSizeOnly = arguments.isSet("size") || arguments.isSet("capacityHint") || setsState;
    if (arguments.objects().size() > 1 || arguments.isSet("type") || !isSizeOnly) {
        std::string error = writeValues(graph, behindProxies(graph, found.value), arguments);
        if (!error.empty()) return CommandResult::failure(std::move(error));
    }
    if (setsState && locks) applyStates(graph, found.value, arguments);
    return CommandResult::success();
}

/// Whether the given type makes the next value a text, which may look like a flag.
bool isTextOwed(const ParsedArguments& arguments) {
    const std::vector<Value>& words = arguments.objects();
    const std::string type = arguments.text("type");
    if (type == "string") return words.size() == 1;
    return type == "stringArray" && words.size() >= 2 &&
           static_cast<double>(words.size() - 2) < words[1].toFloat();
}

}  // namespace

void registerSetAttrCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("typ", "type", {kText}).flag("c", "clamp");
    syntax.flag("s", "size", {ArgumentType::Unsigned}).flag("ch", "capacityHint", {ArgumentType::Unsigned});
    syntax.flag("l", "lock", {kSwitch}).flag("k", "keyable", {kSwitch}).flag("cb", "channelBox", {kSwitch});
    // To edit a value is to set it.
    syntax.objects(ObjectKind::Values, 1).textsFollow(isTextOwed).enableEdit();
    registry.add("setAttr", syntax, setAttr, "alteredValue av caching ca");
}

}  // namespace host::commands
