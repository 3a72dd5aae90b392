#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "geometry/rotationBlend.h"
#include "host/nodesFixture.h"
#include "nodes/sceneTime.h"

namespace {

using namespace nodestest;
using geometry::RotateOrder;
using geometry::Vec3;

constexpr double kPi = geometry::kPi;

/// Plugs and values, all by short names.
using Values = std::vector<std::pair<const char*, double>>;

struct NodeCase {
    const char* name;
    const char* type;
    Values set;
    Values wanted;
};

void PrintTo(const NodeCase& node, std::ostream* stream) {
    *stream << node.name;
}

class Arithmetic : public testing::TestWithParam<NodeCase> {};

TEST_P(Arithmetic, GivesTheValuesWorkedOutByHand) {
    Scene scene;
    scene.make(GetParam().type, "node");
    for (const auto& [plug, value] : GetParam().set)
        scene.set(std::string("node.") + plug, value);
    for (const auto& [plug, value] : GetParam().wanted)
        EXPECT_NEAR(scene.get(std::string("node.") + plug), value, 1e-6) << plug;
}

const Values kPairs{{"i1[0]", 10},    {"i1[4]", 2},     {"i1[5]", 3},      {"i2[1].i2x", 4}, {"i2[1].i2y", 1},
                    {"i2[2].i2y", 7}, {"i3[0].i3z", 9}, {"i3[3].i3z", 12}, {"i3[3].i3x", 5}};

Values combining(double operation) {
    Values values = kPairs;
    values.emplace_back("op", operation);
    return values;
}

Values factors(double operation) {
    return {{"i1x", 8}, {"i2x", 2}, {"i1y", -8}, {"i2y", 0.5}, {"i1z", 3}, {"i2z", 0}, {"op", operation}};
}

INSTANTIATE_TEST_SUITE_P(
    MultiplyDivide, Arithmetic,
    testing::Values(
        NodeCase{"defaults", "multiplyDivide", {}, {{"op", 1}, {"i1x", 0}, {"i2z", 1}, {"oy", 0}}},
        NodeCase{"noOperation", "multiplyDivide", factors(0), {{"ox", 8}, {"oy", -8}, {"oz", 3}}},
        NodeCase{"multiply", "multiplyDivide", factors(1), {{"ox", 16}, {"oy", -4}, {"oz", 0}}},
        NodeCase{"divide", "multiplyDivide", factors(2), {{"ox", 4}, {"oy", -16}, {"oz", 0}}},
        // The root of a negative number is none.
        NodeCase{"power", "multiplyDivide", factors(3), {{"ox", 64}, {"oy", 0}, {"oz", 1}}}),
    testing::PrintToStringParamName());

INSTANTIATE_TEST_SUITE_P(
    PlusMinusAverage, Arithmetic,
    testing::Values(
        NodeCase{"empty", "plusMinusAverage", {{"op", 3}}, {{"o1", 0}, {"o3y", 0}}},
        NodeCase{"first", "plusMinusAverage", combining(0), {{"o1", 10}, {"o2x", 4}, {"o2y", 1}, {"o3z", 9}}},
        NodeCase{"sum",
                 "plusMinusAverage",
                 combining(1),
                 {{"o1", 15}, {"o2x", 4}, {"o2y", 8}, {"o3x", 5}, {"o3z", 21}}},
        NodeCase{"subtract",
                 "plusMinusAverage",
                 combining(2),
                 {{"o1", 5}, {"o2x", 4}, {"o2y", -6}, {"o3x", -5}, {"o3z", -3}}},
        NodeCase{"average",
                 "plusMinusAverage",
                 combining(3),
                 {{"o1", 5}, {"o2x", 2}, {"o2y", 4}, {"o3x", 2.5}, {"o3z", 10.5}}}),
    testing::PrintToStringParamName());

INSTANTIATE_TEST_SUITE_P(
    Ranges, Arithmetic,
    testing::Values(
        NodeCase{"reverse", "reverse", {{"ix", 0.25}, {"iz", -3}}, {{"ox", 0.75}, {"oy", 1}, {"oz", 4}}},
        NodeCase{"setRange",
                 "setRange",
                 {{"vx", 5},
                  {"nx", 10},
                  {"mx", 30},
                  {"omx", 20},  // a quarter
                  {"vy", 9},
                  {"ny", 1},
                  {"my", -1},
                  {"ony", 2},
                  {"omy", 6},  // past the end
                  {"vz", 1},
                  {"nz", 2},
                  {"mz", 4},
                  {"onz", 10},
                  {"omz", -5}},  // backwards: three fifths
                 {{"ox", 15}, {"oy", -1}, {"oz", 3.2}}},
        NodeCase{"setRangeOfNothing",
                 "setRange",
                 {{"vx", 1}, {"nx", 2}, {"mx", 3}, {"vy", 0}, {"ny", 2}, {"my", 3}},
                 {{"ox", 3}, {"oy", 2}}},
        NodeCase{"blendWeighted",
                 "blendWeighted",
                 {{"i[0]", 1}, {"i[2]", 10}, {"i[7]", 100}, {"w[2]", 0.5}, {"w[7]", 0}, {"w[9]", 3}},
                 {{"o", 6}}},
        NodeCase{"unitConversion", "unitConversion", {{"i", 3}, {"cf", -2}}, {{"o", -6}}},
        NodeCase{"remapDefaults", "remapValue", {{"i", 0.3}}, {{"ov", 0.3}, {"ocg", 0.3}}},
        // A place of 0.25 in the range, between entries at 0 and 0.5: halfway; of the smooth ones likewise.
        NodeCase{"remap",
                 "remapValue",
                 {{"i", 3},
                  {"imn", 2},
                  {"imx", 6},
                  {"omn", 10},
                  {"omx", 20},
                  {"vl[5].vlp", 0},
                  {"vl[5].vlfv", 1},
                  {"vl[5].vli", 1},
                  {"vl[2].vlp", 0.5},
                  {"cl[0].cli", 0},
                  {"cl[0].clcb", 0.75},
                  {"cl[1].clp", 1}},
                 {{"ov", 15}, {"ocr", 10}, {"ocb", 17.5}}},
        NodeCase{"remapOfNothing", "remapValue", {{"i", 1}, {"imn", 1}, {"imx", 1}}, {{"ov", 0}}},
        NodeCase{"remapSmooth",
                 "remapValue",
                 {{"i", 0.25}, {"vl[0].vli", 2}, {"vl[1].vlp", 1}, {"vl[1].vlfv", 1}},
                 {{"ov", 0.15625}}},
        // Entries of x * x: a spline meets it between inner entries.
        NodeCase{"remapSpline",
                 "remapValue",
                 {{"i", 0.375},
                  {"vl[0].vli", 3},
                  {"vl[1].vlp", 0.25},
                  {"vl[1].vlfv", 0.0625},
                  {"vl[1].vli", 3},
                  {"vl[2].vlp", 0.5},
                  {"vl[2].vlfv", 0.25},
                  {"vl[3].vlp", 0.75},
                  {"vl[3].vlfv", 0.5625}},
                 {{"ov", 0.140625}}}),
    testing::PrintToStringParamName());

TEST(Condition, ChoosesByAllSixOperations) {
    Scene scene;
    scene.make("condition", "node");
    scene.set("node.ctg", 5);
    scene.set("node.cfg", 7);
    scene.set("node.st", 2);
    // For a first term of 1, 2 and 3: whether it holds.
    const bool holds[6][3] = {{false, true, false}, {true, false, true},  {false, false, true},
                              {false, true, true},  {true, false, false}, {true, true, false}};
    for (int operation = 0; operation < 6; ++operation) {
        for (int term = 1; term <= 3; ++term) {
            scene.set("node.op", operation);
            scene.set("node.ft", term);
            EXPECT_EQ(scene.get("node.ocg"), holds[operation][term - 1] ? 5 : 7) << operation << ' ' << term;
            EXPECT_EQ(scene.get("node.ocb"), holds[operation][term - 1] ? 0 : 1);
        }
    }
}

TEST(PairBlend, BlendsEachChannelByItsMode) {
    Scene scene;
    scene.make("pairBlend", "node");
    for (const char axis : {'x', 'y', 'z'}) {
        scene.set(std::string("node.it") + axis + '1', 10);
        scene.set(std::string("node.it") + axis + '2', 20);
        scene.set(std::string("node.ir") + axis + '2', axis == 'z' ? kPi : 0);
    }
    EXPECT_EQ(scene.get("node.otx"), 20);
    scene.set("node.w", 0.25);
    scene.set("node.tym", 1);
    scene.set("node.tzm", 2);
    EXPECT_EQ(scene.get("node.otx"), 12.5);
    EXPECT_EQ(scene.get("node.oty"), 10);
    EXPECT_EQ(scene.get("node.otz"), 20);
    EXPECT_DOUBLE_EQ(scene.get("node.orz"), kPi / 4);
    scene.set("node.ri", 1);
    EXPECT_NEAR(scene.get("node.orz"), kPi / 4, 1e-12);
    scene.set("node.rm", 2);
    EXPECT_NEAR(scene.get("node.orz"), kPi, 1e-12);
    scene.set("node.rm", 1);
    EXPECT_NEAR(scene.get("node.orz"), 0, 1e-12);
}

TEST(BlendedRotations, TakeTheShortWayAndKeepTheTurnsOfTheirEnds) {
    // From 170 to -170 degrees the short way crosses 180.
    const Vec3 crossing =
        geometry::blendAngles({170 * kPi / 180, 0, 0}, {-170 * kPi / 180, 0, 0}, RotateOrder::Xyz, 0.5);
    EXPECT_NEAR(std::abs(crossing.x), kPi, 1e-9);
    for (int order = 0; order < 6; ++order) {
        const auto inOrder = static_cast<RotateOrder>(order);
        const Vec3 from{0.3, 7.0, -2.5};
        const Vec3 to{-4.0, 0.4, 1.1};
        EXPECT_LT(geometry::length(geometry::blendAngles(from, to, inOrder, 0) - from), 1e-9) << order;
        EXPECT_LT(geometry::length(geometry::blendAngles(from, to, inOrder, 1) - to), 1e-9) << order;
        // A third of the way, three times: the rotation between them is the third root of the whole one.
        const auto matrix = [&](double weight) {
            return geometry::rotationMatrix(geometry::blendAngles(from, to, inOrder, weight), inOrder);
        };
        const geometry::Matrix4 step = matrix(0).transposed() * matrix(1.0 / 3);
        EXPECT_TRUE(geometry::isEquivalent(matrix(0) * step * step * step, matrix(1), 1e-9)) << order;
    }
}

TEST(UnitConversion, CountsTimesInThePartsForWhichItsFactorIsMade) {
    for (const double parts : {6000.0, 141120000.0}) {
        Scene scene;
        scene.make("unitConversion", "toFrames");
        scene.make("unitConversion", "toTime");
        scene.make("animCurveTU", "curve");
        scene.set("toFrames.cf", 24 / parts);
        scene.set("toTime.cf", parts / 24);
        scene.join("time1.outTime", "toFrames.i");
        scene.join("toFrames.o", "toTime.i");
        nodes::setCurrentTime(scene, 2);
        EXPECT_NEAR(scene.get("toFrames.o"), 48, 1e-9);
        // As long as no time is driven, the result is a plain number.
        EXPECT_NEAR(scene.get("toTime.o"), 2 * parts, 1e-3);
        scene.join("toTime.o", "curve.i");
        EXPECT_NEAR(scene.get("curve.i"), 2, 1e-9);
    }
}

}  // namespace
