#include "symmetry/mirrorPlaces.h"

#include <algorithm>
#include <cmath>
#include <cstring>

struct MirrorPlaces::Block {
    static constexpr std::size_t kSize = 32;

    std::size_t count;
    std::array<int, kSize> vertices;
    std::array<Key, kSize> keys;
    std::array<std::size_t, kSize> slots;
    std::array<int, kSize> found;
};

MirrorPlaces::MirrorPlaces(const std::vector<PlainPoint>& points, std::size_t axis, std::size_t count)
    : points_(points), axis_(axis), places_(new Place[count]), next_{{{0}, {static_cast<int>(count) - 1}}} {
    // Each half has room for all entries and an empty slot, where every search ends.
    std::size_t slotCount = 2;
    for (; slotCount / 2 <= count; slotCount *= 2)
        --shift_;
    slots_.assign(slotCount, kNowhere);
}

/// Reads the slots of a block of vertices first, then their entries: so the processor waits for the memory of
/// all of them at once. What that does not settle, a new entry or a slot in use, is searched one by one.
template <bool adds>
void MirrorPlaces::put(unsigned int half, const std::vector<int>& vertices, std::vector<int>& entries) {
    Block block;
    for (std::size_t next = 0; next < vertices.size();) {
        fill(block, half, vertices, next);
        for (std::size_t k = 0; k < block.count; ++k)
            block.found[k] = slots_[block.slots[k]];
        for (std::size_t k = 0; k < block.count; ++k) {
            const int found = block.found[k];
            if (found != kNowhere && !isAt(found, block.keys[k])) block.found[k] = kNowhere;
        }
        for (std::size_t k = 0; k < block.count; ++k) {
            const int vertex = block.vertices[k];
            int& entry = entries[static_cast<std::size_t>(vertex)];
            if (entry != kNowhere) continue;
            entry = block.found[k];
            if (entry == kNowhere) entry = search<adds>(block.slots[k], block.keys[k], half);
            if (entry != kNowhere) occupy(vertex, entry);
        }
    }
}

template void MirrorPlaces::put<true>(unsigned int half, const std::vector<int>& vertices,
                                      std::vector<int>& entries);
template void MirrorPlaces::put<false>(unsigned int half, const std::vector<int>& vertices,
                                       std::vector<int>& entries);

/// Takes the next vertices that have a place in a half.
void MirrorPlaces::fill(Block& block, unsigned int half, const std::vector<int>& vertices,
                        std::size_t& next) const {
    std::size_t count = 0;
    for (; next < vertices.size() && count < Block::kSize; ++next) {
        const auto vertex = static_cast<std::size_t>(vertices[next]);
        if (vertex >= points_.size() || !isFinite(points_[vertex])) continue;
        block.vertices[count] = vertices[next];
        block.keys[count] = keyOf(points_[vertex]);
        block.slots[count] = firstSlotOf(block.keys[count]);
        // Not with a branch: the half cannot be foreseen.
        count += halfOf(block.slots[count]) == half ? 1 : 0;
    }
    block.count = count;
}

/// @return the entry of a key; where there is none, a new one or kNowhere
template <bool adds>
int MirrorPlaces::search(std::size_t slot, const Key& key, unsigned int half) {
    const std::size_t size = slots_.size() / 2;
    const std::size_t begin = half * size;
    while (slots_[slot] != kNowhere && !isAt(slots_[slot], key))
        slot = slot + 1 == begin + size ? begin : slot + 1;
    if (adds && slots_[slot] == kNowhere) {
        int& next = next_[half].entry;
        slots_[slot] = next;
        places_[static_cast<std::size_t>(next)] = {key, {kNobody, kNobody}};
        next += half == 0 ? 1 : -1;
    }
    return slots_[slot];
}

/// Notes that a vertex is at its place.
void MirrorPlaces::occupy(int vertex, int entry) {
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
