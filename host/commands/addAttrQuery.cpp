#include "commands/addAttrQuery.h"

#include <optional>
#include <utility>

#include "commands/attributeValues.h"

namespace host::commands {

namespace {

/// The type that -attributeType declares: "typed" for data.
std::string declaredType(const graph::Attribute& attribute) {
    return attribute.kind() == graph::ValueKind::Typed ? "typed" : attributeTypeName(attribute);
}

std::optional<Value> nameAnswer(const graph::Attribute& attribute, const ParsedArguments& arguments) {
    const graph::AttributeSpec& spec = attribute.spec();
    if (arguments.isSet("longName")) return Value(spec.longName);
    if (arguments.isSet("shortName")) return Value(spec.shortName);
    if (arguments.isSet("niceName")) return Value(niceName(spec.longName));
    if (arguments.isSet("attributeType")) return Value(declaredType(attribute));
    if (arguments.isSet("dataType")) return Value(std::vector<std::string>{attributeTypeName(attribute)});
    if (arguments.isSet("enumName")) return Value(graph::enumText(spec.enumNames));
    if (arguments.isSet("category")) return Value(spec.categories);
    if (arguments.isSet("parent"))
        return Value(attribute.parent() != nullptr ? attribute.parent()->longName() : std::string());
    return std::nullopt;
}

std::optional<Value> numberAnswer(const graph::Graph& graph, const graph::Attribute& attribute,
                                  const ParsedArguments& arguments) {
    const graph::AttributeSpec& spec = attribute.spec();
    const auto inScriptUnit = [&](double value) { return Value(toScriptUnit(graph, spec.kind, value)); };
    if (arguments.isSet("defaultValue")) return inScriptUnit(spec.defaultValue);
    if (arguments.isSet("minValue")) return inScriptUnit(spec.minimum.value_or(0.0));
    if (arguments.isSet("maxValue")) return inScriptUnit(spec.maximum.value_or(0.0));
    if (arguments.isSet("numberOfChildren")) return Value(static_cast<int>(attribute.children().size()));
    return std::nullopt;
}

std::optional<Value> traitAnswer(const graph::Attribute& attribute, const ParsedArguments& arguments) {
    const graph::AttributeSpec& spec = attribute.spec();
    const std::pair<const char*, bool> traits[] = {{"exists", true},
                                                   {"hasMinValue", spec.minimum.has_value()},
                                                   {"hasMaxValue", spec.maximum.has_value()},
                                                   {"hidden", spec.isHidden},
                                                   {"keyable", spec.isKeyable},
                                                   {"multi", spec.isArray},
                                                   {"usedAsProxy", spec.isProxy},
                                                   {"readable", true},
                                                   {"writable", !spec.isOutput},
                                                   {"storable", !spec.isOutput}};
    for (const auto& [flag, isTrue] : traits) {
        if (arguments.isSet(flag)) return Value(isTrue);
    }
    return std::nullopt;
}

}  // namespace

void addQueryFlags(Syntax& syntax) {
    for (const auto& [shortName, longName] :
         {std::pair("ex", "exists"), std::pair("hnv", "hasMinValue"), std::pair("hxv", "hasMaxValue")})
        syntax.flag(shortName, longName);
    syntax.flag("r", "readable", {kSwitch}).flag("w", "writable", {kSwitch}).flag("s", "storable", {kSwitch});
}

CommandResult queryAddAttr(CommandContext& context, const ParsedArguments& arguments) {
    if (arguments.objects().size() != 1)
        return CommandResult::failure("addAttr: A query needs the name of one attribute.");
    const std::string name = arguments.objectNames().front();
    const Found<graph::PlugMatch> found = findOnePlug(context.graph, name);
    if (!found.ok()) {
        if (arguments.isSet("exists")) return CommandResult::success(false);
        return CommandResult::failure(found.error);
    }
    const graph::Attribute& attribute = found.value.plug.attribute();
    if (auto answer = nameAnswer(attribute, arguments)) return CommandResult::success(std::move(*answer));
    if (auto answer = numberAnswer(context.graph, attribute, arguments))
        return CommandResult::success(std::move(*answer));
    if (auto answer = traitAnswer(attribute, arguments)) return CommandResult::success(std::move(*answer));
    return CommandResult::failure("addAttr: No flag says what to report.");
}

CommandResult queryDeleteAttr(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    std::vector<std::string> names;
    for (const graph::NodeRef& node : nodesOf(items.value)) {
        for (const graph::Attribute* attribute : node->attributes()) {
            if (attribute != nullptr && attribute->isDynamic()) names.push_back(attribute->longName());
        }
    }
    return CommandResult::success(std::move(names));
}

}  // namespace host::commands
