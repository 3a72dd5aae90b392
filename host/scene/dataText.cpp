#include "scene/dataText.h"

#include <cmath>
#include <limits>
#include <vector>

#include "graph/component.h"
#include "scene/lexical.h"
#include "scene/numbersText.h"
#include "scene/words.h"

namespace host::scene {

namespace {

using graph::DataPtr;

std::optional<double> wordNumber(std::string_view word) {
    using Limits = std::numeric_limits<double>;
    if (word == "yes" || word == "on" || word == "true") return 1.0;
    if (word == "no" || word == "off" || word == "false") return 0.0;
    if (word == "nan" || word == "-nan") return Limits::quiet_NaN();
    if (word == "inf") return Limits::infinity();
    if (word == "-inf") return -Limits::infinity();
    return std::nullopt;
}

/// The number of entries that an array begins with. Nothing is reserved by it: it may be any number.
bool readCount(NumberScanner& scanner, std::size_t& count) {
    const auto number = scanner.next();
    if (!number || !(*number >= 0.0) || *number != std::trunc(*number) || *number > 1e15) return false;
    count = static_cast<std::size_t>(*number);
    return true;
}

/// An array with its count first, which is all that is there if it is empty.
/// @param width  numbers of an entry
template <typename DataType, typename Add>
DataPtr readArray(std::string_view text, std::size_t width, const Add& add) {
    NumberScanner scanner(text);
    std::size_t count = 0;
    if (scanner.atEnd()) return std::make_shared<DataType>(decltype(DataType::value)());
    if (!readCount(scanner, count)) return nullptr;
    decltype(DataType::value) entries;
    double numbers[4] = {};
    for (std::size_t k = 0; k < count; ++k) {
        for (std::size_t part = 0; part < width; ++part) {
            const auto number = scanner.next();
            if (!number) return nullptr;
            numbers[part] = *number;
        }
        add(entries, numbers);
    }
    return scanner.atEnd() ? std::make_shared<DataType>(std::move(entries)) : nullptr;
}

DataPtr readPoints(std::string_view text) {
    return readArray<graph::PointArrayData>(text, 4, [](auto& entries, const double* n) {
        entries.push_back({n[0], n[1], n[2], n[3]});
    });
}

DataPtr readInts(std::string_view text) {
    bool fits = true;
    DataPtr data = readArray<graph::IntArrayData>(text, 1, [&](auto& entries, const double* n) {
        fits = fits && n[0] >= std::numeric_limits<int>::min() && n[0] <= std::numeric_limits<int>::max();
        entries.push_back(fits ? static_cast<int>(n[0]) : 0);
    });
    return fits ? data : nullptr;
}

DataPtr readMatrix(std::string_view text) {
    graph::Matrix16 matrix{};
    NumberScanner scanner(text);
    for (double& entry : matrix) {
        const auto number = scanner.next();
        if (!number) return nullptr;
        entry = *number;
    }
    return scanner.atEnd() ? std::make_shared<graph::MatrixData>(matrix) : nullptr;
}

/// The count of a list of texts, which an empty list may lack.
/// @return false if the next word is none
bool readTextCount(WordScanner& words, std::size_t& count) {
    const Word word = words.next();
    if (word.isEnd()) return true;
    NumberScanner scanner(word.raw);
    return word.kind == Word::Kind::Bare && readCount(scanner, count) && scanner.atEnd();
}

DataPtr readComponents(std::string_view text) {
    WordScanner words(text);
    std::size_t count = 0;
    if (!readTextCount(words, count)) return nullptr;
    auto list = std::make_shared<graph::ComponentListData>();
    for (std::size_t k = 0; k < count; ++k) {
        const Word word = words.next();
        if (!word.isText()) return nullptr;
        const auto component = graph::parseComponentWord(word.raw.substr(1, word.raw.size() - 2));
        if (!component) return nullptr;
        list->appendRun(component->kind, component->run.first, component->run.last);
    }
    return words.next().isEnd() ? list : nullptr;
}

DataPtr readStrings(std::string_view text, bool isDoubleByte) {
    WordScanner words(text, isDoubleByte);
    std::size_t count = 0;
    if (!readTextCount(words, count)) return nullptr;
    std::vector<std::string> entries;
    for (std::size_t k = 0; k < count; ++k) {
        const Word word = words.next();
        if (!word.isText()) return nullptr;
        entries.push_back(word.text());
    }
    return words.next().isEnd() ? std::make_shared<graph::StringArrayData>(std::move(entries)) : nullptr;
}

DataPtr readString(std::string_view text, bool isDoubleByte) {
    WordScanner words(text, isDoubleByte);
    const Word word = words.next();
    if (!word.isText() || !words.next().isEnd()) return nullptr;
    return std::make_shared<graph::StringData>(word.text());
}

template <typename Entries>
void appendEntries(std::string& text, const Entries& entries) {
    text += ' ' + std::to_string(entries.size());
    for (const auto& entry : entries) {
        for (const double number : entry) {
            text += ' ';
            appendDouble(text, number);
        }
    }
}

std::string componentsText(const graph::ComponentListData& list) {
    std::string text;
    std::size_t count = 0;
    for (int k = 0; k < list.size(); ++k) {
        const auto [first, last] = list.runs(k);
        for (const graph::Run* run = first; run != last; ++run, ++count) {
            const bool isAll = run->last < run->first;
            text += isAll ? " \"" + std::string(graph::componentWord(list.kind(k))) + "[*]\""
                          : " \"" + graph::runText(list.kind(k), *run) + '"';
        }
    }
    return count > 0 ? ' ' + std::to_string(count) + text : std::string(" 0");
}

}  // namespace

void NumberScanner::skipBlanks() {
    while (at_ != end_ && isBlank(*at_))
        ++at_;
}

bool NumberScanner::atEnd() {
    skipBlanks();
    return at_ == end_;
}

std::optional<double> NumberScanner::next() {
    skipBlanks();
    if (at_ == end_) return std::nullopt;
    const std::string_view rest(at_, static_cast<std::size_t>(end_ - at_));
    double value = 0.0;
    const auto [stop, code] = std::from_chars(at_, end_, value);
    const bool isWhole = stop == end_ || isBlank(*stop);
    if (code == std::errc() && isWhole && *at_ != 'n' && *at_ != 'i') {
        at_ = stop;
        return value;
    }
    std::size_t length = 0;
    while (length < rest.size() && !isBlank(rest[length]))
        ++length;
    const std::string_view word = rest.substr(0, length);
    std::optional<double> number = wordNumber(word);
    if (!number && code == std::errc::result_out_of_range) {
        const auto read = text::readNumber<double>(word);
        if (read.length == length) number = read.value;
    }
    if (number) at_ += length;
    return number;
}

DataPtr readData(const SetHead& head, const std::string& dataType, const TextForm& form) {
    // Without -type nothing is data. An attribute that takes one type takes no other.
    if (head.type.empty() || (!dataType.empty() && dataType != head.type)) return nullptr;
    const std::string_view text = head.values;
    if (head.type == "string") return readString(text, form.isDoubleByte);
    if (head.type == "pointArray") return readPoints(text);
    if (head.type == "componentList") return readComponents(text);
    if (head.type == "Int32Array") return readInts(text);
    if (head.type == "matrix") return readMatrix(text);
    if (head.type == "stringArray") return readStrings(text, form.isDoubleByte);
    if (head.type == "doubleArray")
        return readArray<graph::DoubleArrayData>(
            text, 1, [](auto& entries, const double* n) { entries.push_back(n[0]); });
    if (head.type == "vectorArray")
        return readArray<graph::VectorArrayData>(text, 3, [](auto& entries, const double* n) {
            entries.push_back({n[0], n[1], n[2]});
        });
    return nullptr;
}

namespace {

/// What the host puts between a value and the semicolon.
const char* blanksAfter(std::string_view type) {
    if (type == "string" || type == "componentList" || type == "matrix") return "";
    return type == "stringArray" ? "  " : " ";
}

}  // namespace

std::string dataText(const graph::Data& data, bool isDoubleByte) {
    if (const auto* kept = dynamic_cast<const KeptData*>(&data))
        return (kept->type.empty() ? std::string() : "-type " + inQuotes(kept->type)) + kept->text;
    std::string text = "-type " + inQuotes(data.typeName());
    const auto numbers = [&](const auto& entries) {
        text += ' ' + std::to_string(entries.size());
        for (const auto entry : entries) {
            text += ' ';
            appendDouble(text, static_cast<double>(entry));
        }
    };
    if (const auto* string = dynamic_cast<const graph::StringData*>(&data)) {
        text += ' ' + inQuotes(string->value, isDoubleByte);
    } else if (const auto* strings = dynamic_cast<const graph::StringArrayData*>(&data)) {
        text += ' ' + std::to_string(strings->value.size());
        for (const std::string& entry : strings->value)
            text += ' ' + inQuotes(entry, isDoubleByte);
    } else if (const auto* doubles = dynamic_cast<const graph::DoubleArrayData*>(&data)) {
        numbers(doubles->value);
    } else if (const auto* ints = dynamic_cast<const graph::IntArrayData*>(&data)) {
        numbers(ints->value);
    } else if (const auto* points = dynamic_cast<const graph::PointArrayData*>(&data)) {
        appendEntries(text, points->value);
    } else if (const auto* vectors = dynamic_cast<const graph::VectorArrayData*>(&data)) {
        appendEntries(text, vectors->value);
    } else if (const auto* matrix = dynamic_cast<const graph::MatrixData*>(&data)) {
        for (const double entry : matrix->value) {
            text += ' ';
            appendDouble(text, entry);
        }
    } else if (const auto* list = dynamic_cast<const graph::ComponentListData*>(&data)) {
        text += componentsText(*list);
    } else {
        return {};
    }
    return text + blanksAfter(data.typeName());
}

bool isSameData(const graph::DataPtr& a, const graph::DataPtr& b) {
    if (a == b) return true;
    if (a == nullptr || b == nullptr || a->typeName() != b->typeName()) return false;
    std::string first;
    std::string second;
    a->describe(first);
    b->describe(second);
    return first == second;
}

}  // namespace host::scene
