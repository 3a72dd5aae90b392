#include "nodes/specs.h"

#include <vector>

namespace host::nodes {

using graph::AttributeSpec;
using graph::ValueKind;

namespace {

/// `pattern` with a letter in the place of '#'.
std::string withLetter(std::string_view pattern, char letter) {
    std::string name(pattern);
    name[name.find('#')] = letter;
    return name;
}

/// @param letters  capitals, one for each child; short names have the small letter
AttributeSpec lettered(std::string longName, std::string shortName, std::string_view childLong,
                       std::string_view childShort, std::string_view letters, ValueKind kind, double value) {
    std::vector<AttributeSpec> children;
    for (const char letter : letters) {
        const char small = static_cast<char>(letter - 'A' + 'a');
        children.push_back(graph::number(withLetter(childLong, letter), withLetter(childShort, small), kind)
                               .withDefault(value));
    }
    return graph::compound(std::move(longName), std::move(shortName), std::move(children));
}

}  // namespace

AttributeSpec flag(std::string longName, std::string shortName, bool isOn) {
    return graph::number(std::move(longName), std::move(shortName), ValueKind::Bool)
        .withDefault(isOn ? 1.0 : 0.0);
}

AttributeSpec integer(std::string longName, std::string shortName, int value) {
    return graph::number(std::move(longName), std::move(shortName), ValueKind::Int).withDefault(value);
}

AttributeSpec text(std::string longName, std::string shortName) {
    return graph::typed(std::move(longName), std::move(shortName), "string");
}

AttributeSpec matrix(std::string longName, std::string shortName) {
    return graph::typed(std::move(longName), std::move(shortName), "matrix");
}

AttributeSpec axisTriple(std::string longName, std::string shortName, std::string_view childLong,
                         std::string_view childShort, ValueKind kind, double value) {
    return lettered(std::move(longName), std::move(shortName), childLong, childShort, "XYZ", kind, value);
}

AttributeSpec color(const std::string& longName, const std::string& shortName, double value) {
    return lettered(longName, shortName, longName + '#', shortName + '#', "RGB", ValueKind::Float, value);
}

AttributeSpec keyableColor(const std::string& longName, const std::string& shortName, double value) {
    return keyableChildren(color(longName, shortName, value));
}

AttributeSpec color(std::string longName, std::string shortName, std::string_view childLong,
                    std::string_view childShort) {
    return lettered(std::move(longName), std::move(shortName), childLong, childShort, "RGB", ValueKind::Float,
                    0.0);
}

AttributeSpec keyableChildren(AttributeSpec compound) {
    for (AttributeSpec& child : compound.children)
        child.isKeyable = true;
    return compound;
}

}  // namespace host::nodes
