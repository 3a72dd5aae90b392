#include "scene/setStatement.h"

#include <algorithm>
#include <limits>

#include "graph/names.h"
#include "scene/dataText.h"
#include "scene/words.h"
#include "text/numbers.h"

namespace host::scene {

namespace {

using graph::Attribute;
using graph::PlugKey;

std::string_view unquoted(const Word& word) {
    return word.kind == Word::Kind::Quoted && word.raw.size() >= 2 ? word.raw.substr(1, word.raw.size() - 2)
                                                                   : word.raw;
}

/// Reads one flag before the attribute's name.
/// @return false if the word is none of the flags
bool readFlag(SetHead& head, WordScanner& words, const Word& flag) {
    const auto is = [&](std::string_view shortFlag, std::string_view longFlag) {
        return flag.isBare(shortFlag) || flag.isBare(longFlag);
    };
    if (is("-l", "-lock")) {
        head.isLocked = words.next().isOn();
    } else if (is("-k", "-keyable")) {
        head.isKeyable = words.next().isOn();
    } else if (is("-cb", "-channelBox")) {
        head.isInChannelBox = words.next().isOn();
    } else if (is("-s", "-size") || is("-ch", "-capacityHint") || is("-ca", "-caching")) {
        words.next();
    } else if (is("-typ", "-type")) {
        head.type = unquoted(words.next());
    } else if (!is("-av", "-alteredValue") && !is("-c", "-clamp")) {
        return false;
    }
    return true;
}

/// Numbers one after the other, switches among them.
bool readNumbers(std::string_view text, std::vector<double>& numbers) {
    NumberScanner scanner(text);
    while (const auto number = scanner.next())
        numbers.push_back(*number);
    return scanner.atEnd();
}

/// The kinds of the numbers of one element: one, or those of a compound's children. Empty if it holds
/// anything else.
std::vector<graph::ValueKind> elementKinds(const Attribute& attribute) {
    if (graph::isNumber(attribute.kind())) return {attribute.kind()};
    std::vector<graph::ValueKind> kinds;
    for (const auto& child : attribute.children()) {
        if (!graph::isNumber(child->kind()) || child->isArray()) return {};
        kinds.push_back(child->kind());
    }
    return kinds;
}

void toGraphUnits(std::vector<double>& numbers, const std::vector<graph::ValueKind>& kinds,
                  const SceneUnits& units) {
    for (std::size_t k = 0; k < numbers.size(); ++k) {
        const graph::ValueKind kind = kinds[k % kinds.size()];
        numbers[k] = graph::roundedTo(kind, units.toGraph(kind, numbers[k]));
    }
}

PlugKey childKey(const PlugKey& key, const Attribute& child) {
    PlugKey below = key;
    below.attribute = &child;
    return below;
}

/// Calls visit(key, number) for each number of a target.
template <typename Visit>
void visitNumbers(const SetTarget& target, const std::vector<double>& numbers, Visit&& visit) {
    const Attribute& attribute = *target.key.attribute;
    std::size_t at = 0;
    for (int k = 0; k < target.count; ++k) {
        const PlugKey key = target.at(k);
        if (!attribute.isCompound()) {
            visit(key, numbers[at++]);
            continue;
        }
        for (const auto& child : attribute.children())
            visit(childKey(key, *child), numbers[at++]);
    }
}

/// Calls visit(element key, number) for the pairs of a list of weights, element after element. Nothing is
/// called for an element without pairs.
template <typename Visit>
void visitRows(const SetTarget& target, const std::vector<double>& numbers, Visit&& visit) {
    std::size_t at = 0;
    for (int k = 0; k < target.count; ++k) {
        PlugKey key = target.at(k);
        const auto pairs = static_cast<std::size_t>(numbers[at++]);
        for (std::size_t pair = 0; pair < pairs; ++pair, at += 2) {
            key.depth = static_cast<std::uint8_t>(key.attribute->arrayDepth());
            key.indices[static_cast<std::size_t>(key.depth - 1)] = static_cast<int>(numbers[at]);
            visit(key, numbers[at + 1]);
        }
    }
}

/// Whether lists of pairs fill the numbers exactly, one list for each element.
bool areRows(const std::vector<double>& numbers, int count) {
    std::size_t at = 0;
    for (int k = 0; k < count; ++k) {
        if (at >= numbers.size()) return false;
        const double pairs = numbers[at];
        if (!(pairs >= 0.0) || pairs > static_cast<double>(numbers.size())) return false;
        for (std::size_t index = at + 1; index < at + 1 + 2 * static_cast<std::size_t>(pairs); index += 2) {
            if (index >= numbers.size()) return false;
            if (!(numbers[index] >= 0.0) || numbers[index] > std::numeric_limits<int>::max()) return false;
        }
        at += 1 + 2 * static_cast<std::size_t>(pairs);
    }
    return at == numbers.size();
}

}  // namespace

const graph::NumberMulti* numbersAt(const graph::Node& node, const PlugKey& key) {
    const Attribute* array = graph::flatArrayOf(*key.attribute);
    if (array == nullptr) return nullptr;
    PlugKey whole = key;
    whole.attribute = array;
    whole.depth = static_cast<std::uint8_t>(array->arrayDepth() - 1);
    whole.indices[whole.depth] = 0;
    const graph::Slot* slot = node.slot(whole);
    if (slot == nullptr) return nullptr;
    const auto* numbers = std::get_if<std::unique_ptr<graph::NumberMulti>>(&slot->content);
    return numbers != nullptr ? numbers->get() : nullptr;
}

bool SetHead::hasValues() const {
    return values.find_first_not_of(" \t\r\n\f\v") != std::string_view::npos || type == "componentList";
}

std::optional<SetHead> readSetHead(std::string_view statement, bool isDoubleByte) {
    WordScanner words(statement, isDoubleByte);
    words.next();
    SetHead head;
    Word word = words.next();
    for (; !word.isEnd() && !word.isText(); word = words.next()) {
        if (!readFlag(head, words, word)) return std::nullopt;
    }
    head.path = unquoted(word);
    if (head.path.size() < 2 || head.path.front() != '.') return std::nullopt;
    head.path.remove_prefix(1);
    // Flags, of which -type is the usual one, may stand after the name as well.
    for (WordScanner ahead = words;; words = ahead) {
        const Word flag = ahead.next();
        if (!flag.isFlag() || !readFlag(head, ahead, flag)) break;
    }
    head.values = words.rest();
    return head;
}

graph::PlugKey SetTarget::at(int position) const {
    PlugKey element = key;
    if (rangeDepth > 0) element.indices[static_cast<std::size_t>(rangeDepth - 1)] += position;
    return element;
}

std::optional<SetTarget> findTarget(graph::Node& node, std::string_view path) {
    SetTarget target;
    if (const Attribute* kept = node.findKept(path)) {
        target.key.attribute = kept;
        return target;
    }
    std::string single(path);
    const std::size_t colon = path.find(':');
    int last = -1;
    if (colon != std::string_view::npos) {
        const std::size_t open = path.rfind('[', colon);
        const std::size_t close = path.find(']', colon);
        if (open == std::string_view::npos || close == std::string_view::npos) return std::nullopt;
        const auto range = text::readIndexRange(path.substr(open + 1, close - open - 1));
        if (!range) return std::nullopt;
        last = range->last;
        single.erase(open + (colon - open), close - colon);
        target.rangeDepth =
            static_cast<int>(std::count(path.begin(), path.begin() + static_cast<long>(close), '['));
        // No file has the numbers for a range whose length is no int.
        if (range->last - range->first == std::numeric_limits<int>::max()) return std::nullopt;
        target.count = range->last - range->first + 1;
    }
    const graph::PlugMatch match = graph::findOwnPlug(node.ref(), single);
    if (!match.ok || match.plug.attribute().isOutput()) return std::nullopt;
    target.key = match.plug.key();
    // The range stands on the array that is as deep as the number of brackets up to it, if none was left out.
    if (last >= 0 &&
        (target.rangeDepth > target.key.depth ||
         target.key.indices[static_cast<std::size_t>(target.rangeDepth - 1)] != last - target.count + 1))
        return std::nullopt;
    return target;
}

std::optional<SetValues> readValues(const SetHead& head, const SetTarget& target, const TextForm& form) {
    const Attribute& attribute = *target.key.attribute;
    SetValues result;
    const bool isArray = attribute.isArray() && target.key.depth < attribute.arrayDepth();
    if (attribute.kind() == graph::ValueKind::Typed) {
        if (isArray || target.rangeDepth > 0) return std::nullopt;
        result.data = readData(head, attribute.spec().dataType, form);
        return result.data != nullptr ? std::optional(std::move(result)) : std::nullopt;
    }
    const std::vector<graph::ValueKind> kinds = elementKinds(attribute);
    if (kinds.empty() || !readNumbers(head.values, result.numbers)) return std::nullopt;
    if (isArray) {
        // ".wl[0:499].w": the inner array as a whole, for a range of the outer one.
        result.isRows = kinds.size() == 1 && target.key.depth + 1 == attribute.arrayDepth();
        if (!result.isRows || !areRows(result.numbers, target.count)) return std::nullopt;
        return result;
    }
    if (result.numbers.size() != kinds.size() * static_cast<std::size_t>(target.count)) return std::nullopt;
    toGraphUnits(result.numbers, kinds, form.units);
    return result;
}

void applyValues(graph::NodeLoader& loader, const SetTarget& target, const SetValues& values) {
    if (values.data != nullptr) return loader.setData(target.key, values.data);
    const auto set = [&](const PlugKey& key, double number) { loader.setNumber(key, number); };
    if (values.isRows) return visitRows(target, values.numbers, set);
    visitNumbers(target, values.numbers, set);
}

bool exists(const graph::Node& node, const PlugKey& key) {
    const Attribute& attribute = *key.attribute;
    if (attribute.kind() == graph::ValueKind::Typed) return node.storedData(key) != nullptr;
    if (const Attribute* array = graph::flatArrayOf(attribute)) {
        const graph::NumberMulti* numbers = numbersAt(node, key);
        return numbers != nullptr &&
               numbers->contains(key.indices[static_cast<std::size_t>(array->arrayDepth() - 1)]);
    }
    return key.depth == 0 || node.slot(key) != nullptr;
}

bool holdsValues(const graph::Node& node, const SetTarget& target, const SetValues& values,
                 const PlugTest& isSetLater) {
    if (values.data != nullptr) {
        return isSetLater(target.key) ? exists(node, target.key)
                                      : isSameData(node.storedData(target.key), values.data);
    }
    bool isSame = true;
    const auto compare = [&](const PlugKey& key, double number) {
        if (!isSame) return;
        const bool mustExist = graph::flatArrayOf(*key.attribute) != nullptr || isSetLater(key);
        isSame = (!mustExist || exists(node, key)) &&
                 (isSetLater(key) || isSameNumber(node.storedNumber(key), number));
    };
    if (!values.isRows) {
        visitNumbers(target, values.numbers, compare);
        return isSame;
    }
    visitRows(target, values.numbers, compare);
    // A list that became longer has weights that no statement names.
    std::size_t named = 0;
    visitRows(target, values.numbers, [&](const PlugKey& key, double) { named += isSetLater(key) ? 0 : 1; });
    for (int k = 0; k < target.count && isSame; ++k) {
        PlugKey key = target.at(k);
        const graph::NumberMulti* flat = numbersAt(node, key);
        if (flat == nullptr) continue;
        ++key.depth;
        for (const int index : flat->indices()) {
            key.indices[static_cast<std::size_t>(key.depth - 1)] = index;
            if (isSetLater(key)) continue;
            if (named == 0) return false;
            --named;
        }
    }
    return isSame && named == 0;
}

}  // namespace host::scene
