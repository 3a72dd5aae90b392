#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <vector>

/// Arithmetic of a region map, which divides a mesh into weighted regions. Plain numbers: no host.
///
/// The weights of a vertex add up to 1 at most, as far as they are normalised. Their sums, and what they are
/// scaled by, are in single precision; normalised weights have five decimals (rounding.h).

constexpr std::size_t kRegionCount = 6;

/// The weights of one vertex, by region.
using RegionWeights = std::array<double, kRegionCount>;

/// Which regions are locked.
using RegionLocks = std::array<bool, kRegionCount>;

/// The weights of a map in arrays of their owner: one array per region, one weight per vertex.
struct RegionArrays {
    std::array<double*, kRegionCount> regions{};
    std::size_t vertexCount = 0;

    RegionWeights at(std::size_t vertex) const {
        RegionWeights weights;
        for (std::size_t region = 0; region < kRegionCount; ++region)
            weights[region] = regions[region][vertex];
        return weights;
    }
    void set(std::size_t vertex, const RegionWeights& weights) const {
        for (std::size_t region = 0; region < kRegionCount; ++region)
            regions[region][vertex] = weights[region];
    }
};

inline float sumOf(const RegionWeights& weights) {
    float sum = 0.0F;
    for (const double weight : weights)
        sum += static_cast<float>(weight);
    return sum;
}

/// Rounds the weights of a vertex, and scales those of its unlocked regions down where they add up to more
/// than 1, so that they fill what the locked ones leave. Weights of a single region are never scaled, and
/// none is scaled up.
void normalise(RegionWeights& weights, const RegionLocks& locks);

/// Gives a region of a vertex a painted weight, unless it is locked, and normalises the vertex.
/// @param distributes  whether what the region loses goes to the other regions that the vertex has, in equal
///                     shares; locked ones take part in that
void paintRegion(RegionWeights& weights, std::size_t region, double painted, const RegionLocks& locks,
                 bool distributes);

/// Normalises every vertex, and gives a region what the weights of a vertex lack to 1, unless it is locked.
void appendToRegion(const RegionArrays& map, std::size_t region, const RegionLocks& locks);

/// Replaces a list with the vertices that share an edge with a vertex; some may lie outside the map.
using Neighbours = std::function<void(std::size_t vertex, std::vector<int>& neighbours)>;

/// Normalises every vertex, and gives each unlocked region a part of what the weights of a vertex lack to 1:
/// its average over those neighbours that carry the region. The parts need not add up to the whole.
/// Neighbours count as they were before.
void appendByNeighbours(const RegionArrays& map, const RegionLocks& locks, const Neighbours& neighbours);
