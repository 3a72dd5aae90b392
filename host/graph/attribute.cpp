#include "graph/attribute.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace host::graph {

namespace {

std::uint32_t nextSequence() {
    static std::atomic<std::uint32_t> counter{0};
    return ++counter;
}

bool isScalarNumber(const AttributeSpec& spec) {
    return isNumber(spec.kind) && !spec.isArray;
}

}  // namespace

double roundedTo(ValueKind kind, double value) {
    switch (kind) {
        case ValueKind::Bool:
            return value != 0.0 ? 1.0 : 0.0;
        case ValueKind::Int:
        case ValueKind::Enum:
            return std::trunc(value);
        case ValueKind::Float:
            return static_cast<double>(static_cast<float>(value));
        default:
            return value;
    }
}

AttributeSpec number(std::string longName, std::string shortName, ValueKind kind) {
    AttributeSpec spec;
    spec.longName = std::move(longName);
    spec.shortName = std::move(shortName);
    spec.kind = kind;
    return spec;
}

AttributeSpec typed(std::string longName, std::string shortName, std::string dataType) {
    AttributeSpec spec = number(std::move(longName), std::move(shortName), ValueKind::Typed);
    spec.dataType = std::move(dataType);
    return spec;
}

AttributeSpec message(std::string longName, std::string shortName) {
    return number(std::move(longName), std::move(shortName), ValueKind::Message);
}

AttributeSpec enumeration(std::string longName, std::string shortName, std::vector<std::string> names) {
    AttributeSpec spec = number(std::move(longName), std::move(shortName), ValueKind::Enum);
    spec.enumNames = std::move(names);
    return spec;
}

AttributeSpec compound(std::string longName, std::string shortName, std::vector<AttributeSpec> children) {
    AttributeSpec spec = number(std::move(longName), std::move(shortName), ValueKind::Compound);
    spec.children = std::move(children);
    return spec;
}

AttributeSpec triple(std::string longName, std::string shortName, ValueKind kind, double value) {
    std::vector<AttributeSpec> children;
    for (const char axis : {'X', 'Y', 'Z'}) {
        children.push_back(number(longName + axis, shortName + static_cast<char>(axis - 'X' + 'x'), kind)
                               .withDefault(value));
    }
    return compound(std::move(longName), std::move(shortName), std::move(children));
}

Attribute::Attribute(AttributeSpec spec, const Attribute* parent, int ordinal)
    : spec_(std::move(spec)), parent_(parent), ordinal_(ordinal), sequence_(nextSequence()) {
    if (parent_ != nullptr) {
        path_ = parent_->path_;
        arrayDepth_ = parent_->arrayDepth_;
        // The children of a computed compound are computed too.
        spec_.isOutput = spec_.isOutput || parent_->isOutput();
        spec_.isKept = spec_.isKept || parent_->isKept();
    }
    path_.push_back(this);
    if (spec_.isArray) ++arrayDepth_;
    int childOrdinal = 0;
    for (AttributeSpec& child : spec_.children) {
        children_.push_back(std::make_unique<Attribute>(std::move(child), this, childOrdinal++));
    }
    spec_.children.clear();
    if (!spec_.isArray) return;
    if (isNumber(spec_.kind)) {
        flatWidth_ = 1;
        flatDefaults_ = {spec_.defaultValue};
    } else if (isCompound() && !children_.empty() && children_.size() <= kMaxFlatWidth &&
               std::all_of(children_.begin(), children_.end(),
                           [](const auto& child) { return isScalarNumber(child->spec()); })) {
        flatWidth_ = static_cast<int>(children_.size());
        for (const auto& child : children_)
            flatDefaults_.push_back(child->spec().defaultValue);
    }
}

const Attribute* Attribute::child(std::string_view longOrShort) const {
    for (const auto& entry : children_) {
        if (entry->longName() == longOrShort || entry->shortName() == longOrShort) return entry.get();
    }
    return nullptr;
}

const Attribute* flatArrayOf(const Attribute& attribute) {
    if (attribute.flatWidth() > 0) return &attribute;
    const Attribute* parent = attribute.parent();
    return parent != nullptr && parent->flatWidth() > 0 ? parent : nullptr;
}

}  // namespace host::graph
