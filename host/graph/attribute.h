#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "graph/data.h"

namespace host::graph {

enum class ValueKind : unsigned char {
    Bool,
    Int,
    Enum,
    Float,  // stored in single precision
    Double,
    Distance,  // centimetres
    Angle,     // radians
    Time,      // seconds
    Typed,     // a Data object
    Message,   // no value, only connections
    Compound,
};

/// Whether the kind is stored as one number.
constexpr bool isNumber(ValueKind kind) {
    return kind <= ValueKind::Time;
}

/// What a node type says about one attribute: its schema as data. The functions below make the usual ones.
/// The chained members refine them.
struct AttributeSpec {
    std::string longName;
    std::string shortName;
    ValueKind kind = ValueKind::Double;
    std::string dataType{};  // of a Typed attribute: "mesh", "pointArray", ...
    double defaultValue = 0.0;
    DataPtr defaultData{};  // of a Typed attribute; null means "never set"
    std::optional<double> minimum{};
    std::optional<double> maximum{};
    bool isArray = false;
    bool isOutput = false;  // computed by the node: never written, never a destination
    bool isHidden = false;
    bool isKeyable = false;
    bool isWatched = false;  // the node type's `writing` runs before data is written
    bool isKept = false;     // known from a file only: its node may compute it, but this host does not
    std::vector<std::string> enumNames{};
    std::vector<AttributeSpec> children{};
    std::vector<std::string> categories{};  // words by which scripts find attributes
    bool isProxy = false;  // stands for the attribute that feeds it: a value that is set here goes there

    AttributeSpec array() && {
        isArray = true;
        return std::move(*this);
    }
    AttributeSpec output() && {
        isOutput = true;
        return std::move(*this);
    }
    AttributeSpec hidden() && {
        isHidden = true;
        return std::move(*this);
    }
    AttributeSpec keyable() && {
        isKeyable = true;
        return std::move(*this);
    }
    AttributeSpec watched() && {
        isWatched = true;
        return std::move(*this);
    }
    AttributeSpec kept() && {
        isKept = true;
        return std::move(*this);
    }
    AttributeSpec withDefault(double value) && {
        defaultValue = value;
        return std::move(*this);
    }
    AttributeSpec withDefault(DataPtr value) && {
        defaultData = std::move(value);
        return std::move(*this);
    }
    AttributeSpec withRange(double low, double high) && {
        minimum = low;
        maximum = high;
        return std::move(*this);
    }
};

/// A number rounded to what a kind stores.
double roundedTo(ValueKind kind, double value);

AttributeSpec number(std::string longName, std::string shortName, ValueKind kind = ValueKind::Double);
AttributeSpec typed(std::string longName, std::string shortName, std::string dataType);
AttributeSpec message(std::string longName, std::string shortName);
AttributeSpec enumeration(std::string longName, std::string shortName, std::vector<std::string> names);
AttributeSpec compound(std::string longName, std::string shortName, std::vector<AttributeSpec> children);
/// A compound of three numbers named <long>X/Y/Z, <short>x/y/z, all with this default.
AttributeSpec triple(std::string longName, std::string shortName, ValueKind kind = ValueKind::Double,
                     double value = 0.0);

/// One attribute of a node type, or a dynamic attribute of one node. Immutable and never moved once built.
class Attribute {
  public:
    /// Deepest nesting of array attributes that a plug can address.
    static constexpr int kMaxArrayDepth = 4;
    /// The largest number of numbers in an element of a flat array.
    static constexpr int kMaxFlatWidth = 4;

    Attribute(AttributeSpec spec, const Attribute* parent, int ordinal);
    Attribute(const Attribute&) = delete;
    Attribute& operator=(const Attribute&) = delete;

    const AttributeSpec& spec() const { return spec_; }
    const std::string& longName() const { return spec_.longName; }
    const std::string& shortName() const { return spec_.shortName; }
    ValueKind kind() const { return spec_.kind; }
    bool isArray() const { return spec_.isArray; }
    bool isCompound() const { return spec_.kind == ValueKind::Compound; }
    bool isOutput() const { return spec_.isOutput; }
    bool isKept() const { return spec_.isKept; }

    const Attribute* parent() const { return parent_; }
    const std::vector<std::unique_ptr<Attribute>>& children() const { return children_; }
    const Attribute* child(std::string_view longOrShort) const;
    /// Position among the parent's children, or among the root attributes of the node.
    int ordinal() const { return ordinal_; }
    /// From the root attribute down to this one.
    const std::vector<const Attribute*>& path() const { return path_; }
    /// How many attributes on the path are arrays, including this one.
    int arrayDepth() const { return arrayDepth_; }
    /// Numbers per element if the elements are stored in a NumberMulti (1, or the children of a compound of
    /// numbers), otherwise 0.
    int flatWidth() const { return flatWidth_; }
    /// Default of each number of a flat element.
    const std::vector<double>& flatDefaults() const { return flatDefaults_; }
    /// Process-wide creation number: a stable order for connections and caches.
    std::uint32_t sequence() const { return sequence_; }
    bool isDynamic() const { return dynamic_; }
    void markDynamic() { dynamic_ = true; }

  private:
    AttributeSpec spec_;
    const Attribute* parent_;
    int ordinal_;
    std::vector<std::unique_ptr<Attribute>> children_;
    std::vector<const Attribute*> path_;
    int arrayDepth_ = 0;
    int flatWidth_ = 0;
    std::vector<double> flatDefaults_;
    std::uint32_t sequence_;
    bool dynamic_ = false;
};

/// The array attribute that holds an attribute's numbers in flat elements: itself or its parent. Null if its
/// numbers have slots of their own.
const Attribute* flatArrayOf(const Attribute& attribute);

}  // namespace host::graph
