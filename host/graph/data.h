#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "graph/component.h"
#include "graph/valueText.h"

namespace host::graph {

/// A value that an attribute of kind Typed holds. Data is immutable once it is in the graph: code that wants
/// another value builds another object. So readers, undo records and caches can share one.
class Data {
  public:
    virtual ~Data() = default;
    Data() = default;
    Data(const Data&) = default;
    Data& operator=(const Data&) = default;

    /// The type name as script commands spell it: "pointArray", "componentList", "mesh", ...
    virtual std::string_view typeName() const = 0;
    /// Appends the value as one line, with a blank before each part: for people and for comparing. Equal
    /// values give equal texts, and different values different ones. Long lists are given by their digest.
    virtual void describe(std::string& text) const = 0;
};

using DataPtr = std::shared_ptr<const Data>;

/// The value as a T; null if there is no value or it has another type.
template <typename T>
std::shared_ptr<const T> dataAs(const DataPtr& data) {
    return std::dynamic_pointer_cast<const T>(data);
}

/// Data that is one plain value; Tag::kName is its type name.
template <typename T, typename Tag>
class SimpleData final : public Data {
  public:
    explicit SimpleData(T content) : value(std::move(content)) {}
    std::string_view typeName() const override { return Tag::kName; }
    static std::string_view staticTypeName() { return Tag::kName; }
    void describe(std::string& text) const override { appendText(text, value); }

    T value;
};

using Matrix16 = std::array<double, 16>;  // row by row, translation in the last row
using Point4 = std::array<double, 4>;
using Vector3 = std::array<double, 3>;

// clang-format off
struct StringTag { static constexpr std::string_view kName = "string"; };
struct StringArrayTag { static constexpr std::string_view kName = "stringArray"; };
struct DoubleArrayTag { static constexpr std::string_view kName = "doubleArray"; };
struct IntArrayTag { static constexpr std::string_view kName = "Int32Array"; };
struct PointArrayTag { static constexpr std::string_view kName = "pointArray"; };
struct VectorArrayTag { static constexpr std::string_view kName = "vectorArray"; };
struct MatrixTag { static constexpr std::string_view kName = "matrix"; };
// clang-format on

using StringData = SimpleData<std::string, StringTag>;
using StringArrayData = SimpleData<std::vector<std::string>, StringArrayTag>;
using DoubleArrayData = SimpleData<std::vector<double>, DoubleArrayTag>;
using IntArrayData = SimpleData<std::vector<int>, IntArrayTag>;
using PointArrayData = SimpleData<std::vector<Point4>, PointArrayTag>;
using VectorArrayData = SimpleData<std::vector<Vector3>, VectorArrayTag>;
using MatrixData = SimpleData<Matrix16, MatrixTag>;

/// An ordered list of components. Each entry keeps its own runs, and neighbouring entries are never merged:
/// lists that belong to a point list depend on the order of the entries. A run that ends before it starts (0
/// .. -1, from "vtx[*]") means all components of the object that the list is applied to.
class ComponentListData final : public Data {
  public:
    std::string_view typeName() const override { return "componentList"; }
    void describe(std::string& text) const override;

    int size() const { return static_cast<int>(kinds_.size()); }
    void reserve(std::size_t entries);
    void append(const Component& component);
    /// Appends an entry of one run first..last, without building a Component.
    void appendRun(ComponentKind kind, int first, int last);
    Component entry(int position) const;
    ComponentKind kind(int position) const { return kinds_[static_cast<std::size_t>(position)]; }
    /// The runs of one entry, in ascending order.
    std::pair<const Run*, const Run*> runs(int position) const;
    /// All elements of all entries in order, with duplicates.
    std::vector<int> flattened() const;

  private:
    std::vector<ComponentKind> kinds_;
    std::vector<int> starts_{0};  // number of entries + 1 offsets into runs_
    std::vector<Run> runs_;
};

}  // namespace host::graph
