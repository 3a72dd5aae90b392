#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "mel/builtinTables.h"
#include "mel/evaluator.h"
#include "mel/operators.h"

namespace host::mel {

namespace {

using Kind = Value::Kind;
using Strings = std::vector<std::string>;

template <typename T>
Kind kindOf() {
    return Value(std::vector<T>()).kind();
}

/// Argument `i` as an array of T. If it cannot be converted, an empty array, and an error is set.
template <typename T>
std::optional<std::vector<T>> arrayArgument(BuiltinCall& call, std::size_t i) {
    const Kind kind = kindOf<T>();
    std::optional<Value> array = call.argument(i).convertedTo(kind);
    if (array && (call.argument(i).isArray() || call.argument(i).isNone()))
        return std::move(*array->getIf<std::vector<T>>());
    call.fail(conversionError(call.argument(i).kind(), kind));
    return std::nullopt;
}

template <typename T>
T scalarArgument(BuiltinCall& call, std::size_t i) {
    const std::optional<Value> value = call.argument(i).convertedTo(elementKind(kindOf<T>()));
    const T* content = value ? value->getIf<T>() : nullptr;
    return content ? *content : T();
}

template <typename T>
bool comesBefore(const T& a, const T& b) {
    return a < b;
}

/// Not-a-number comes last: the plain comparison gives it no place.
template <>
bool comesBefore(const double& a, const double& b) {
    return a < b || (std::isnan(b) && !std::isnan(a));
}

template <typename T>
void sortValues(Value& array) {
    if (auto* values = array.getIf<std::vector<T>>())
        std::sort(values->begin(), values->end(), comesBefore<T>);
}

/// sort(array): a sorted copy, ascending.
bool sort(BuiltinCall& call) {
    call.result = call.argument(0);
    sortValues<int>(call.result);
    sortValues<double>(call.result);
    sortValues<std::string>(call.result);
    const bool sortable = call.result.isArray() && call.result.kind() != Kind::VectorArray;
    return sortable ||
           call.fail(std::string("Cannot sort data of type ") + kindName(call.result.kind()) + ".");
}

/// ...ArrayContains(item, array): how often the array contains the item.
template <typename T>
bool count(BuiltinCall& call) {
    const std::optional<std::vector<T>> array = arrayArgument<T>(call, 1);
    if (!array) return false;
    call.result = static_cast<int>(std::count(array->begin(), array->end(), scalarArgument<T>(call, 0)));
    return true;
}

template <typename T>
bool contains(BuiltinCall& call) {
    if (!count<T>(call)) return false;
    call.result = call.result.toBool();
    return true;
}

/// ...ArrayFind(item, start, array): index of the item from `start` on, or -1.
template <typename T>
bool find(BuiltinCall& call) {
    const std::optional<std::vector<T>> array = arrayArgument<T>(call, 2);
    if (!array) return false;
    const auto start =
        std::min(static_cast<std::size_t>(std::max(call.argument(1).toInt(), 0)), array->size());
    const auto from = array->begin() + static_cast<std::ptrdiff_t>(start);
    const auto found = std::find(from, array->end(), scalarArgument<T>(call, 0));
    call.result = found == array->end() ? -1 : static_cast<int>(found - array->begin());
    return true;
}

/// ...ArrayToString(array, separator)
template <typename T>
bool join(BuiltinCall& call) {
    const std::optional<std::vector<T>> array = arrayArgument<T>(call, 0);
    if (!array) return false;
    const std::string separator = call.text(1);
    std::string text;
    for (std::size_t i = 0; i < array->size(); ++i) {
        if (i > 0) text += separator;
        Value((*array)[i]).appendTo(text);
        if (text.size() > call.evaluator.options().sizeLimit) return call.fail("String too long.");
    }
    call.result = std::move(text);
    return true;
}

/// ...ArrayRemove(items, array): the array without these items.
template <typename T>
bool removeItems(BuiltinCall& call) {
    const std::optional<std::vector<T>> items = arrayArgument<T>(call, 0);
    std::optional<std::vector<T>> array = items ? arrayArgument<T>(call, 1) : std::nullopt;
    if (!array) return false;
    const std::unordered_set<T> unwanted(items->begin(), items->end());
    array->erase(std::remove_if(array->begin(), array->end(),
                                [&](const T& element) { return unwanted.count(element) > 0; }),
                 array->end());
    call.result = std::move(*array);
    return true;
}

/// ...ArrayInsertAtIndex(index, array variable, item): 1, or 0 if the index is out of range.
template <typename T>
bool insertAtIndex(BuiltinCall& call) {
    Value* variable = call.arrayVariable(1, kindOf<T>());
    if (!variable) return false;
    auto& values = *variable->getIf<std::vector<T>>();
    const int index = call.argument(0).toInt();
    const bool fits = index >= 0 && static_cast<std::size_t>(index) <= values.size();
    const T item = scalarArgument<T>(call, 2);
    if (fits) values.insert(values.begin() + index, item);
    call.result = fits;
    return true;
}

/// ...ArrayRemoveAtIndex(index, array variable): 1, or 0 if the index is out of range.
template <typename T>
bool removeAtIndex(BuiltinCall& call) {
    Value* variable = call.arrayVariable(1, kindOf<T>());
    if (!variable) return false;
    auto& values = *variable->getIf<std::vector<T>>();
    const int index = call.argument(0).toInt();
    const bool fits = index >= 0 && static_cast<std::size_t>(index) < values.size();
    if (fits) values.erase(values.begin() + index);
    call.result = fits;
    return true;
}

template <typename T>
bool concatenate(BuiltinCall& call) {
    std::optional<std::vector<T>> first = arrayArgument<T>(call, 0);
    const std::optional<std::vector<T>> second = first ? arrayArgument<T>(call, 1) : std::nullopt;
    if (!second) return false;
    first->insert(first->end(), second->begin(), second->end());
    if (first->size() > call.evaluator.options().sizeLimit) return call.fail("Array too long.");
    call.result = std::move(*first);
    return true;
}

/// appendStringArray(array variable, other, number): appends the first elements of the other array.
bool appendStringArray(BuiltinCall& call) {
    Value* variable = call.arrayVariable(0, Kind::StringArray);
    const std::optional<Strings> other = variable ? arrayArgument<std::string>(call, 1) : std::nullopt;
    if (!other) return false;
    const auto number =
        std::min(static_cast<std::size_t>(std::max(call.argument(2).toInt(), 0)), other->size());
    Strings& values = *variable->getIf<Strings>();
    values.insert(values.end(), other->begin(), other->begin() + static_cast<std::ptrdiff_t>(number));
    return values.size() <= call.evaluator.options().sizeLimit || call.fail("Array too long.");
}

/// Keeps the first of equal elements.
bool removeDuplicates(BuiltinCall& call) {
    const std::optional<Strings> array = arrayArgument<std::string>(call, 0);
    if (!array) return false;
    std::unordered_set<std::string> seen;
    Strings result;
    for (const std::string& element : *array)
        if (seen.insert(element).second) result.push_back(element);
    call.result = std::move(result);
    return true;
}

bool removePrefix(BuiltinCall& call) {
    std::optional<Strings> array = arrayArgument<std::string>(call, 0);
    if (!array) return false;
    const std::string prefix = call.text(1);
    for (std::string& element : *array)
        if (element.compare(0, prefix.size(), prefix) == 0) element.erase(0, prefix.size());
    call.result = std::move(*array);
    return true;
}

}  // namespace

const std::vector<BuiltinFunction>& arrayBuiltins() {
    static const std::vector<BuiltinFunction> kTable = {
        {"sort", 1, 1, sort},
        {"stringArrayCatenate", 2, 2, concatenate<std::string>},
        {"stringArrayContains", 2, 2, contains<std::string>},
        {"stringArrayCount", 2, 2, count<std::string>},
        {"stringArrayFind", 3, 3, find<std::string>},
        {"stringArrayToString", 2, 2, join<std::string>},
        {"stringArrayRemove", 2, 2, removeItems<std::string>},
        {"stringArrayRemoveDuplicates", 1, 1, removeDuplicates},
        {"stringArrayRemovePrefix", 2, 2, removePrefix},
        {"stringArrayInsertAtIndex", 3, 3, insertAtIndex<std::string>},
        {"stringArrayRemoveAtIndex", 2, 2, removeAtIndex<std::string>},
        {"appendStringArray", 3, 3, appendStringArray},
        {"intArrayCatenate", 2, 2, concatenate<int>},
        {"intArrayContains", 2, 2, contains<int>},
        {"intArrayCount", 2, 2, count<int>},
        {"intArrayFind", 3, 3, find<int>},
        {"intArrayToString", 2, 2, join<int>},
        {"intArrayRemove", 2, 2, removeItems<int>},
        {"intArrayInsertAtIndex", 3, 3, insertAtIndex<int>},
        {"intArrayRemoveAtIndex", 2, 2, removeAtIndex<int>},
        {"floatArrayCatenate", 2, 2, concatenate<double>},
        {"floatArrayContains", 2, 2, contains<double>},
        {"floatArrayCount", 2, 2, count<double>},
        {"floatArrayFind", 3, 3, find<double>},
        {"floatArrayToString", 2, 2, join<double>},
        {"floatArrayRemove", 2, 2, removeItems<double>},
        {"floatArrayInsertAtIndex", 3, 3, insertAtIndex<double>},
        {"floatArrayRemoveAtIndex", 2, 2, removeAtIndex<double>},
    };
    return kTable;
}

}  // namespace host::mel
