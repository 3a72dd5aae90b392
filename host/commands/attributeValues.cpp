#include "commands/attributeValues.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include "mel/numberText.h"

namespace host::commands {

namespace {

std::optional<double> switchNumber(std::string_view word) {
    for (const std::string_view on : {"on", "yes", "true"}) {
        if (word == on) return 1.0;
    }
    for (const std::string_view off : {"off", "no", "false"}) {
        if (word == off) return 0.0;
    }
    return std::nullopt;
}

std::optional<double> specialNumber(std::string_view word) {
    using Limits = std::numeric_limits<double>;
    if (word == "nan" || word == "-nan") return Limits::quiet_NaN();
    if (word == "inf") return Limits::infinity();
    if (word == "-inf") return -Limits::infinity();
    return std::nullopt;
}

/// The number of entries, with which an array begins. No more is reserved than the line has words.
std::size_t entryCount(ValueWords& words) {
    const int count = words.integer();
    if (words.ok() && count < 0) words.reject();
    return words.ok() ? static_cast<std::size_t>(count) : 0;
}

template <typename DataType, typename ReadEntry>
graph::DataPtr readArray(ValueWords& words, const ReadEntry& readEntry) {
    const std::size_t count = entryCount(words);
    decltype(DataType::value) entries;
    entries.reserve(std::min(count, words.left()));
    for (std::size_t k = 0; k < count && words.ok(); ++k)
        entries.push_back(readEntry());
    return std::make_shared<DataType>(std::move(entries));
}

template <std::size_t Size>
std::array<double, Size> readNumbers(ValueWords& words) {
    std::array<double, Size> numbers{};
    for (double& number : numbers)
        number = words.anyNumber();
    return numbers;
}

/// The largest number of components that a list may name: its readers make one number of each.
constexpr std::int64_t kMaxComponents = 100'000'000;

graph::DataPtr readComponentList(ValueWords& words) {
    auto list = std::make_shared<graph::ComponentListData>();
    // In files, an empty list may lack its count.
    if (words.atEnd()) return list;
    const std::size_t count = entryCount(words);
    list->reserve(std::min(count, words.left()));
    std::int64_t components = 0;
    for (std::size_t k = 0; k < count && words.ok(); ++k) {
        const std::string_view text = words.word();
        if (!words.ok()) break;
        const auto entry = graph::parseComponentWord(text);
        if (!entry) {
            words.reject();
            break;
        }
        if (!entry->all) components += static_cast<std::int64_t>(entry->run.last) - entry->run.first + 1;
        if (components > kMaxComponents) {
            words.reject("the range is too large");
            break;
        }
        list->appendRun(entry->kind, entry->run.first, entry->run.last);
    }
    return list;
}

std::vector<std::string> componentTexts(const graph::ComponentListData& list) {
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(list.size()));
    for (int k = 0; k < list.size(); ++k) {
        const auto [first, last] = list.runs(k);
        for (const graph::Run* run = first; run != last; ++run) {
            const bool isAll = run->last < run->first;
            texts.push_back(isAll ? std::string(graph::componentWord(list.kind(k))) + "[*]"
                                  : graph::runText(list.kind(k), *run));
        }
    }
    return texts;
}

template <typename Entries>
std::vector<double> flattened(const Entries& entries) {
    std::vector<double> numbers;
    numbers.reserve(4 * entries.size());
    for (const auto& entry : entries)
        numbers.insert(numbers.end(), entry.begin(), entry.end());
    return numbers;
}

std::vector<mel::Vector> vectors(const std::vector<graph::Vector3>& entries) {
    std::vector<mel::Vector> result;
    result.reserve(entries.size());
    for (const graph::Vector3& entry : entries)
        result.push_back({entry[0], entry[1], entry[2]});
    return result;
}

std::optional<Value> emptyValue(std::string_view type) {
    if (type == "string") return Value("");
    if (type == "componentList" || type == "stringArray") return Value(std::vector<std::string>());
    if (type == "pointArray" || type == "doubleArray") return Value(std::vector<double>());
    if (type == "Int32Array") return Value(std::vector<int>());
    if (type == "vectorArray") return Value(std::vector<mel::Vector>());
    if (type == "matrix") {
        std::vector<double> identity(16, 0.0);
        for (std::size_t k = 0; k < 4; ++k)
            identity[5 * k] = 1.0;
        return Value(std::move(identity));
    }
    return std::nullopt;
}

}  // namespace

const Value* ValueWords::next() {
    if (!ok()) return nullptr;
    ++at_;
    if (at_ <= words_.size()) return &words_[at_ - 1];
    reject();
    return nullptr;
}

void ValueWords::reject(const std::string& why) {
    if (!ok()) return;
    error_ = "setAttr: Error reading data element number " + std::to_string(at_ - first_) + ": ";
    if (at_ > first_ && at_ <= words_.size()) error_ += words_[at_ - 1].toString();
    if (!why.empty()) error_ += " (" + why + ')';
}

double ValueWords::number() {
    const Value* value = next();
    if (value == nullptr) return 0.0;
    if (value->isNumber()) return value->toFloat();
    if (const std::string* text = value->getIf<std::string>()) {
        if (const auto parsed = mel::parseNumber(*text)) return parsed->value;
        if (const auto state = switchNumber(*text)) return *state;
    }
    reject();
    return 0.0;
}

double ValueWords::anyNumber() {
    const std::string* text = ok() && !atEnd() ? words_[at_].getIf<std::string>() : nullptr;
    const std::optional<double> special = text != nullptr ? specialNumber(*text) : std::nullopt;
    if (!special) return number();
    ++at_;
    return *special;
}

int ValueWords::integer() {
    const double value = number();
    const bool fits = value == std::floor(value) && std::abs(value) <= std::numeric_limits<int>::max();
    if (!fits) reject();
    return fits ? static_cast<int>(value) : 0;
}

std::string ValueWords::text() {
    const Value* value = next();
    return value != nullptr ? value->toString() : std::string();
}

std::string_view ValueWords::word() {
    const Value* value = next();
    if (value == nullptr) return {};
    if (const std::string* text = value->getIf<std::string>()) return *text;
    reject();
    return {};
}

graph::DataPtr readData(ValueWords& words, std::string_view type) {
    if (type == "string") return std::make_shared<graph::StringData>(words.text());
    if (type == "componentList") return readComponentList(words);
    if (type == "matrix") return std::make_shared<graph::MatrixData>(readNumbers<16>(words));
    if (type == "pointArray")
        return readArray<graph::PointArrayData>(words, [&] { return readNumbers<4>(words); });
    if (type == "vectorArray")
        return readArray<graph::VectorArrayData>(words, [&] { return readNumbers<3>(words); });
    if (type == "doubleArray")
        return readArray<graph::DoubleArrayData>(words, [&] { return words.anyNumber(); });
    if (type == "Int32Array") return readArray<graph::IntArrayData>(words, [&] { return words.integer(); });
    return readArray<graph::StringArrayData>(words, [&] { return words.text(); });
}

std::optional<Value> dataValue(const graph::DataPtr& data, std::string_view type) {
    if (data == nullptr) return emptyValue(type);
    if (const auto text = graph::dataAs<graph::StringData>(data)) return Value(text->value);
    if (const auto texts = graph::dataAs<graph::StringArrayData>(data)) return Value(texts->value);
    if (const auto numbers = graph::dataAs<graph::DoubleArrayData>(data)) return Value(numbers->value);
    if (const auto integers = graph::dataAs<graph::IntArrayData>(data)) return Value(integers->value);
    if (const auto points = graph::dataAs<graph::PointArrayData>(data))
        return Value(flattened(points->value));
    if (const auto entries = graph::dataAs<graph::VectorArrayData>(data))
        return Value(vectors(entries->value));
    if (const auto matrix = graph::dataAs<graph::MatrixData>(data))
        return Value(std::vector<double>(matrix->value.begin(), matrix->value.end()));
    if (const auto list = graph::dataAs<graph::ComponentListData>(data)) return Value(componentTexts(*list));
    return std::nullopt;
}

std::string attributeTypeName(const graph::Attribute& attribute) {
    // Also for numbers that were declared with a type that is stored as a wider one ("short").
    if (!attribute.spec().dataType.empty()) return attribute.spec().dataType;
    switch (attribute.kind()) {
        case graph::ValueKind::Bool:
            return "bool";
        case graph::ValueKind::Int:
            return "long";
        case graph::ValueKind::Enum:
            return "enum";
        case graph::ValueKind::Float:
            return "float";
        case graph::ValueKind::Double:
            return "double";
        case graph::ValueKind::Distance:
            return "doubleLinear";
        case graph::ValueKind::Angle:
            return "doubleAngle";
        case graph::ValueKind::Time:
            return "time";
        case graph::ValueKind::Typed:
            return "typed";
        case graph::ValueKind::Message:
            return "message";
        case graph::ValueKind::Compound:
            break;
    }
    const std::string tuple = graph::tupleName(attribute);
    return tuple.empty() ? "TdataCompound" : tuple;
}

std::string niceName(const std::string& longName) {
    std::string nice;
    for (const char c : longName) {
        const bool isUpper = c >= 'A' && c <= 'Z';
        if (isUpper && !nice.empty()) nice += ' ';
        nice += nice.empty() && c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return nice;
}

}  // namespace host::commands
