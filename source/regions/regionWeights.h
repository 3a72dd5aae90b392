#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <vector>

/// Arithmetic of a region map, which divides a mesh into weighted regions. Plain numbers: no host.
///
/// The weights of a normalised vertex add up to at most 1, with the exceptions of normalise(). Sums and scale
/// factors are in single precision. Normalised weights have five decimals (rounding.h).

constexpr std::size_t kRegionCount = 6;

/// The weights of one vertex, one per region.
using RegionWeights = std::array<double, kRegionCount>;

/// Which regions are locked.
using RegionLocks = std::array<bool, kRegionCount>;

/// The weights of a map: one array per region, one weight per vertex. The arrays belong to somebody else.
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

/// Rounds the weights of a vertex. If they add up to more than 1, scales down those of unlocked regions, so
/// that they fill what the locked regions leave. Weights are never scaled up, and not scaled at all if the
/// vertex has only one region.
void normalise(RegionWeights& weights, const RegionLocks& locks);

/// Sets the weight of a region of a vertex to a painted weight, unless the region is locked, and normalises
/// the vertex.
/// @param distributes  whether the weight that the region loses goes in equal shares to the other regions of
///                     the vertex; locked regions get their share, too
void paintRegion(RegionWeights& weights, std::size_t region, double painted, const RegionLocks& locks,
                 bool distributes);

/// Normalises every vertex. Then fills each vertex up to 1 by adding the missing weight to one region, unless
/// that is locked.
void appendToRegion(const RegionArrays& map, std::size_t region, const RegionLocks& locks);

/// Replaces a list with the vertices that share an edge with a vertex. The list may contain vertices outside
/// the map.
using Neighbours = std::function<void(std::size_t vertex, std::vector<int>& neighbours)>;

/// Normalises every vertex. Then, for each vertex whose weights add up to less than 1, each unlocked region
/// gets a part of the missing weight. The factor is the average weight of the region over those neighbours
/// that have the region. The parts need not add up to the whole. Neighbours are read before any part is
/// added.
void appendByNeighbours(const RegionArrays& map, const RegionLocks& locks, const Neighbours& neighbours);
