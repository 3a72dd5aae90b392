#pragma once

#include <atomic>
#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace host::graph {

/// The elements of a multi attribute of numbers, flat and sorted by logical index. An element has `width`
/// numbers: 1, or one for each child of a small compound such as a float3.
///
/// Writing an element after the last one, or over an existing one, costs O(1) or O(log n). An element that is
/// written between others, or removed, waits in a list that the next read merges. So a million changes in any
/// order, followed by reads, stay O(n log n). Reading is safe from several threads while nobody writes.
class NumberMulti {
  public:
    explicit NumberMulti(int width) : width_(width) {}
    NumberMulti(const NumberMulti& other);
    NumberMulti& operator=(const NumberMulti&) = delete;

    int width() const { return width_; }
    int size() const;
    bool contains(int index) const;
    /// The `width` numbers of an element; null if it does not exist.
    const double* find(int index) const;
    /// Copies the `width` numbers of an element without merging: for callers that read between changes.
    /// @return false if the element does not exist
    bool read(int index, double* to) const;
    /// Logical index of the element at a physical position.
    int logicalIndex(int at) const;
    /// All logical indices, ascending.
    const std::vector<int>& indices() const;

    /// Writes one number of an element; a new element starts with `defaults` (width numbers).
    /// @return whether the element is new
    bool write(int index, int part, double value, const double* defaults);
    /// @return whether the element existed
    bool remove(int index);
    void clear();

  private:
    int position(int index) const;
    const double* findUnsettled(int index) const;
    void settle() const;
    void merge();

    int width_;
    std::vector<int> indices_;
    std::vector<double> values_;
    // New elements between existing ones: offset of their numbers.
    std::unordered_map<int, std::size_t> pending_;
    std::vector<double> pendingValues_;
    std::unordered_set<int> removed_;  // elements that are still listed in indices_
    mutable std::atomic<bool> unsettled_{false};
};

}  // namespace host::graph
