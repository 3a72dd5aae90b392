#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "symmetry/plainPoints.h"

/// Vertices by their places, to find the one whose mirror image is exactly at a point. No host types.
///
/// A place and its mirror image are one entry. Entries are made for the vertices to ask about; then all other
/// vertices of the mesh are put where they belong. The places are in two halves, by their hash, which two
/// threads may fill side by side. At most 36 bytes an entry, in two blocks of memory.
class MirrorPlaces {
  public:
    /// In place of a vertex: there is none, or there are several.
    static constexpr int kNobody = -1;
    static constexpr int kSeveral = -2;
    /// In place of an entry: there is none.
    static constexpr int kNowhere = -1;

    /// @param points  per vertex; must outlive this object
    /// @param axis    0, 1 or 2: the coordinate that changes its sign
    /// @param count   how many vertices will be added at most
    MirrorPlaces(const std::vector<PlainPoint>& points, std::size_t axis, std::size_t count);

    /// Puts vertices at their places in one half, and makes an entry where there is none. What is no vertex,
    /// or not finite, has no place.
    /// @param half      0 or 1; vertices whose place is in the other half are left out
    /// @param vertices  in any order; a vertex that has an entry is not put again
    /// @param entries   per vertex of the mesh: set for those that were put
    void add(unsigned int half, const std::vector<int>& vertices, std::vector<int>& entries) {
        put<true>(half, vertices, entries);
    }
    /// The same, only where there is an entry.
    void addIfKnown(unsigned int half, const std::vector<int>& vertices, std::vector<int>& entries) {
        put<false>(half, vertices, entries);
    }

    /// The vertex whose mirror image is at the place of a vertex, kNobody or kSeveral.
    int acrossFrom(int vertex, int entry) const;

  private:
    using Key = std::array<float, 3>;
    struct Place {
        Key key;
        std::array<int, 2> vertices;  // on or below the plane, and above it
    };
    /// Vertices of a half whose places are looked for together.
    struct Block;

    template <bool adds>
    void put(unsigned int half, const std::vector<int>& vertices, std::vector<int>& entries);
    void fill(Block& block, unsigned int half, const std::vector<int>& vertices, std::size_t& next) const;
    template <bool adds>
    int search(std::size_t slot, const Key& key, unsigned int half);
    void occupy(int vertex, int entry);
    float side(int vertex) const { return points_[static_cast<std::size_t>(vertex)][axis_]; }
    Key keyOf(const PlainPoint& point) const;
    std::size_t firstSlotOf(const Key& key) const;
    unsigned int halfOf(std::size_t slot) const { return slot < slots_.size() / 2 ? 0 : 1; }
    bool isAt(int entry, const Key& key) const { return places_[static_cast<std::size_t>(entry)].key == key; }

    const std::vector<PlainPoint>& points_;
    std::size_t axis_;
    unsigned int shift_ = 63;          // of a hash, to get a slot
    std::vector<int> slots_;           // an entry, or kNowhere; each half has half of them
    std::unique_ptr<Place[]> places_;  // not filled at first: no memory is touched that is not needed
    // One half has the first entries, the other the last: where the next one goes. Apart, so that two threads
    // do not share their cache line.
    struct alignas(64) Next {
        int entry;
    };
    std::array<Next, 2> next_;
};
