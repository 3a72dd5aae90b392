#include <utility>

#include "commands/commandSupport.h"
#include "commands/commands.h"

namespace host::commands {

namespace {

using graph::OptionVariables;

/// Sets or appends for every use of a flag whose arguments are a name and a value.
template <typename Store>
void forEachUse(const ParsedArguments& arguments, std::string_view flag, const Store& store) {
    for (int use = 0; use < arguments.uses(flag); ++use) {
        const std::vector<Value>& values = arguments.values(flag, use);
        store(values[0].toString(), values.back());
    }
}

/// Appends to an array variable. A variable that is not an array of this type is replaced.
template <typename T>
void append(OptionVariables& variables, const std::string& name, T value) {
    std::vector<T> entries;
    if (const auto* found = variables.find(name)) {
        if (const auto* array = std::get_if<std::vector<T>>(found)) entries = *array;
    }
    entries.push_back(std::move(value));
    variables.set(name, std::move(entries));
}

int arraySize(const OptionVariables::Value* value) {
    if (value == nullptr) return 0;
    if (const auto* integers = std::get_if<std::vector<int>>(value))
        return static_cast<int>(integers->size());
    if (const auto* numbers = std::get_if<std::vector<double>>(value))
        return static_cast<int>(numbers->size());
    if (const auto* texts = std::get_if<std::vector<std::string>>(value))
        return static_cast<int>(texts->size());
    return 0;
}

void clearArray(OptionVariables& variables, const std::string& name) {
    const auto* found = variables.find(name);
    if (found == nullptr) return;
    OptionVariables::Value value = *found;
    if (auto* integers = std::get_if<std::vector<int>>(&value)) integers->clear();
    if (auto* numbers = std::get_if<std::vector<double>>(&value)) numbers->clear();
    if (auto* texts = std::get_if<std::vector<std::string>>(&value)) texts->clear();
    variables.set(name, std::move(value));
}

template <typename T>
bool eraseAt(OptionVariables::Value& value, int position) {
    auto* array = std::get_if<std::vector<T>>(&value);
    if (array == nullptr || position < 0 || position >= static_cast<int>(array->size())) return false;
    array->erase(array->begin() + position);
    return true;
}

void removeFromArray(OptionVariables& variables, const std::string& name, int position) {
    const auto* found = variables.find(name);
    if (found == nullptr) return;
    OptionVariables::Value value = *found;
    if (eraseAt<int>(value, position) || eraseAt<double>(value, position) ||
        eraseAt<std::string>(value, position))
        variables.set(name, std::move(value));
}

Value valueOf(const OptionVariables::Value* value) {
    if (value == nullptr) return Value(0);
    return std::visit([](const auto& content) { return Value(content); }, *value);
}

void change(OptionVariables& variables, const ParsedArguments& arguments) {
    forEachUse(arguments, "remove", [&](const std::string& name, const Value&) { variables.remove(name); });
    forEachUse(arguments, "clearArray",
               [&](const std::string& name, const Value&) { clearArray(variables, name); });
    forEachUse(arguments, "removeFromArray", [&](const std::string& name, const Value& position) {
        removeFromArray(variables, name, position.toInt());
    });
    forEachUse(arguments, "intValue",
               [&](const std::string& name, const Value& value) { variables.set(name, value.toInt()); });
    forEachUse(arguments, "floatValue",
               [&](const std::string& name, const Value& value) { variables.set(name, value.toFloat()); });
    forEachUse(arguments, "stringValue",
               [&](const std::string& name, const Value& value) { variables.set(name, value.toString()); });
    forEachUse(arguments, "intValueAppend",
               [&](const std::string& name, const Value& value) { append(variables, name, value.toInt()); });
    forEachUse(arguments, "floatValueAppend", [&](const std::string& name, const Value& value) {
        append(variables, name, value.toFloat());
    });
    forEachUse(arguments, "stringValueAppend", [&](const std::string& name, const Value& value) {
        append(variables, name, value.toString());
    });
}

CommandResult optionVar(CommandContext& context, const ParsedArguments& arguments) {
    OptionVariables& variables = context.graph.optionVariables();
    if (arguments.isSet("query"))
        return CommandResult::success(valueOf(variables.find(arguments.text("query"))));
    if (arguments.isSet("exists"))
        return CommandResult::success(variables.find(arguments.text("exists")) != nullptr);
    if (arguments.isSet("arraySize"))
        return CommandResult::success(arraySize(variables.find(arguments.text("arraySize"))));
    if (arguments.isSet("list")) {
        std::vector<std::string> names;
        for (const auto& entry : variables.all())
            names.push_back(entry.first);
        return CommandResult::success(std::move(names));
    }
    change(variables, arguments);
    return CommandResult::success();
}

}  // namespace

void registerOptionVarCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.multiUseFlag("iv", "intValue", {kText, kWhole}).multiUseFlag("fv", "floatValue", {kText, kReal});
    syntax.multiUseFlag("sv", "stringValue", {kText, kText});
    syntax.multiUseFlag("iva", "intValueAppend", {kText, kWhole});
    syntax.multiUseFlag("fva", "floatValueAppend", {kText, kReal});
    syntax.multiUseFlag("sva", "stringValueAppend", {kText, kText});
    syntax.multiUseFlag("ca", "clearArray", {kText}).multiUseFlag("rm", "remove", {kText});
    syntax.multiUseFlag("rfa", "removeFromArray", {kText, kWhole});
    syntax.flag("q", "query", {kText}).flag("ex", "exists", {kText}).flag("as", "arraySize", {kText});
    syntax.flag("l", "list");
    registry.add("optionVar", syntax, optionVar,
                 "cat category fa floatArray ia intArray sa stringArray init initializeFromArgs v version");
}

}  // namespace host::commands
