#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "host/nodesFixture.h"
#include "nodes/keyCurve.h"
#include "nodes/sceneTime.h"

namespace {

using namespace nodestest;
using nodes::Infinity;
using nodes::KeyCurve;
using nodes::StoredTangent;
using nodes::Tangent;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();

struct CurveCase {
    const char* name;
    std::vector<nodes::Key> keys;
    StoredTangent out;
    StoredTangent in;
    bool isWeighted;
    std::vector<std::pair<double, double>> values;  // time and value
    Infinity infinity = Infinity::Constant;
};

void PrintTo(const CurveCase& curve, std::ostream* stream) {
    *stream << curve.name;
}

class Curves : public testing::TestWithParam<CurveCase> {};

TEST_P(Curves, GoThroughTheValuesWorkedOutByHand) {
    const CurveCase& given = GetParam();
    const auto tangent = [&](int, nodes::Side side) {
        return side == nodes::Side::In ? given.in : given.out;
    };
    KeyCurve curve{given.keys, tangent, given.isWeighted, given.infinity, given.infinity};
    nodes::orderKeys(curve.keys);
    for (const auto& [time, value] : given.values)
        EXPECT_NEAR(nodes::evaluate(curve, time), value, 1e-9) << time;
}

CurveCase ruled(const char* name, Tangent type, std::vector<nodes::Key> keys,
                std::vector<std::pair<double, double>> values) {
    return {name, std::move(keys), {type}, {type}, false, std::move(values)};
}

CurveCase fixed(const char* name, bool isWeighted, StoredTangent out, StoredTangent in,
                std::vector<std::pair<double, double>> values) {
    return {name, {{0, 0, 0}, {1, 1, 1}}, out, in, isWeighted, std::move(values)};
}

CurveCase beyond(const char* name, Infinity infinity, std::vector<std::pair<double, double>> values) {
    return {name,  {{1, 2, 0}, {3, 6, 1}}, {Tangent::Linear}, {Tangent::Linear},
            false, std::move(values),      infinity};
}

// The middle of a cubic is the mean of its ends plus an eighth of its length times the difference of the
// slopes at start and end; at a quarter of a flat one, 10/64 of the rise are done.
INSTANTIATE_TEST_SUITE_P(
    Tangents, Curves,
    testing::Values(
        ruled("none", Tangent::Auto, {}, {{1, 0}}),
        ruled("one", Tangent::Auto, {{2, 5, 0}}, {{1, 5}, {3, 5}}),
        ruled("linear", Tangent::Linear, {{0, 0, 0}, {2, 4, 1}}, {{0, 0}, {0.5, 1}, {2, 4}}),
        ruled("flat", Tangent::Flat, {{0, 0, 0}, {2, 4, 1}}, {{0.5, 0.625}}),
        ruled("step", Tangent::Step, {{0, 1, 0}, {2, 4, 1}}, {{0, 1}, {1.999, 1}, {2, 4}}),
        ruled("stepNext", Tangent::StepNext, {{0, 1, 0}, {2, 4, 1}}, {{0, 1}, {0.001, 4}, {2, 4}}),
        // Slow and fast: the parabola t * t.
        CurveCase{
            "slowToFast", {{0, 0, 0}, {2, 4, 1}}, {Tangent::Slow}, {Tangent::Fast}, false, {{0.5, 0.25}}},
        // Keys of t * t, which a spline meets exactly between inner keys; slopes 1 and 2 in the first
        // segment.
        ruled("spline", Tangent::Spline, {{0, 0, 0}, {1, 1, 1}, {2, 4, 2}, {3, 9, 3}},
              {{1.5, 2.25}, {1.25, 1.5625}, {0.5, 0.375}}),
        // Linear where the values are close; slopes 1 and 1.96 in the last segment.
        ruled("clamped", Tangent::Clamped, {{0, 0, 0}, {1, 1, 1}, {2, 1.04, 2}, {3, 3, 3}},
              {{1.25, 1.01}, {2.5, 1.9}}),
        // Slopes 0, 5 limited to 3, 0 and 0.
        ruled("plateau", Tangent::Plateau, {{0, 0, 0}, {1, 1, 1}, {2, 10, 2}, {3, 10, 3}},
              {{0.5, 0.125}, {1.5, 5.875}, {2.5, 10}}),
        ruled("autoDown", Tangent::Auto, {{0, 0, 0}, {1, -1, 1}, {2, -10, 2}, {3, -10, 3}}, {{1.5, -5.875}}),
        ruled("autoHill", Tangent::Auto, {{0, 0, 0}, {1, 2, 1}, {2, 1, 2}}, {{0.25, 0.3125}}),
        // Nothing limits the slopes 1.5 and 2.5.
        ruled("auto", Tangent::Auto, {{0, 0, 0}, {1, 1, 1}, {2, 3, 2}, {3, 6, 3}}, {{1.5, 1.875}}),
        ruled("unknownType", static_cast<Tangent>(77), {{0, 0, 0}, {1, 2, 1}, {2, 1, 2}}, {{0.25, 0.3125}}),
        ruled("unordered", Tangent::Linear, {{2, 4, 0}, {1, kNan, 1}, {0, 9, 2}, {0, 0, 3}, {kNan, 1, 4}},
              {{0, 0}, {0.5, 1}}),
        fixed("fixed", false, {Tangent::Fixed, 0.5, 1}, {Tangent::Fixed, 1, 0}, {{0.5, 0.75}}),
        // 5729577.9485 is the tangent of 89.99999 degrees.
        fixed("vertical", false, {Tangent::Fixed, 0, 1}, {Tangent::Flat}, {{0.5, 0.5 + 5729577.9485 / 8}}),
        fixed("noNumber", false, {Tangent::Fixed, kNan, 1}, {Tangent::Fixed, 0, 0}, {{0.5, 0.5}}),
        // Weighted with control points at the keys: a straight line.
        fixed("noWeight", true, {Tangent::Fixed, 0, 0}, {Tangent::Fixed, -2, 0}, {{0.3, 0.3}, {0.9, 0.9}}),
        // Both control points at the end: the time is 1 - (1 - s)^3. Twice that weight is more than can be.
        fixed("weight", true, {Tangent::Fixed, 3, 0}, {Tangent::Fixed, 0, 0}, {{0.875, 0.5}}),
        fixed("excess", true, {Tangent::Fixed, 6, 0}, {Tangent::Fixed, 0, 0}, {{0.875, 0.5}}),
        fixed("weightedRule", true, {Tangent::Flat}, {Tangent::Flat}, {{0.25, 0.15625}})),
    testing::PrintToStringParamName());

INSTANTIATE_TEST_SUITE_P(
    Infinities, Curves,
    testing::Values(beyond("constant", Infinity::Constant,
                           {{-1, 2}, {5, 6}, {kInfinite, 6}, {-kInfinite, 2}}),
                    beyond("line", Infinity::Linear, {{-1, -2}, {5, 10}}),
                    // The start of a cycle belongs to it.
                    beyond("cycle", Infinity::Cycle, {{4, 4}, {-0.5, 3}, {5, 2}, {-1, 2}, {3, 6}}),
                    beyond("offset", Infinity::CycleWithOffset, {{4, 8}, {-0.5, -1}, {5, 10}, {-3, -6}}),
                    beyond("oscillate", Infinity::Oscillate, {{4, 4}, {3.5, 5}, {5.5, 3}, {-0.5, 5}}),
                    CurveCase{"lineOfOneKey",
                              {{1, 2, 0}},
                              {Tangent::Fixed, 1, 3},
                              {Tangent::Fixed, 2, 1},
                              true,
                              {{2, 5}, {-1, 1}},
                              Infinity::Linear},
                    CurveCase{"cycleOfOneKey", {{1, 2, 0}}, {}, {}, true, {{2, 2}}, Infinity::Cycle}),
    testing::PrintToStringParamName());

TEST(WeightedCurve, GivesTheTimeIfItsValuesAreItsTimesWhateverTheWeights) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> exponents(-3.0, 3.0);
    for (int round = 0; round < 200; ++round) {
        const double out = std::pow(10.0, exponents(random));
        const double in = std::pow(10.0, exponents(random));
        const KeyCurve curve{{{2, 2, 0}, {4, 4, 1}},
                             [&](int, nodes::Side side) {
                                 const double length = side == nodes::Side::In ? in : out;
                                 return StoredTangent{Tangent::Fixed, length, length};
                             },
                             true};
        for (double time = 2.0; time <= 4.0; time += 0.125)
            EXPECT_NEAR(nodes::evaluate(curve, time), time, 1e-9) << out << ' ' << in;
    }
}

TEST(AnimCurve, FollowsTheTimeUnlessSomethingElseDrivesIt) {
    Scene scene;
    scene.make("animCurveTL", "curve");
    scene.make("animCurveTT", "warp");
    scene.make("transform", "driven");
    for (const char* curve : {"curve", "warp"}) {
        scene.set(std::string(curve) + ".tan", 2);
        for (int key = 0; key < 2; ++key) {
            const std::string at = std::string(curve) + ".ktv[" + std::to_string(key) + "]";
            scene.set(at + ".kt", key);
            scene.set(at + ".kv", 10.0 * key);
        }
    }
    scene.join("curve.o", "driven.tx");
    nodes::setCurrentTime(scene, 0.25);
    EXPECT_DOUBLE_EQ(scene.get("driven.tx"), 2.5);
    graph::ChangeList changes;
    {
        const graph::RecordingScope scope(scene, &changes);
        nodes::setCurrentTime(scene, 0.75);
    }
    EXPECT_DOUBLE_EQ(scene.get("driven.tx"), 7.5);
    changes.undo(scene);
    EXPECT_DOUBLE_EQ(scene.get("driven.tx"), 2.5);
    {
        const nodes::TimeScope scope(scene, 0.5);
        EXPECT_DOUBLE_EQ(scene.get("driven.tx"), 5);
    }
    EXPECT_DOUBLE_EQ(scene.get("driven.tx"), 2.5);
    // The warp gives ten times the time, so the curve is at its end after a tenth of a second.
    scene.join("warp.o", "curve.i");
    nodes::setCurrentTime(scene, 0.05);
    EXPECT_DOUBLE_EQ(scene.get("driven.tx"), 5);
    scene.join("time1.outTime", "warp.i");
    nodes::setCurrentTime(scene, 0.075);
    EXPECT_DOUBLE_EQ(scene.get("driven.tx"), 7.5);
    // A key that is driven itself.
    scene.set("driven.ty", 20);
    scene.join("driven.ty", "curve.ktv[1].kv");
    EXPECT_DOUBLE_EQ(scene.get("driven.tx"), 15);
}

TEST(AnimCurve, TakesTangentsOfTheCurveWhereAKeyHasNone) {
    Scene scene;
    scene.make("animCurveUU", "curve");
    for (const auto& [plug, value] : std::vector<std::pair<const char*, double>>{{"ktv[3].kt", 0},
                                                                                 {"ktv[3].kv", 0},
                                                                                 {"ktv[7].kt", 1},
                                                                                 {"ktv[7].kv", 1},
                                                                                 {"ktv[8].kt", 2},
                                                                                 {"ktv[8].kv", 5},
                                                                                 {"kot[7]", 5},
                                                                                 {"kit[7]", 1},
                                                                                 {"kix[7]", 3},
                                                                                 {"kiy[7]", 6},
                                                                                 {"tan", 2},
                                                                                 {"wgt", 0},
                                                                                 {"pre", 1}})
        scene.set(std::string("curve.") + plug, value);
    // Slopes 1 and 2: 0.5 + (1 - 2) / 8.
    for (const auto& [input, value] : {std::pair(0.5, 0.375), {1.5, 1.0}, {3.0, 5.0}, {-2.0, -2.0}}) {
        scene.set("curve.i", input);
        EXPECT_DOUBLE_EQ(scene.get("curve.o"), value) << input;
    }
    // In a weighted curve (3, 6) is three times the way from the control point, which is then at the first
    // key's time and 1 below it. With the other one at a third: t = s (1 - s)^2 + s^3, v = t - 3 s^2 (1 - s).
    scene.set("curve.wgt", 1);
    scene.set("curve.i", 0.25);
    EXPECT_DOUBLE_EQ(scene.get("curve.o"), -0.125);
}

}  // namespace
