#include "regions/regionWeights.h"

#include <algorithm>

#include "files/rounding.h"

namespace {

/// The factor for unlocked weights.
float scaleOf(const RegionWeights& weights, const RegionLocks& locks) {
    float lockedSum = 0.0F;
    float freeSum = 0.0F;
    int count = 0;
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        const auto weight = static_cast<float>(weights[region]);
        (locks[region] ? lockedSum : freeSum) += weight;
        if (round5(weight) != 0.0F) ++count;
    }
    if (count < 2 || freeSum <= 0.0F) return 1.0F;
    // If the locked weights add up to more than 1, nothing is left for the others.
    return std::max((1.0F - lockedSum) / freeSum, 0.0F);
}

/// The weight that a normalised vertex lacks to 1; 0 if it lacks none.
double unassigned(const RegionWeights& weights) {
    const float sum = sumOf(weights);
    // Most vertices lack nothing; this test saves the rounding, which is slow.
    return sum < 1.0F ? round5(1.0 - static_cast<double>(sum)) : 0.0;
}

/// The average weight of each region over the vertices that have it; 0 if none has it.
RegionWeights averageOf(const RegionArrays& map, const std::vector<int>& vertices) {
    RegionWeights averages{};
    std::array<int, kRegionCount> counts{};
    for (const int vertex : vertices) {
        if (vertex < 0 || static_cast<std::size_t>(vertex) >= map.vertexCount) continue;
        const RegionWeights weights = map.at(static_cast<std::size_t>(vertex));
        for (std::size_t region = 0; region < kRegionCount; ++region) {
            if (weights[region] == 0.0) continue;
            averages[region] += weights[region];
            if (weights[region] > 0.0) ++counts[region];
        }
    }
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        if (counts[region] > 0) averages[region] /= counts[region];
    }
    return averages;
}

}  // namespace

void normalise(RegionWeights& weights, const RegionLocks& locks) {
    const float sum = sumOf(weights);
    const bool isTooMuch = sum > 1.0F && round5(sum) > 1.0F;
    const double scale = isTooMuch ? static_cast<double>(scaleOf(weights, locks)) : 1.0;
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        double& weight = weights[region];
        // Most vertices have one or two regions; this test saves the rounding, which is slow.
        if (weight != 0.0) weight = round5(locks[region] ? weight : weight * scale);
    }
}

void paintRegion(RegionWeights& weights, std::size_t region, double painted, const RegionLocks& locks,
                 bool distributes) {
    if (!locks[region]) {
        const double freed = round5(weights[region]) - round5(painted);
        weights[region] = round5(painted);
        const auto takesPart = [&](std::size_t other) {
            return other != region && round5(weights[other]) > 0.0;
        };
        if (distributes && freed > 0.0) {
            int count = 0;
            for (std::size_t other = 0; other < kRegionCount; ++other)
                count += takesPart(other) ? 1 : 0;
            for (std::size_t other = 0; other < kRegionCount; ++other) {
                if (takesPart(other)) weights[other] += freed / count;
            }
        }
    }
    normalise(weights, locks);
}

void appendToRegion(const RegionArrays& map, std::size_t region, const RegionLocks& locks) {
    for (std::size_t vertex = 0; vertex < map.vertexCount; ++vertex) {
        RegionWeights weights = map.at(vertex);
        normalise(weights, locks);
        if (!locks[region]) weights[region] += unassigned(weights);
        map.set(vertex, weights);
    }
}

void appendByNeighbours(const RegionArrays& map, const RegionLocks& locks, const Neighbours& neighbours) {
    std::vector<std::size_t> gaps;
    for (std::size_t vertex = 0; vertex < map.vertexCount; ++vertex) {
        RegionWeights weights = map.at(vertex);
        normalise(weights, locks);
        map.set(vertex, weights);
        if (unassigned(weights) > 0.0) gaps.push_back(vertex);
    }
    // All averages come first, so that no vertex sees the new weights of another.
    std::vector<RegionWeights> averages;
    averages.reserve(gaps.size());
    std::vector<int> around;
    for (const std::size_t vertex : gaps) {
        neighbours(vertex, around);
        averages.push_back(averageOf(map, around));
    }
    for (std::size_t k = 0; k < gaps.size(); ++k) {
        RegionWeights weights = map.at(gaps[k]);
        const double missing = unassigned(weights);
        for (std::size_t region = 0; region < kRegionCount; ++region) {
            if (!locks[region]) weights[region] += missing * averages[k][region];
        }
        map.set(gaps[k], weights);
    }
}
