#include "regions/regionWeights.h"

#include <gtest/gtest.h>

#include <random>

#include "regions/regionColors.h"

namespace {

constexpr RegionLocks kNoLocks{};

/// Locks of the listed regions.
RegionLocks locked(std::initializer_list<std::size_t> regions) {
    RegionLocks locks{};
    for (const std::size_t region : regions)
        locks[region] = true;
    return locks;
}

void expectNear(const RegionWeights& weights, const RegionWeights& expected, double tolerance = 1e-9) {
    for (std::size_t region = 0; region < kRegionCount; ++region)
        EXPECT_NEAR(weights[region], expected[region], tolerance) << "region " << region;
}

TEST(RegionWeights, NormaliseFillsWhatLockedRegionsLeave) {
    const struct {
        const char* name;
        RegionWeights before;
        RegionLocks locks;
        RegionWeights after;
    } rows[] = {
        {"too much", {1, 1, 2}, kNoLocks, {0.25, 0.25, 0.5}},
        {"one locked", {0.5, 0.2, 0.5}, locked({0}), {0.5, 0.14286, 0.35714}},
        {"too little", {0.25, 0, 0.125}, kNoLocks, {0.25, 0, 0.125}},
        {"one region alone", {0, 1.5}, kNoLocks, {0, 1.5}},
        {"one alone but for less than the rounding", {0.000004, 1.5}, kNoLocks, {0, 1.5}},
        {"as much as the rounding allows", {0.5, 0.500004}, kNoLocks, {0.5, 0.5}},
        {"all locked", {0.75, 0.75}, locked({0, 1}), {0.75, 0.75}},
        {"locked beyond 1", {0.75, 0.75, 0.5}, locked({0, 1}), {0.75, 0.75, 0}},
        {"five decimals", {0.123456, 0.000005}, locked({1}), {0.12346, 0.00001}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        RegionWeights weights = row.before;
        normalise(weights, row.locks);
        expectNear(weights, row.after);
    }
}

TEST(RegionWeights, NormalisedWeightsAddUpToOneAtMost) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> weight(0.0, 1.0);
    for (int round = 0; round < 1000; ++round) {
        RegionWeights weights{};
        RegionLocks locks{};
        for (std::size_t region = 0; region < kRegionCount; ++region) {
            weights[region] = random() % 2 == 0 ? 0.0 : weight(random);
            locks[region] = random() % 4 == 0;
        }
        const RegionWeights before = weights;
        normalise(weights, locks);
        double lockedSum = 0.0;
        for (std::size_t region = 0; region < kRegionCount; ++region) {
            EXPECT_LE(weights[region], before[region] + 5.1e-6) << "never scaled up";
            if (!locks[region]) continue;
            EXPECT_NEAR(weights[region], before[region], 5.1e-6);
            lockedSum += weights[region];
        }
        EXPECT_LE(sumOf(weights), std::max(1.0, lockedSum) + 4e-5);
    }
}

TEST(RegionWeights, PaintingLessGivesTheRestToTheOthers) {
    const struct {
        const char* name;
        RegionLocks locks;
        double painted;
        bool distributes;
        RegionWeights after;
    } rows[] = {
        {"less", kNoLocks, 0.2, true, {0.2, 0.4, 0.4}},
        {"less, the rest left open", kNoLocks, 0.2, false, {0.2, 0.2, 0.2}},
        {"less beside a locked region, which takes part", locked({1}), 0.2, true, {0.2, 0.4, 0.4}},
        {"more", kNoLocks, 1.0, true, {0.71429, 0.14286, 0.14286}},
        {"more beside locked regions", locked({1, 2}), 1.0, true, {0.6, 0.2, 0.2}},
        {"locked itself", locked({0}), 0.2, true, {0.6, 0.2, 0.2}},
        {"no difference once rounded", kNoLocks, 0.599999, true, {0.6, 0.2, 0.2}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        RegionWeights weights{0.6, 0.2, 0.2};
        paintRegion(weights, 0, row.painted, row.locks, row.distributes);
        expectNear(weights, row.after);
    }
    RegionWeights alone{0.6};
    paintRegion(alone, 0, 0.2, kNoLocks, true);
    expectNear(alone, {0.2});
}

/// A map of its own, one row of weights per vertex.
struct Map {
    explicit Map(const std::vector<RegionWeights>& rows) {
        arrays.vertexCount = rows.size();
        for (std::size_t region = 0; region < kRegionCount; ++region) {
            for (const RegionWeights& row : rows)
                weights[region].push_back(row[region]);
            arrays.regions[region] = weights[region].data();
        }
    }

    std::array<std::vector<double>, kRegionCount> weights;
    RegionArrays arrays;
};

TEST(RegionWeights, AppendGivesTheRemainderToOneRegion) {
    const std::vector<RegionWeights> rows{{0.25, 0.5}, {0, 0}, {1, 1}, {0, 0.999998}, {0, 1.5}};
    Map open(rows);
    appendToRegion(open.arrays, 2, kNoLocks);
    const std::vector<RegionWeights> filled{{0.25, 0.5, 0.25}, {0, 0, 1}, {0.5, 0.5}, {0, 1}, {0, 1.5}};
    Map closed(rows);
    appendToRegion(closed.arrays, 2, locked({2}));
    const std::vector<RegionWeights> normalised{{0.25, 0.5}, {0, 0}, {0.5, 0.5}, {0, 1}, {0, 1.5}};
    for (std::size_t vertex = 0; vertex < rows.size(); ++vertex) {
        expectNear(open.arrays.at(vertex), filled[vertex]);
        expectNear(closed.arrays.at(vertex), normalised[vertex]);
    }
}

TEST(RegionWeights, AppendByNeighboursAveragesThoseThatCarryARegion) {
    // A row of vertices; the last one has neighbours outside the map.
    Map map({{1, 1}, {0, 0}, {0, 0.25, 0.75}, {0, 0}, {0, 0}, {0.5, 0.25}});
    appendByNeighbours(map.arrays, locked({2}), [](std::size_t vertex, std::vector<int>& neighbours) {
        const int at = static_cast<int>(vertex);
        neighbours = vertex == 5 ? std::vector<int>{-1, 6, 2000000000} : std::vector<int>{at - 1, at + 1};
    });
    expectNear(map.arrays.at(0), {0.5, 0.5});
    // Region 1 from both, region 0 from the one that has it, region 2 is locked: less than the remainder.
    expectNear(map.arrays.at(1), {0.5, 0.375});
    expectNear(map.arrays.at(2), {0, 0.25, 0.75});
    // What vertex 3 gets, vertex 4 does not see.
    expectNear(map.arrays.at(3), {0, 0.25});
    expectNear(map.arrays.at(4), {0.5, 0.25});
    expectNear(map.arrays.at(5), {0.5, 0.25});
}

TEST(RegionColors, TellWeightsApart) {
    const auto color = [](const RegionWeights& weights, RegionStyle style) {
        return regionColor(weights, style);
    };
    EXPECT_EQ(color({}, RegionStyle::kBlackAndWhite), (RegionColor{0, 0, 0}));
    EXPECT_EQ(color({0.25, 0.25}, RegionStyle::kBlackAndWhite), (RegionColor{0.5F, 0.5F, 0.5F}));
    EXPECT_EQ(color({0, 0, 3}, RegionStyle::kBlackAndWhite), (RegionColor{1, 1, 1}));
    EXPECT_EQ(color({}, RegionStyle::kRamp), (RegionColor{0, 0, 1}));
    EXPECT_EQ(color({0.125}, RegionStyle::kRamp), (RegionColor{0, 0.5F, 1}));
    EXPECT_EQ(color({0.25, 0.5}, RegionStyle::kRamp), (RegionColor{1, 1, 0}));
    EXPECT_EQ(color({0.5, 0.5}, RegionStyle::kRamp), (RegionColor{1, 0, 0}));
    EXPECT_EQ(color({1e300, -1e300}, RegionStyle::kRamp), (RegionColor{0, 0, 1}));
    EXPECT_EQ(color({}, RegionStyle::kColored), (RegionColor{0, 0, 0}));
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        RegionWeights weights{};
        weights[region] = 1.0;
        const RegionColor full = color(weights, RegionStyle::kColored);
        weights[region] = 0.5;
        EXPECT_EQ(color(weights, RegionStyle::kColored)[0], 0.5F * full[0]);
        for (std::size_t other = 0; other < region; ++other) {
            RegionWeights others{};
            others[other] = 1.0;
            EXPECT_NE(color(others, RegionStyle::kColored), full);
        }
    }
}

}  // namespace
