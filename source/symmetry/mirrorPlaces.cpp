#include "symmetry/mirrorPlaces.h"

#include <algorithm>
#include <cmath>
#include <cstring>

MirrorPlaces::MirrorPlaces(const std::vector<PlainPoint>& points, std::size_t axis, std::size_t count)
    : points_(points), axis_(axis) {
    std::size_t slotCount = 2;
    for (; slotCount < 2 * count; slotCount *= 2)
        --shift_;
    slots_.assign(slotCount, kNowhere);
    places_.reserve(count);
}

/// Reads the slots of a block of vertices first, then their entries: so the processor waits for the memory of
/// all of them at once. What that does not settle, a new entry or a slot in use, is searched one by one.
template <bool adds>
void MirrorPlaces::locate(const std::vector<int>& vertices, std::vector<int>& entries) {
    constexpr std::size_t kBlock = 32;
    std::array<Key, kBlock> keys;
    std::array<std::size_t, kBlock> slots;
    std::array<int, kBlock> found;
    for (std::size_t begin = 0; begin < vertices.size(); begin += kBlock) {
        const std::size_t count = std::min(kBlock, vertices.size() - begin);
        for (std::size_t k = 0; k < count; ++k) {
            keys[k] = keyOf(points_[static_cast<std::size_t>(vertices[begin + k])]);
            slots[k] = firstSlotOf(keys[k]);
        }
        for (std::size_t k = 0; k < count; ++k)
            found[k] = slots_[slots[k]];
        for (std::size_t k = 0; k < count; ++k) {
            if (found[k] != kNowhere && !isAt(found[k], keys[k])) found[k] = kNowhere;
        }
        for (std::size_t k = 0; k < count; ++k) {
            std::size_t slot = slots[k];
            if (found[k] == kNowhere) {
                while (slots_[slot] != kNowhere && !isAt(slots_[slot], keys[k]))
                    slot = slot + 1 == slots_.size() ? 0 : slot + 1;
                if (adds && slots_[slot] == kNowhere) {
                    slots_[slot] = static_cast<int>(places_.size());
                    places_.push_back({keys[k], {kNobody, kNobody}});
                }
                found[k] = slots_[slot];
            }
            entries[static_cast<std::size_t>(vertices[begin + k])] = found[k];
        }
    }
}

template void MirrorPlaces::locate<true>(const std::vector<int>& vertices, std::vector<int>& entries);
template void MirrorPlaces::locate<false>(const std::vector<int>& vertices, std::vector<int>& entries);

void MirrorPlaces::put(int vertex, int entry) {
    int& occupant = places_[static_cast<std::size_t>(entry)].vertices[side(vertex) > 0.0F ? 1 : 0];
    occupant = occupant == kNobody ? vertex : kSeveral;
}

int MirrorPlaces::acrossFrom(int vertex, int entry) const {
    return places_[static_cast<std::size_t>(entry)].vertices[side(vertex) < 0.0F ? 1 : 0];
}

MirrorPlaces::Key MirrorPlaces::keyOf(const PlainPoint& point) const {
    // Adding 0 makes 0 of -0, which is the same place.
    Key key{point[0] + 0.0F, point[1] + 0.0F, point[2] + 0.0F};
    key[axis_] = std::abs(key[axis_]);
    return key;
}

/// Where the search for the slot of a key begins.
std::size_t MirrorPlaces::firstSlotOf(const Key& key) const {
    std::array<std::uint32_t, 3> bits;
    std::memcpy(bits.data(), key.data(), sizeof bits);
    std::uint64_t hash = (std::uint64_t{bits[0]} << 32U | bits[1]) * 0x9E3779B97F4A7C15U;
    hash = (hash ^ hash >> 32U ^ bits[2]) * 0xC2B2AE3D27D4EB4FU;
    return static_cast<std::size_t>((hash ^ hash >> 29U) * 0x165667B19E3779F9U >> shift_);
}
