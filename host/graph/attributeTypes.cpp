#include "graph/attributeTypes.h"

#include <algorithm>
#include <array>
#include <map>

#include "text/numbers.h"

namespace host::graph {

namespace {

std::optional<ValueKind> numberKind(std::string_view name) {
    static const std::map<std::string_view, ValueKind> kKinds{
        {"bool", ValueKind::Bool},         {"long", ValueKind::Int},
        {"short", ValueKind::Int},         {"byte", ValueKind::Int},
        {"char", ValueKind::Int},          {"enum", ValueKind::Enum},
        {"float", ValueKind::Float},       {"double", ValueKind::Double},
        {"doubleAngle", ValueKind::Angle}, {"doubleLinear", ValueKind::Distance},
        {"time", ValueKind::Time},         {"message", ValueKind::Message}};
    const auto found = kKinds.find(name);
    return found != kKinds.end() ? std::optional(found->second) : std::nullopt;
}

}  // namespace

int tupleSize(std::string_view type) {
    if (type == "reflectanceRGB" || type == "spectrumRGB") return 3;
    for (const std::string_view base : {"double", "float", "long", "short"}) {
        if (type.size() != base.size() + 1 || type.substr(0, base.size()) != base) continue;
        const int size = type.back() - '0';
        return size == 2 || size == 3 || (size == 4 && base == "double") ? size : 0;
    }
    return 0;
}

std::string tupleName(const Attribute& attribute) {
    const auto& children = attribute.children();
    if (children.size() < 2 || children.size() > 4) return {};
    const auto nameOf = [](const Attribute& child) -> std::string {
        if (child.isArray()) return {};
        switch (child.kind()) {
            case ValueKind::Float:
                return "float";
            case ValueKind::Int:
                return child.spec().dataType == "short" ? "short" : "long";
            case ValueKind::Double:
            case ValueKind::Distance:
            case ValueKind::Angle:
                return "double";
            default:
                return {};
        }
    };
    const std::string name = nameOf(*children.front());
    const bool isUniform = std::all_of(children.begin(), children.end(),
                                       [&](const auto& child) { return nameOf(*child) == name; });
    return isUniform && !name.empty() ? name + std::to_string(children.size()) : std::string();
}

bool isDataType(std::string_view type) {
    constexpr std::array<std::string_view, 8> kTypes{"string",      "stringArray", "componentList",
                                                     "pointArray",  "doubleArray", "Int32Array",
                                                     "vectorArray", "matrix"};
    return std::find(kTypes.begin(), kTypes.end(), type) != kTypes.end();
}

std::optional<AttributeTypeChoice> attributeTypeNamed(const std::string& name, int numberOfChildren) {
    if (const auto kind = numberKind(name)) {
        const bool isNarrow = name == "short" || name == "byte" || name == "char";
        return AttributeTypeChoice{*kind, isNarrow ? name : std::string()};
    }
    if (name == "compound" && numberOfChildren > 0)
        return AttributeTypeChoice{ValueKind::Compound, {}, static_cast<std::size_t>(numberOfChildren)};
    if (name == "reflectance" || name == "spectrum")
        return AttributeTypeChoice{ValueKind::Compound, {}, 3, ValueKind::Float};
    if (const int size = tupleSize(name))
        return AttributeTypeChoice{ValueKind::Compound,
                                   {},
                                   static_cast<std::size_t>(size),
                                   *numberKind(name.substr(0, name.size() - 1))};
    if (name == "matrix") return AttributeTypeChoice{ValueKind::Typed, name};
    return std::nullopt;
}

std::optional<AttributeTypeChoice> dataTypeNamed(const std::string& name) {
    if (tupleSize(name) > 0) return attributeTypeNamed(name, 0);
    if (isDataType(name) || name == "mesh") return AttributeTypeChoice{ValueKind::Typed, name};
    return std::nullopt;
}

/// "low:mid:high", each with an optional "=number".
std::vector<std::string> enumNamesIn(const std::string& text) {
    std::vector<std::string> names;
    std::size_t from = 0;
    std::size_t next = 0;
    while (from <= text.size() && !text.empty()) {
        const std::size_t colon = std::min(text.find(':', from), text.size());
        const std::string part = text.substr(from, colon - from);
        const std::size_t equals = part.find('=');
        if (equals != std::string::npos) {
            const auto given = text::readNumber<int>(std::string_view(part).substr(equals + 1));
            // A field may number its values as it likes; they are kept by number.
            const bool isKept = given.length > 0 && given.value >= 0 && given.value < 65536;
            if (isKept) next = static_cast<std::size_t>(given.value);
        }
        if (names.size() <= next) names.resize(next + 1);
        names[next++] = part.substr(0, equals);
        from = colon + 1;
    }
    return names;
}

void addNumberedChildren(AttributeSpec& spec, const AttributeTypeChoice& type) {
    for (std::size_t k = 0; k < type.childCount; ++k) {
        const std::string suffix = std::to_string(k);
        spec.children.push_back(number(spec.longName + suffix, spec.shortName + suffix, type.childKind));
    }
}

std::string enumText(const std::vector<std::string>& names) {
    std::string text;
    std::size_t expected = 0;
    for (std::size_t k = 0; k < names.size(); ++k) {
        if (names[k].empty()) continue;
        if (!text.empty()) text += ':';
        text += names[k];
        if (k != expected) text += '=' + std::to_string(k);
        expected = k + 1;
    }
    return text;
}

}  // namespace host::graph
