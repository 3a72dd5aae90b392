#include <algorithm>
#include <cmath>
#include <optional>

#include "commands/attributeValues.h"
#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "graph/attributeTypes.h"
#include "nodes/sceneTime.h"

namespace host::commands {

namespace {

/// The largest number of elements in one range. The result has some numbers for each.
constexpr std::int64_t kMaxRange = 50'000'000;

bool isWhole(graph::ValueKind kind) {
    return kind == graph::ValueKind::Bool || kind == graph::ValueKind::Int || kind == graph::ValueKind::Enum;
}

Value numberValue(graph::Graph& graph, const graph::Plug& plug) {
    const graph::ValueKind kind = plug.attribute().kind();
    const double value = toScriptUnit(graph, kind, graph.number(plug));
    if (kind == graph::ValueKind::Bool) return Value(value != 0.0);
    return isWhole(kind) ? Value(static_cast<int>(value)) : Value(value);
}

/// Numbers that belong together: those of a vector, of a point, or of a whole multi of numbers.
mel::ResultForm formOf(const graph::Plug& plug, const Value& value) {
    mel::ResultForm form;
    const graph::Attribute& attribute = plug.attribute();
    const std::string& data = attribute.spec().dataType;
    if (attribute.kind() == graph::ValueKind::Typed) {
        form.tupleWidth = data == "pointArray" ? 4 : data == "vectorArray" ? 3 : 0;
    } else if (!graph::tupleName(attribute).empty()) {
        form.tupleWidth = static_cast<int>(attribute.children().size());
    } else if (plug.isArray() && value.isArray() && !attribute.isCompound()) {
        form.tupleWidth = static_cast<int>(value.size());
    }
    return form;
}

/// Joins the values below a plug that means several: elements of a multi, children of a compound.
class ValueCollector {
  public:
    explicit ValueCollector(graph::Graph& graph) : graph_(graph) {}

    /// @return the error; empty on success
    std::string collect(const graph::Plug& plug) {
        if (plug.isArray()) {
            for (const int index : graph_.elements(plug)) {
                std::string error = collect(plug.element(index));
                if (!error.empty()) return error;
            }
            return {};
        }
        const graph::Attribute& attribute = plug.attribute();
        for (const auto& child : attribute.children()) {
            std::string error = collect(plug.child(*child));
            if (!error.empty()) return error;
        }
        if (graph::isNumber(attribute.kind())) addNumber(plug);
        if (attribute.kind() == graph::ValueKind::Typed) return addData(plug);
        return {};
    }

    Value take() {
        if (!texts_.empty()) return Value(std::move(texts_));
        if (numbers_.empty() || !areWhole_) return Value(std::move(numbers_));
        return Value(std::vector<int>(numbers_.begin(), numbers_.end()));
    }

  private:
    void addNumber(const graph::Plug& plug) {
        const graph::ValueKind kind = plug.attribute().kind();
        numbers_.push_back(toScriptUnit(graph_, kind, graph_.number(plug)));
        areWhole_ = areWhole_ && isWhole(kind);
    }

    std::string addData(const graph::Plug& plug) {
        const std::optional<Value> value = dataValue(graph_.data(plug), plug.attribute().spec().dataType);
        if (!value) return {};
        if (value->isString() || value->getIf<std::vector<std::string>>() != nullptr) {
            for (std::string& text : value->toStringArray())
                texts_.push_back(std::move(text));
        } else if (const auto* integers = value->getIf<std::vector<int>>()) {
            numbers_.insert(numbers_.end(), integers->begin(), integers->end());
        } else {
            const std::vector<double> more = value->toFloatArray();
            numbers_.insert(numbers_.end(), more.begin(), more.end());
            areWhole_ = false;
        }
        if (texts_.empty() || numbers_.empty()) return {};
        return "getAttr: '" + graph_.plugName(plug) + "' lies among values of another type.";
    }

    graph::Graph& graph_;
    std::vector<double> numbers_;
    std::vector<std::string> texts_;
    bool areWhole_ = true;
};

CommandResult readOne(graph::Graph& graph, const graph::Plug& plug, bool asString) {
    const graph::Attribute& attribute = plug.attribute();
    if (attribute.kind() == graph::ValueKind::Message)
        return CommandResult::failure("getAttr: Message attributes have no data values.");
    if (attribute.kind() == graph::ValueKind::Enum && asString) {
        const int value = static_cast<int>(graph.number(plug));
        const auto& names = attribute.spec().enumNames;
        const bool isNamed = value >= 0 && value < static_cast<int>(names.size());
        return CommandResult::success(isNamed ? names[static_cast<std::size_t>(value)] : std::string());
    }
    if (graph::isNumber(attribute.kind())) return CommandResult::success(numberValue(graph, plug));
    if (attribute.kind() == graph::ValueKind::Typed) {
        std::optional<Value> value = dataValue(graph.data(plug), attribute.spec().dataType);
        if (value) {
            mel::ResultForm form = formOf(plug, *value);
            return CommandResult::success(std::move(*value)).with(std::move(form));
        }
        return CommandResult::failure("getAttr: The data of '" + graph.plugName(plug) + "' (" +
                                      attributeTypeName(attribute) + ") is no number and no text.");
    }
    ValueCollector collector(graph);
    std::string error = collector.collect(plug);
    if (!error.empty()) return CommandResult::failure(error);
    Value value = collector.take();
    mel::ResultForm form = formOf(plug, value);
    return CommandResult::success(std::move(value)).with(std::move(form));
}

CommandResult readValue(graph::Graph& graph, const graph::PlugMatch& match, bool asString) {
    const graph::Plug& plug = match.plug;
    const std::int64_t length = rangeLength(match);
    const bool isRange = length > 1;
    if (!isRange && !plug.isArray()) return readOne(graph, plug, asString);
    if (plug.attribute().kind() == graph::ValueKind::Message)
        return CommandResult::failure("getAttr: Message attributes have no data values.");
    if (length > kMaxRange) {
        return CommandResult::failure("getAttr: The range of '" + graph.plugName(plug) + "' to index " +
                                      std::to_string(match.last) + " is too large.");
    }
    ValueCollector collector(graph);
    std::string error = isRange ? std::string() : collector.collect(plug);
    for (std::int64_t k = 0; isRange && k < length && error.empty(); ++k)
        error = collector.collect(plug.array().element(plug.logicalIndex() + static_cast<int>(k)));
    if (!error.empty()) return CommandResult::failure(error);
    Value value = collector.take();
    mel::ResultForm form = formOf(plug, value);
    return CommandResult::success(std::move(value)).with(std::move(form));
}

bool isSettable(const graph::Graph& graph, const graph::Plug& plug) {
    return !plug.attribute().isOutput() && !isLocked(plug) && !hasSource(graph, plug);
}

/// The result of the query flags; nothing if none is given.
std::optional<CommandResult> query(graph::Graph& graph, const graph::Plug& plug,
                                   const ParsedArguments& arguments) {
    const graph::PlugState state = plug.node()->state(plug.key());
    if (arguments.isSet("size")) return CommandResult::success(plug.isArray() ? graph.elementCount(plug) : 1);
    if (arguments.isSet("multiIndices")) {
        if (!plug.isArray())
            return CommandResult::failure("getAttr: '" + graph.plugName(plug) + "' is no multi-attribute.");
        return CommandResult::success(graph.elements(plug));
    }
    if (arguments.isSet("type")) return CommandResult::success(attributeTypeName(plug.attribute()));
    if (arguments.isSet("lock")) return CommandResult::success(isLocked(plug));
    if (arguments.isSet("keyable")) return CommandResult::success(state.isKeyable);
    if (arguments.isSet("channelBox")) return CommandResult::success(state.isInChannelBox);
    if (arguments.isSet("settable")) return CommandResult::success(isSettable(graph, plug));
    return std::nullopt;
}

CommandResult getAttr(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<graph::PlugMatch> found = findOnePlug(graph, arguments.objectNames().front());
    if (!found.ok()) return CommandResult::failure(found.error);
    if (auto answer = query(graph, found.value.plug, arguments)) return std::move(*answer);
    // A computed multi ("worldMatrix") has no stored elements.
    graph::PlugMatch match = found.value;
    if (match.plug.attribute().isOutput())
        match.plug = atInstance(graph, match.plug, arguments.objectNames().front());
    const bool asString = arguments.isSet("asString");
    if (!arguments.isSet("time")) return readValue(graph, match, asString);
    const graph::Plug time = nodes::timePlug(graph);
    const double wanted = arguments.number("time");
    if (hasSource(graph, time))
        return CommandResult::failure("getAttr: " + graph.plugName(time) + " is connected.");
    if (!std::isfinite(wanted))
        return CommandResult::failure("getAttr: '" + Value(wanted).toString() + "' is no time.");
    const nodes::TimeScope scope(graph, fromScriptUnit(graph, graph::ValueKind::Time, wanted));
    return readValue(graph, match, asString);
}

}  // namespace

void registerGetAttrCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("s", "size").flag("mi", "multiIndices").flag("typ", "type").flag("l", "lock");
    syntax.flag("k", "keyable").flag("cb", "channelBox").flag("se", "settable").flag("as", "asString");
    // Evaluation is always silent here.
    syntax.flag("sl", "silent").flag("t", "time", {kTime}).objects(ObjectKind::Strings, 1, 1);
    registry.add("getAttr", syntax, getAttr, "caching ca constraint c expandEnvironmentVariables x");
}

}  // namespace host::commands
