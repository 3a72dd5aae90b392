#include "symmetry/mirrorPlaces.h"

#include <cmath>
#include <cstring>

MirrorPlaces::MirrorPlaces(std::size_t axis, std::size_t count) : axis_(axis) {
    std::size_t slotCount = 2;
    for (; slotCount < 2 * count; slotCount *= 2)
        --shift_;
    slots_.assign(slotCount, kNowhere);
    places_.reserve(count);
}

int MirrorPlaces::add(const PlainPoint& point) {
    const Key key = keyOf(point);
    const std::size_t slot = slotOf(key);
    if (slots_[slot] == kNowhere) {
        slots_[slot] = static_cast<int>(places_.size());
        places_.push_back({key, {kNobody, kNobody}});
    }
    return slots_[slot];
}

void MirrorPlaces::put(int vertex, const PlainPoint& point, int entry) {
    int& occupant = places_[static_cast<std::size_t>(entry)].vertices[point[axis_] > 0.0F ? 1 : 0];
    occupant = occupant == kNobody ? vertex : kSeveral;
}

int MirrorPlaces::acrossFrom(const PlainPoint& point, int entry) const {
    return places_[static_cast<std::size_t>(entry)].vertices[point[axis_] < 0.0F ? 1 : 0];
}

MirrorPlaces::Key MirrorPlaces::keyOf(const PlainPoint& point) const {
    // Adding 0 makes 0 of -0, which is the same place.
    Key key{point[0] + 0.0F, point[1] + 0.0F, point[2] + 0.0F};
    key[axis_] = std::abs(key[axis_]);
    return key;
}

/// The slot of a key, or the free one where it would go.
std::size_t MirrorPlaces::slotOf(const Key& key) const {
    std::array<std::uint32_t, 3> bits;
    std::memcpy(bits.data(), key.data(), sizeof bits);
    std::uint64_t hash = (std::uint64_t{bits[0]} << 32U | bits[1]) * 0x9E3779B97F4A7C15U;
    hash = (hash ^ hash >> 32U ^ bits[2]) * 0xC2B2AE3D27D4EB4FU;
    auto slot = static_cast<std::size_t>((hash ^ hash >> 29U) * 0x165667B19E3779F9U >> shift_);
    while (slots_[slot] != kNowhere && places_[static_cast<std::size_t>(slots_[slot])].key != key)
        slot = slot + 1 == slots_.size() ? 0 : slot + 1;
    return slot;
}
