#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "symmetry/plainPoints.h"

/// Vertices by their places, to find the one whose mirror image is exactly at a point. No host types.
///
/// A place and its mirror image are one entry. Entries are made for the vertices to ask about; then every
/// vertex of the mesh is put where it belongs. At most 28 bytes an entry, in two blocks of memory.
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

    /// Makes the entries of vertices at finite points.
    /// @param entries  per vertex of the mesh: set for the listed ones
    void add(const std::vector<int>& vertices, std::vector<int>& entries) { locate<true>(vertices, entries); }
    /// Finds the entries of vertices at finite points, or kNowhere. Parameters as above.
    void find(const std::vector<int>& vertices, std::vector<int>& entries) {
        locate<false>(vertices, entries);
    }

    /// Notes that a vertex is at its place.
    void put(int vertex, int entry);
    /// The vertex whose mirror image is at the place of a vertex, kNobody or kSeveral.
    int acrossFrom(int vertex, int entry) const;

  private:
    using Key = std::array<float, 3>;
    struct Place {
        Key key;
        std::array<int, 2> vertices;  // on or below the plane, and above it
    };

    template <bool adds>
    void locate(const std::vector<int>& vertices, std::vector<int>& entries);
    float side(int vertex) const { return points_[static_cast<std::size_t>(vertex)][axis_]; }
    Key keyOf(const PlainPoint& point) const;
    std::size_t firstSlotOf(const Key& key) const;
    bool isAt(int entry, const Key& key) const { return places_[static_cast<std::size_t>(entry)].key == key; }

    const std::vector<PlainPoint>& points_;
    std::size_t axis_;
    unsigned int shift_ = 63;  // of a hash, to get a slot
    std::vector<int> slots_;   // an entry, or kNowhere
    std::vector<Place> places_;
};
