#include "graph/nodeType.h"

#include <cassert>

namespace host::graph {

namespace {

/// Names of types whose nodes are members of the DAG.
constexpr std::string_view kDagRoot = "dagNode";

NodeBehaviour inherit(NodeBehaviour own, const NodeType* base) {
    if (base == nullptr) return own;
    const NodeBehaviour& from = base->behaviour();
    if (!own.compute) own.compute = from.compute;
    if (!own.connected) own.connected = from.connected;
    if (!own.disconnecting) own.disconnecting = from.disconnecting;
    if (!own.writing) own.writing = from.writing;
    if (!own.dependents) own.dependents = from.dependents;
    if (!own.passThrough) own.passThrough = from.passThrough;
    if (!own.isService) own.isService = from.isService;
    if (!own.diesWithSources) own.diesWithSources = from.diesWithSources;
    return own;
}

}  // namespace

NodeType::NodeType(NodeTypeSpec spec, const NodeType* base)
    : name_(std::move(spec.name)),
      base_(base),
      isDag_(name_ == kDagRoot || (base != nullptr && base->isDag())),
      isAbstract_(spec.isAbstract),
      diesWithLastOutput_(spec.diesWithLastOutput || (base != nullptr && base->diesWithLastOutput())),
      isKept_(spec.isKept),
      behaviour_(inherit(std::move(spec.behaviour), base)) {
    if (base != nullptr) {
        attributes_ = base->attributes_;
        byName_ = base->byName_;
    }
    for (AttributeSpec& attribute : spec.attributes) {
        const int ordinal = static_cast<int>(attributes_.size());
        own_.push_back(std::make_unique<Attribute>(std::move(attribute), nullptr, ordinal));
        attributes_.push_back(own_.back().get());
        index(*own_.back());
    }
}

bool NodeType::isA(std::string_view typeName) const {
    for (const NodeType* type = this; type != nullptr; type = type->base_) {
        if (type->name_ == typeName) return true;
    }
    return false;
}

const Attribute* NodeType::find(std::string_view longOrShort) const {
    const auto found = byName_.find(std::string(longOrShort));
    return found == byName_.end() ? nullptr : found->second;
}

void NodeType::index(const Attribute& attribute) {
    for (const std::string& name : {attribute.longName(), attribute.shortName()}) {
        const Attribute*& entry = byName_[name];
        // A root attribute and a child of another attribute may have the same short name: the root attribute
        // comes first.
        if (entry == nullptr || (attribute.parent() == nullptr && entry->parent() != nullptr))
            entry = &attribute;
    }
    for (const auto& child : attribute.children())
        index(*child);
}

const NodeType& NodeTypes::add(NodeTypeSpec spec) {
    const NodeType* base = spec.base.empty() ? nullptr : find(spec.base);
    assert((spec.base.empty() || base != nullptr) && "a node type is registered after its base");
    std::string name = spec.name;
    auto type = std::make_unique<NodeType>(std::move(spec), base);
    auto& place = types_[std::move(name)];
    if (place != nullptr) replaced_.push_back(std::move(place));
    place = std::move(type);
    return *place;
}

const NodeType* NodeTypes::find(std::string_view name) const {
    const auto found = types_.find(name);
    return found == types_.end() ? nullptr : found->second.get();
}

std::vector<const NodeType*> NodeTypes::all() const {
    std::vector<const NodeType*> result;
    for (const auto& entry : types_)
        result.push_back(entry.second.get());
    return result;
}

}  // namespace host::graph
