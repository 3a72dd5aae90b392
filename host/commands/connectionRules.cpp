#include "commands/connectionRules.h"

#include "graph/node.h"

namespace host::commands {

namespace {

using graph::ValueKind;

enum class Fit { Yes, No, NeedsUnitConversion };

/// Angles and times are not stored in the units of scripts. A plain number on the other side would be taken
/// for radians or seconds.
bool hasUnit(ValueKind kind) {
    return kind == ValueKind::Angle || kind == ValueKind::Time;
}

Fit numbersFit(ValueKind from, ValueKind to) {
    if (from != to && (hasUnit(from) || hasUnit(to))) return Fit::NeedsUnitConversion;
    return Fit::Yes;
}

bool dataFits(const std::string& from, const std::string& to) {
    return from == to || from.empty() || to.empty() || (to == "geometry" && from == "mesh");
}

/// What an object connects to a set to become a member: itself, or a group of its components.
bool isMembership(const graph::Attribute& attribute) {
    return attribute.isCompound() && attribute.path().front()->longName() == "instObjGroups";
}

/// The node that stores the vertex edits of a shape: the connection only points to it, and passes no value.
bool isEditLocation(const graph::Attribute& from, const graph::Attribute& to) {
    return from.isCompound() && from.children().size() == 3 && to.longName() == "tweakLocation";
}

Fit attributesFit(const graph::Attribute& from, const graph::Attribute& to) {
    if (isMembership(from) && to.kind() == ValueKind::Message) return Fit::Yes;
    if (isEditLocation(from, to)) return Fit::Yes;
    if (from.kind() == ValueKind::Message || to.kind() == ValueKind::Message)
        return from.kind() == to.kind() ? Fit::Yes : Fit::No;
    if (graph::isNumber(from.kind()) && graph::isNumber(to.kind())) return numbersFit(from.kind(), to.kind());
    if (from.kind() != to.kind()) return Fit::No;
    if (from.kind() == ValueKind::Typed)
        return dataFits(from.spec().dataType, to.spec().dataType) ? Fit::Yes : Fit::No;
    if (from.children().size() != to.children().size()) return Fit::No;
    for (std::size_t k = 0; k < from.children().size(); ++k) {
        const graph::Attribute& a = *from.children()[k];
        const graph::Attribute& b = *to.children()[k];
        const Fit fit = a.isArray() == b.isArray() ? attributesFit(a, b) : Fit::No;
        if (fit != Fit::Yes) return fit;
    }
    return Fit::Yes;
}

/// Whether a node takes and gives numbers of any unit as they are stored.
bool takesAnyUnit(const graph::Node& node) {
    return node.isA("unitConversion") || node.isA("blendWeighted");
}

}  // namespace

std::string connectionProblem(const graph::Plug& source, const graph::Plug& destination) {
    if (destination.attribute().isOutput()) return "Destination attribute must be writable.";
    if (source == destination) return "Source and destination are the same attribute.";
    if (source.isArray() != destination.isArray()) {
        return destination.isArray() ? "Destination is a multi-attribute and needs an index."
                                     : "Source is a multi-attribute and needs an index.";
    }
    switch (attributesFit(source.attribute(), destination.attribute())) {
        case Fit::No:
            return "Data types of source and destination are not compatible.";
        case Fit::NeedsUnitConversion:
            if (takesAnyUnit(*source.node()) || takesAnyUnit(*destination.node())) break;
            return "Source and destination have different units, and unit conversion is not covered by this "
                   "host.";
        case Fit::Yes:
            break;
    }
    return {};
}

}  // namespace host::commands
