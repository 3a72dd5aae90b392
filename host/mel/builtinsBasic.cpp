// The built-in functions that belong to no other family, such as print, error and size.

#include <unordered_map>

#include "mel/builtinTables.h"
#include "mel/evaluator.h"
#include "mel/operators.h"

namespace host::mel {

namespace {

using Kind = Value::Kind;
using Special = BuiltinFunction::Special;

bool size(BuiltinCall& call) {
    call.result = static_cast<int>(call.argument(0).size());
    return true;
}

bool clear(BuiltinCall& call) {
    Value* array = call.variables[0];
    if (!array || (!array->isArray() && !array->isNone())) return call.fail("clear needs an array variable.");
    *array = Value::defaultOf(array->kind());
    return true;
}

/// An array prints one element per line, everything else just its text.
bool print(BuiltinCall& call) {
    const Value& value = call.argument(0);
    std::string text;
    if (value.isArray()) {
        for (std::size_t i = 0; i < value.size(); ++i) {
            value.element(i).appendTo(text);
            text += '\n';
        }
    } else if (const Matrix* matrix = value.getIf<Matrix>()) {
        for (std::size_t i = 0; i < matrix->values.size(); ++i) {
            Value(matrix->values[i]).appendTo(text);
            text += (i + 1) % static_cast<std::size_t>(matrix->columns) == 0 ? '\n' : ' ';
        }
    } else {
        value.appendTo(text);
    }
    call.evaluator.output().print(text);
    return true;
}

/// The text of error, warning and trace. Their flags ask for the file and line, which every message has
/// anyway.
std::optional<std::string> messageText(BuiltinCall& call) {
    const bool flag = call.count == 3 && (call.text(0) == "-showLineNumber" || call.text(0) == "-sl");
    const bool switchFlag = call.count == 2 && (call.text(0) == "-noContext" || call.text(0) == "-n");
    if (call.count > 1 && !flag && !switchFlag) {
        call.fail("Invalid flag '" + call.text(0) + "'.");
        return std::nullopt;
    }
    return call.text(call.count - 1);
}

bool error(BuiltinCall& call) {
    if (std::optional<std::string> text = messageText(call)) call.fail(std::move(*text));
    return false;
}

bool warning(BuiltinCall& call) {
    const std::optional<std::string> text = messageText(call);
    if (text) call.evaluator.output().warning(*text, call.evaluator.currentPosition());
    return text.has_value();
}

bool trace(BuiltinCall& call) {
    const std::optional<std::string> text = messageText(call);
    if (text) call.evaluator.output().info(*text);
    return text.has_value();
}

}  // namespace

const std::vector<BuiltinFunction>& basicBuiltins() {
    static const std::vector<BuiltinFunction> kTable = {
        {"size", 1, 1, size},
        {"clear", 1, 1, clear},
        {"print", 1, 1, print},
        {"error", 1, 3, error},
        {"warning", 1, 3, warning},
        {"trace", 1, 3, trace},
        {"catch", 1, 1, nullptr, Special::Catch},
        {"catchQuiet", 1, 1, nullptr, Special::CatchQuiet},
        {"eval", 1, kAnyNumber, nullptr, Special::Eval},
        {"evalEcho", 1, kAnyNumber, nullptr, Special::EvalEcho},
    };
    return kTable;
}

Value* BuiltinCall::arrayVariable(std::size_t i, Kind kind) {
    Value* variable = variables[i];
    if (variable && variable->isNone()) *variable = Value::defaultOf(kind);
    if (variable && variable->kind() == kind) return variable;
    error = variable ? conversionError(variable->kind(), kind)
                     : "The argument has to be a variable of type " + std::string(kindName(kind)) + ".";
    return nullptr;
}

namespace {

const std::vector<const BuiltinFunction*>& allBuiltins() {
    static const std::vector<const BuiltinFunction*> kAll = [] {
        std::vector<const BuiltinFunction*> all;
        for (const auto* table : {&basicBuiltins(), &mathBuiltins(), &stringBuiltins(), &arrayBuiltins()})
            for (const BuiltinFunction& function : *table)
                all.push_back(&function);
        return all;
    }();
    return kAll;
}

}  // namespace

Index builtinNumber(std::string_view name) {
    static const std::unordered_map<std::string_view, Index> kNumbers = [] {
        std::unordered_map<std::string_view, Index> numbers;
        for (const BuiltinFunction* function : allBuiltins())
            numbers.emplace(function->name, static_cast<Index>(numbers.size()));
        return numbers;
    }();
    const auto found = kNumbers.find(name);
    return found == kNumbers.end() ? kNoIndex : found->second;
}

const BuiltinFunction& builtinFunction(Index number) {
    return *allBuiltins()[number];
}

}  // namespace host::mel
