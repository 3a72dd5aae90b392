#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "symmetry/pointGrid.h"

/// Vertices by their places, to find the one whose mirror image is exactly at a point. No host types.
///
/// A place and its mirror image are one entry. Entries are made for the points to ask about; then every
/// vertex of the mesh is put where it belongs. At most 28 bytes an entry, and no block of memory of its own.
class MirrorPlaces {
  public:
    /// In place of a vertex: there is none, or there are several.
    static constexpr int kNobody = -1;
    static constexpr int kSeveral = -2;
    /// In place of an entry: there is none.
    static constexpr int kNowhere = -1;

    /// @param axis   0, 1 or 2: the coordinate that changes its sign
    /// @param count  how many points will be added at most
    MirrorPlaces(std::size_t axis, std::size_t count);

    /// The entry of a finite point, which is made if need be.
    int add(const PlainPoint& point);
    /// The entry of a finite point, or kNowhere.
    int find(const PlainPoint& point) const { return slots_[slotOf(keyOf(point))]; }

    /// Notes that a vertex is at a point.
    void put(int vertex, const PlainPoint& point, int entry);
    /// The vertex whose mirror image is at a point, kNobody or kSeveral.
    int acrossFrom(const PlainPoint& point, int entry) const;

  private:
    using Key = std::array<float, 3>;
    struct Place {
        Key key;
        std::array<int, 2> vertices;  // on or below the plane, and above it
    };

    Key keyOf(const PlainPoint& point) const;
    std::size_t slotOf(const Key& key) const;

    std::size_t axis_;
    unsigned int shift_ = 63;  // of a hash, to get a slot
    std::vector<int> slots_;   // an entry, or kNowhere
    std::vector<Place> places_;
};
