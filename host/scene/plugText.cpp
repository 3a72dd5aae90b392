#include "scene/plugText.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "graph/attributeTypes.h"
#include "graph/names.h"
#include "scene/dataText.h"
#include "scene/fileTypes.h"
#include "scene/numbersText.h"

namespace host::scene {

namespace {

using graph::Attribute;
using graph::PlugKey;
using graph::ValueKind;

/// Elements of a list in one statement, as the host divides it.
int chunkSize(const Attribute& array) {
    const std::string& name = array.shortName();
    if (name == "pt" || name == "n") return 166;
    if (name == "uvsp") return 250;
    if (name == "clsp") return 125;
    return 500;
}

void appendNumber(std::string& text, ValueKind kind, double value, const TextForm& form) {
    const double inFile = form.units.toFile(kind, value);
    if (kind == ValueKind::Bool) {
        text += value != 0.0 ? "yes" : "no";
    } else if (kind == ValueKind::Float) {
        appendSingle(text, inFile);
    } else {
        appendDouble(text, inFile);
    }
}

/// The numbers of one element, each after a blank.
void appendElement(std::string& text, const graph::Node& node, const PlugKey& key, const TextForm& form) {
    const Attribute& attribute = *key.attribute;
    if (!attribute.isCompound()) {
        text += ' ';
        return appendNumber(text, attribute.kind(), node.storedNumber(key), form);
    }
    for (const auto& child : attribute.children()) {
        PlugKey below = key;
        below.attribute = child.get();
        text += ' ';
        appendNumber(text, child->kind(), node.storedNumber(below), form);
    }
}

/// `count index weight index weight ...` of the inner array of one element.
void appendRow(std::string& text, const graph::Node& node, const PlugKey& key, const TextForm& form) {
    const graph::NumberMulti* numbers = numbersAt(node, key);
    text += ' ' + std::to_string(numbers != nullptr ? numbers->size() : 0);
    if (numbers == nullptr) return;
    for (const int index : numbers->indices()) {
        text += ' ' + std::to_string(index) + ' ';
        appendNumber(text, key.attribute->kind(), *numbers->find(index), form);
    }
}

/// Values of several elements after their number, their name, and the type of vectors.
std::string listText(const Attribute& array, int count, const std::string& path, const std::string& values) {
    std::string text;
    if (count > 1) text.append("-s ").append(std::to_string(count)).append(" ");
    text.append("\".").append(path).append("\" ");
    const std::string type = array.isCompound() ? graph::tupleName(array) : std::string();
    if (!type.empty()) text.append("-type \"").append(type).append("\" ");
    return text.append(values);
}

/// The path with another range of elements in place of its own.
std::string withRange(std::string_view path, int first, int last) {
    const std::size_t colon = path.find(':');
    if (colon == std::string_view::npos) return std::string(path);
    const std::size_t open = path.rfind('[', colon);
    const std::size_t close = path.find(']', colon);
    const std::string range =
        first == last ? std::to_string(first) : std::to_string(first) + ':' + std::to_string(last);
    return std::string(path.substr(0, open + 1)) + range + std::string(path.substr(close));
}

std::vector<std::string> plainText(const graph::Node& node, const PlugKey& key, std::string_view path,
                                   const TextForm& form) {
    const Attribute& attribute = *key.attribute;
    if (!exists(node, key)) return {};
    std::string text = '"' + ('.' + std::string(path)) + "\" ";
    if (attribute.kind() == ValueKind::Typed) {
        const std::string value = dataText(*node.storedData(key), form.isDoubleByte);
        return value.empty() ? std::vector<std::string>() : std::vector<std::string>{text + value};
    }
    const std::string type = attribute.isCompound() ? graph::tupleName(attribute) : std::string();
    if (!type.empty()) text += "-type \"" + type + '"';
    std::string numbers;
    appendElement(numbers, node, key, form);
    text += type.empty() ? numbers.substr(1) : numbers + ' ';
    return {text};
}

}  // namespace

std::string plugPath(const PlugKey& key) {
    std::string text;
    int depth = 0;
    for (const Attribute* attribute : key.attribute->path()) {
        const bool isLast = attribute == key.attribute;
        if (attribute->isArray()) ++depth;
        if (!isLast && !attribute->isArray()) continue;
        if (!text.empty()) text += '.';
        text += attribute->shortName();
        if (attribute->isArray() && depth <= key.depth)
            text += '[' + std::to_string(key.indices[static_cast<std::size_t>(depth - 1)]) + ']';
    }
    return text;
}

namespace {

/// A path in which each name begins in the root namespace.
std::string fromRoot(std::string_view path) {
    std::string absolute;
    for (std::size_t from = 0; from <= path.size();) {
        const std::size_t bar = std::min(path.find('|', from), path.size());
        const std::string_view part = path.substr(from, bar - from);
        if (from > 0) absolute += '|';
        if (!part.empty() && part.front() != ':') absolute += ':';
        absolute += part;
        from = bar + 1;
    }
    return absolute;
}

}  // namespace

graph::NodeRef findFromRoot(const graph::Graph& graph, std::string_view path) {
    return graph::findNode(graph, fromRoot(path));
}

graph::Instance instanceFromRoot(const graph::Graph& graph, graph::Node& node, std::string_view path,
                                 graph::InstanceNumbers& numbers) {
    return graph::instanceOn(graph, node, fromRoot(path), numbers);
}

std::string nodeText(const graph::Graph& graph, const graph::Node& node) {
    // The name of a node that is there several times is that of a place.
    if (graph.hasInstances() && graph::isInstanced(node)) return graph.fullPath(node);
    const std::string name = graph.uniqueName(node);
    return isDefaultNode(node) ? ':' + name : name;
}

bool isInstanceGroups(const graph::Attribute& attribute) {
    return attribute.longName() == "instObjGroups";
}

std::string plugText(const graph::Graph& graph, const graph::Plug& plug) {
    return nodeText(graph, *plug.node()) + '.' + plugPath(plug.key());
}

std::vector<std::string> valueTexts(const graph::Node& node, const SetTarget& target, std::string_view path,
                                    const TextForm& form) {
    if (target.rangeDepth == 0) return plainText(node, target.key, path, form);
    const Attribute& attribute = *target.key.attribute;
    const bool isRows = attribute.isArray() && target.key.depth < attribute.arrayDepth();
    const auto hasElement = [&](int k) {
        return isRows ? node.slot(target.at(k)) != nullptr : exists(node, target.at(k));
    };
    std::vector<std::string> texts;
    const int start = target.key.indices[static_cast<std::size_t>(target.rangeDepth - 1)];
    for (int k = 0; k < target.count; ++k) {
        if (!hasElement(k)) continue;
        const int first = k;
        std::string values;
        for (; k < target.count && hasElement(k); ++k) {
            if (isRows) {
                appendRow(values, node, target.at(k), form);
            } else {
                appendElement(values, node, target.at(k), form);
            }
        }
        texts.push_back(
            listText(attribute, k - first, withRange(path, start + first, start + k - 1), values));
    }
    return texts;
}

std::string stateFlags(const Attribute& attribute, const graph::PlugState& state) {
    std::string text;
    if (state.isLocked) text += "-l on ";
    if (state.isKeyable != attribute.spec().isKeyable) text += state.isKeyable ? "-k on " : "-k off ";
    if (state.isInChannelBox) text += "-cb on ";
    return text;
}

void NewValues::cover(const SetTarget& target) {
    // Neighbours in the innermost array are neighbours in the order of keys.
    if (target.rangeDepth == target.key.depth) return coverKeys(target.at(0), target.at(target.count - 1));
    for (int k = 0; k < target.count; ++k)
        coverKeys(target.at(k), target.at(k));
}

void NewValues::coverKeys(PlugKey first, PlugKey last) {
    auto at = covered_.upper_bound(first);
    if (at != covered_.begin() && !(std::prev(at)->second < first)) {
        --at;
        first = at->first;
    }
    while (at != covered_.end() && !(last < at->first)) {
        last = std::max(last, at->second);
        at = covered_.erase(at);
    }
    covered_.emplace(first, last);
}

bool NewValues::isInRange(const PlugKey& key) const {
    const auto after = covered_.upper_bound(key);
    return after != covered_.begin() && !(std::prev(after)->second < key);
}

bool NewValues::isCovered(const PlugKey& key) const {
    if (isInRange(key)) return true;
    // A statement about a compound covers its parts.
    const Attribute* above = key.attribute->isArray() ? nullptr : key.attribute->parent();
    if (above == nullptr) return false;
    PlugKey whole = key;
    whole.attribute = above;
    return isInRange(whole);
}

std::string NewValues::text(const Attribute& root) {
    text_.clear();
    if (root.isOutput()) return {};
    const PlugKey key{&root, {}, 0};
    if (const graph::Slot* slot = node_.slot(key)) write(root, key, *slot);
    writeStates(root);
    return std::move(text_);
}

void NewValues::line(const std::string& text) {
    text_ += "\tsetAttr " + text + ';' + form_.lineEnd;
}

/// Whether a connection gives the plug its value: then the node has none of its own to save.
bool NewValues::isFed(const PlugKey& key) const {
    // Deltas of a connected target mesh are made anew from it.
    const Attribute* above = key.attribute->parent();
    if (const Attribute* target = above != nullptr ? above->child("inputGeomTarget") : nullptr) {
        PlugKey mesh = key;
        mesh.attribute = target;
        if (node_.incoming().count(mesh) != 0) return true;
    }
    if (!node_.hasIncoming(*key.attribute)) return false;
    for (graph::Plug plug(node_.ref(), key); plug; plug = plug.parent()) {
        if (graph_.source(plug)) return true;
    }
    return false;
}

/// Whether an element of numbers exists only because something is connected to it.
bool NewValues::isOnlySource(const Attribute& array, const PlugKey& key, const double* values) const {
    const std::vector<double>& defaults = array.flatDefaults();
    if (!std::equal(defaults.begin(), defaults.end(), values)) return false;
    const auto& outgoing = node_.outgoing();
    const auto isSource = [&](const Attribute* attribute) {
        PlugKey at = key;
        at.attribute = attribute;
        return outgoing.count(at) != 0;
    };
    const auto& children = array.children();
    return isSource(&array) || std::any_of(children.begin(), children.end(),
                                           [&](const auto& child) { return isSource(child.get()); });
}

void NewValues::write(const Attribute& attribute, PlugKey key, const graph::Slot& slot) {
    if (const auto* numbers = std::get_if<std::unique_ptr<graph::NumberMulti>>(&slot.content)) {
        writeNumbers(attribute, key, **numbers);
    } else if (const auto* multi = std::get_if<std::unique_ptr<graph::ElementMulti>>(&slot.content)) {
        writeElements(attribute, key, **multi);
    } else if (const auto* children = std::get_if<std::unique_ptr<graph::Slot::Children>>(&slot.content)) {
        // Undo empties the parts of a compound, not the compound.
        const bool hasParts = std::any_of((*children)->begin(), (*children)->end(),
                                          [](const graph::Slot& part) { return !part.empty(); });
        if (!hasParts || writeTuple(key)) return;
        for (const auto& child : attribute.children()) {
            key.attribute = child.get();
            write(*child, key, (**children)[static_cast<std::size_t>(child->ordinal())]);
        }
    } else if (!slot.empty()) {
        writePlain(key);
    }
}

void NewValues::writePlain(const PlugKey& key) {
    if (isCovered(key) || isFed(key)) return;
    const std::vector<std::string> texts = plainText(node_, key, plugPath(key), form_);
    for (const std::string& text : texts)
        line(text);
    const graph::DataPtr data =
        key.attribute->kind() == graph::ValueKind::Typed ? node_.storedData(key) : nullptr;
    // A mesh that a plug kept from a broken connection is never saved: the deltas of a target are its own.
    if (texts.empty() && data != nullptr && data->typeName() != "mesh") {
        graph_.messages().warning("The values of " + graph_.plugName(graph::Plug(node_.ref(), key)) + " (" +
                                  std::string(data->typeName()) + ") are not saved by this host.");
    }
}

/// A compound of like numbers is written as one value, if no part of it is written or fed.
bool NewValues::writeTuple(const PlugKey& key) {
    if (graph::tupleName(*key.attribute).empty()) return false;
    for (const auto& child : key.attribute->children()) {
        PlugKey below = key;
        below.attribute = child.get();
        if (isCovered(below) || isFed(below)) return false;
    }
    writePlain(key);
    return true;
}

void NewValues::writeElements(const Attribute& array, const PlugKey& key, const graph::ElementMulti& multi) {
    for (const auto& [index, element] : multi.elements) {
        PlugKey at = key;
        at.indices[at.depth++] = index;
        write(array, at, *element);
    }
}

/// Whether statements of its own write some of an element's numbers: ".pt[17].px".
bool NewValues::isPartlyCovered(const Attribute& array, PlugKey key) const {
    const auto& children = array.children();
    return std::any_of(children.begin(), children.end(), [&](const auto& child) {
        key.attribute = child.get();
        return isInRange(key);
    });
}

/// The other numbers of such an element, where they are not what they are from the start.
void NewValues::writeUncoveredParts(const Attribute& array, PlugKey key, const double* values) {
    if (isCovered(key) || !isPartlyCovered(array, key)) return;
    for (const auto& child : array.children()) {
        const auto part = static_cast<std::size_t>(child->ordinal());
        key.attribute = child.get();
        if (values[part] != array.flatDefaults()[part]) writePlain(key);
    }
}

/// Runs of neighbouring elements, in pieces of the host's size.
void NewValues::writeNumbers(const Attribute& array, const PlugKey& key, const graph::NumberMulti& numbers) {
    if (isCovered(key)) return;
    const auto keyOf = [&](int index) {
        PlugKey at = key;
        at.indices[at.depth++] = index;
        return at;
    };
    const auto isWanted = [&](int index) {
        const PlugKey at = keyOf(index);
        return !isCovered(at) && !isPartlyCovered(array, at) && !isFed(at) &&
               !isOnlySource(array, at, numbers.find(index));
    };
    const std::string path = plugPath(key);
    const std::vector<int>& indices = numbers.indices();
    for (std::size_t k = 0; k < indices.size();) {
        if (!isWanted(indices[k])) {
            writeUncoveredParts(array, keyOf(indices[k]), numbers.find(indices[k]));
            ++k;
            continue;
        }
        const std::size_t first = k;
        const auto isNext = [&] {
            return k < indices.size() && indices[k] - indices[first] == static_cast<int>(k - first) &&
                   isWanted(indices[k]) && static_cast<int>(k - first) < chunkSize(array);
        };
        std::string values;
        for (; isNext(); ++k)
            appendElement(values, node_, keyOf(indices[k]), form_);
        const int last = indices[k - 1];
        if (k - first == 1) {
            line(plainText(node_, keyOf(last), path + '[' + std::to_string(last) + ']', form_).front());
        } else {
            line(listText(array, static_cast<int>(k - first), withRange(path + "[0:1]", indices[first], last),
                          values));
        }
    }
}

void NewValues::writeStates(const Attribute& root) {
    for (const auto& [key, state] : node_.states()) {
        if (key.attribute->path().front() != &root || states_.count(key) != 0) continue;
        const std::string flags = stateFlags(*key.attribute, state);
        if (!flags.empty()) line(flags + "\"." + plugPath(key) + '"');
    }
}

}  // namespace host::scene
