#include "graph/plug.h"

namespace host::graph {

namespace {

void appendPart(std::string& text, const std::string& name, const PlugKey& key, const Attribute& attribute,
                bool isLeaf) {
    if (!text.empty()) text += '.';
    text += name;
    // The leaf of an array plug has no index of its own.
    if (!attribute.isArray() || (isLeaf && key.depth < attribute.arrayDepth())) return;
    text += '[';
    text += std::to_string(key.indices[static_cast<std::size_t>(attribute.arrayDepth() - 1)]);
    text += ']';
}

}  // namespace

Plug::Plug(NodeRef node, const Attribute* attribute) : node_(std::move(node)) {
    key_.attribute = attribute;
    const int given = attribute->arrayDepth() - (attribute->isArray() ? 1 : 0);
    key_.depth = static_cast<std::uint8_t>(given);
    for (int k = 0; k < given; ++k)
        key_.indices[static_cast<std::size_t>(k)] = -1;
}

bool Plug::isFullyIndexed() const {
    for (int k = 0; k < key_.depth; ++k) {
        if (key_.indices[static_cast<std::size_t>(k)] < 0) return false;
    }
    return true;
}

Plug Plug::element(int logicalIndex) const {
    Plug result = *this;
    result.key_.indices[result.key_.depth++] = logicalIndex;
    return result;
}

Plug Plug::child(int position) const {
    return child(*attribute().children()[static_cast<std::size_t>(position)]);
}

Plug Plug::child(const Attribute& attribute) const {
    Plug result = *this;
    result.key_.attribute = &attribute;
    return result;
}

Plug Plug::parent() const {
    if (isElement()) return array();
    if (attribute().parent() == nullptr) return {};
    return child(*attribute().parent());
}

Plug Plug::array() const {
    Plug result = *this;
    result.key_.indices[--result.key_.depth] = 0;
    return result;
}

std::string Plug::attributePath() const {
    std::string text;
    for (const Attribute* part : attribute().path()) {
        const bool isLeaf = part == key_.attribute;
        if (isLeaf || part->isArray()) appendPart(text, part->longName(), key_, *part, isLeaf);
    }
    return text;
}

std::string Plug::fullAttributePath(bool longNames) const {
    std::string text;
    for (const Attribute* part : attribute().path()) {
        appendPart(text, longNames ? part->longName() : part->shortName(), key_, *part,
                   part == key_.attribute);
    }
    return text;
}

}  // namespace host::graph
