#include <gtest/gtest.h>

#include <random>

#include "geometry/orientation.h"
#include "geometry/quaternion.h"

namespace {

using namespace host::geometry;

constexpr double kDegree = kPi / 180;

/// Random numbers that are the same in every run.
class Draw {
  public:
    double number() { return any_(random_); }
    Vec3 vector() { return {number(), number(), number()}; }
    Vec3 angles() { return vector() * kPi; }

  private:
    std::mt19937 random_{11};
    std::uniform_real_distribution<double> any_{-1.0, 1.0};
};

void expectNear(const Vec3& value, const Vec3& wanted) {
    EXPECT_LT(length(value - wanted), 1e-12) << value.x << ' ' << value.y << ' ' << value.z;
}

TEST(Quaternions, TurnAsTheirMatricesDo) {
    Draw draw;
    for (int round = 0; round < 200; ++round) {
        const Matrix4 first = rotationMatrix(draw.angles());
        const Matrix4 second = rotationMatrix(draw.angles());
        const Quaternion a = quaternionOf(first);
        const Quaternion b = quaternionOf(second);
        EXPECT_TRUE(isEquivalent(toMatrix(a), first, 1e-12));
        EXPECT_TRUE(isEquivalent(toMatrix(b * a), first * second, 1e-12));
        const Vec3 offset = draw.vector();
        const Vec3 point = draw.vector();
        DualQuaternion motion = DualQuaternion::rigid(a, offset);
        motion = {motion.real * -3.0, motion.dual * -3.0};  // the same motion at another length
        expectNear(transformPoint(point, motion), transformPoint(point, first) + offset);
    }
    // Half turns about the axes: the real part, which other rotations are divided by, is 0.
    for (const Vec3& angles : {Vec3{kPi, 0, 0}, Vec3{0, kPi, 0}, Vec3{0, 0, kPi}}) {
        const Matrix4 turn = rotationMatrix(angles);
        EXPECT_TRUE(isEquivalent(toMatrix(quaternionOf(turn)), turn, 1e-12));
    }
}

struct Blend {
    const char* name;
    RotationBlend method;
    std::vector<std::pair<double, double>> turns;  // degrees about z, weight
    double degrees;
    double reference = 0.0;
};

void PrintTo(const Blend& value, std::ostream* stream) {
    *stream << value.name;
}

class Blending : public testing::TestWithParam<Blend> {};

TEST_P(Blending, OfTurnsAboutOneAxis) {
    const auto about = [](double degrees) {
        const double half = degrees * kDegree / 2;
        return Quaternion{0, 0, std::sin(half), std::cos(half)};
    };
    std::vector<WeightedRotation> rotations;
    for (const auto& [degrees, weight] : GetParam().turns)
        rotations.push_back({about(degrees), weight});
    const Quaternion result = blendRotations(rotations, GetParam().method, about(GetParam().reference));
    EXPECT_TRUE(
        isEquivalent(toMatrix(result), rotationMatrix(Vec3{0, 0, GetParam().degrees * kDegree}), 1e-9))
        << 2 * std::atan2(result.z, result.w) / kDegree;
}

// The mean of unit vectors at 0 and 50 degrees with weights 1 and 3 is at atan2(3 sin 50, 1 + 3 cos 50):
// half of the angle.
const double kMean = 2 * std::atan2(3 * std::sin(50 * kDegree), 1 + 3 * std::cos(50 * kDegree)) / kDegree;

INSTANTIATE_TEST_SUITE_P(
    Methods, Blending,
    testing::Values(Blend{"shortest", RotationBlend::Shortest, {{0, 1}, {100, 3}}, 75},
                    Blend{"shortestOfThree", RotationBlend::Shortest, {{10, 1}, {30, 1}, {110, 2}}, 65},
                    Blend{"shortestAcrossTheBack", RotationBlend::Shortest, {{170, 1}, {-150, 1}}, 190},
                    Blend{"longest", RotationBlend::Longest, {{0, 1}, {100, 3}}, -195},
                    Blend{"longestBetweenEqualOnes", RotationBlend::Longest, {{40, 1}, {40, 1}}, 40},
                    Blend{"average", RotationBlend::Average, {{0, 1}, {100, 3}}, kMean},
                    Blend{"averageOfEqualWeights", RotationBlend::Average, {{-20, 1}, {80, 1}}, 30},
                    Blend{"averageAcrossTheBack", RotationBlend::Average, {{0, 1}, {200, 1}}, -80},
                    Blend{"noFlipOnTheReferencesSide", RotationBlend::NoFlip, {{0, 1}, {200, 1}}, 100, 100},
                    Blend{"oneAlone", RotationBlend::NoFlip, {{77, 1}}, 77}),
    [](const auto& parameter) { return parameter.param.name; });

TEST(Aim, PointsExactlyAndKeepsUpAsFarAsItCan) {
    Draw draw;
    for (int round = 0; round < 200; ++round) {
        const Vec3 aim = draw.vector();
        const Vec3 up = draw.vector();
        const Vec3 direction = draw.vector();
        const Vec3 sky = draw.vector();
        const Matrix4 turn = aimRotation(aim, up, direction, sky);
        EXPECT_NEAR(turn.determinant(), 1, 1e-12);
        expectNear(transformVector(normalized(aim), turn), normalized(direction));
        const Vec3 turnedUp = transformVector(up, turn);
        EXPECT_NEAR(dot(turnedUp, normalized(cross(direction, sky))), 0, 1e-12)
            << "in one plane with the sky";
        EXPECT_GT(dot(cross(direction, turnedUp), cross(direction, sky)), 0) << "on its side";
    }
}

TEST(Aim, TakesTheSmallestTurnWithoutAWayUp) {
    const Vec3 x{1, 0, 0};
    const Vec3 y{0, 1, 0};
    for (const Vec3& sky : {Vec3(), Vec3{0, 5, 0}}) {
        const Matrix4 quarter = aimRotation(x, {0, 0, 1}, {0, 2, 0}, sky);
        EXPECT_TRUE(isEquivalent(quarter, rotationMatrix(Vec3{0, 0, kPi / 2}), 1e-12));
    }
    expectNear(transformVector(x, smallestRotation(x, -x)), -x);
    EXPECT_NEAR(smallestRotation(x, -x).determinant(), 1, 1e-12);
    EXPECT_EQ(aimRotation(x, y, {}, y), Matrix4()) << "a target at the same place";
}

}  // namespace
