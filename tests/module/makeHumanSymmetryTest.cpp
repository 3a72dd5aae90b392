// The vertex order map of a character of production size, where its folder is at hand.

#include <gtest/gtest.h>

#include <algorithm>

#include "makeHumanFixture.h"

namespace {

class MakeHumanSymmetry : public MakeHuman {
  protected:
    void SetUp() override {
        MakeHuman::SetUp();
        if (!IsSkipped()) import("base.obj", "base");
    }
};

TEST_F(MakeHumanSymmetry, PairsMirrorImagesAndLeadsToTheRest) {
    const Outcome outcome = scene_.run("dv_polyMapVertexOrder -v 2 base");
    ASSERT_TRUE(outcome.ok);
    EXPECT_EQ(outcome.value.toInt(), 1);
    const auto count = [&](const std::string& start) {
        return std::count_if(outcome.infos.begin(), outcome.infos.end(), [&](const std::string& line) {
            return line.compare(0, start.size(), start) == 0;
        });
    };
    EXPECT_EQ(count("Shell: "), 154);
    EXPECT_EQ(count("123 of 154 shells verified."), 1);
    EXPECT_EQ(count("Face1: "), 80);
    EXPECT_EQ(count("Face1: ") - count("Face1: -1"), 64) << "starts that are walked";
    EXPECT_GE(count("polySelect -extendToShell "), 80 - 64)
        << "a line or more for every start that is missing";

    const std::vector<int> map = scene_.mel("getAttr base.dvVertexOrderMap").toIntArray();
    const std::vector<double> points = scene_.points("base");
    ASSERT_EQ(map.size(), 19158U);
    int mapped = 0;
    for (std::size_t vertex = 0; vertex < map.size(); ++vertex) {
        if (map[vertex] == -1) continue;
        const auto partner = static_cast<std::size_t>(map[vertex]);
        ++mapped;
        ASSERT_EQ(map[partner], static_cast<int>(vertex));
        ASSERT_NEAR(points[3 * partner], -points[3 * vertex], 1e-4) << vertex;
        ASSERT_NEAR(points[3 * partner + 1], points[3 * vertex + 1], 1e-4) << vertex;
        ASSERT_NEAR(points[3 * partner + 2], points[3 * vertex + 2], 1e-4) << vertex;
    }
    // Which of several equally close faces the host finds decides the last hundred.
    EXPECT_NEAR(mapped, 18444, 100);
    EXPECT_EQ(scene_.mel("dv_polyMapVertexOrder -ck base").toInt(), 19158 - mapped);
}

TEST_F(MakeHumanSymmetry, IsSymmetricByPosition) {
    const Outcome outcome = scene_.run("dv_polySymmetry base");
    EXPECT_EQ(outcome.value.toInt(), 1);
    EXPECT_EQ(outcome.infos, std::vector<std::string>{"The mesh is symmetrical"});
}

}  // namespace
