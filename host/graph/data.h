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

/// A value that an attribute of kind Typed holds. Data is immutable once it is in the graph: whoever wants
/// another value builds another object, so that readers, undo records and caches can share one.
class Data {
  public:
    virtual ~Data() = default;
    Data() = default;
    Data(const Data&) = default;
    Data& operator=(const Data&) = default;

    /// The type name as script commands spell it: "pointArray", "componentList", "mesh", ...
    virtual std::string_view typeName() const = 0;
    /// Appends the value as one line, blanks in front of its parts: for people and for comparing. Equal
    /// values give equal texts, and others different ones, long lists by their digest.
    virtual void describe(std::string& text) const = 0;
};

using DataPtr = std::shared_ptr<const Data>;

/// The value as a T, or null when there is none or it is of another type.
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

/// An ordered list of components. Each entry keeps its own runs: lists that are aligned with a point list
/// depend on the entry order, so neighbouring entries are never merged. A run that ends before it starts
/// (0 .. -1, from "vtx[*]") stands for all components of whatever the list is applied to.
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
    /// All elements of all entries in order, duplicates kept.
    std::vector<int> flattened() const;

  private:
    std::vector<ComponentKind> kinds_;
    std::vector<int> starts_{0};  // entries + 1 offsets into runs_
    std::vector<Run> runs_;
};

}  // namespace host::graph
