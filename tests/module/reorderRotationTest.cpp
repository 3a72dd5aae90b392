// dv_reorderRotation against rotation matrices that are made here.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <locale>
#include <sstream>

#include "fixtures.h"

namespace {

using Angles = std::array<double, 3>;
using Matrix = std::array<std::array<double, 3>, 3>;

/// Which axis comes first, second and third, by the code of the order.
constexpr int kAxes[6][3] = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {1, 0, 2}, {2, 1, 0}};

constexpr double kPi = 3.14159265358979323846;
/// The factors of the command: pi/180 and 180/pi in single precision.
constexpr double kIn = 0.01745329238474369;
constexpr double kOut = 57.295780181884766;

/// What the angles, in radians, make of the three base vectors, each turned about one fixed axis after the
/// other.
Matrix rotated(const Angles& angles, int order) {
    Matrix vectors{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    for (auto& vector : vectors) {
        for (const int axis : kAxes[order]) {
            const double angle = angles[static_cast<std::size_t>(axis)];
            double& a = vector[static_cast<std::size_t>((axis + 1) % 3)];
            double& b = vector[static_cast<std::size_t>((axis + 2) % 3)];
            const double turned = a * std::cos(angle) - b * std::sin(angle);
            b = a * std::sin(angle) + b * std::cos(angle);
            a = turned;
        }
    }
    return vectors;
}

class ReorderRotation : public ::testing::Test {
  protected:
    Angles called(const std::string& flags) {
        const std::vector<double> result = scene_.mel("dv_reorderRotation " + flags).toFloatArray();
        EXPECT_EQ(result.size(), 3U);
        return {result.at(0), result.at(1), result.at(2)};
    }

    Angles reorder(const Angles& degrees, int in, int out) {
        std::ostringstream text;
        text.imbue(std::locale::classic());
        text.precision(17);
        text << "-io " << in << " -oo " << out << " -irx " << degrees[0] << " -iry " << degrees[1] << " -irz "
             << degrees[2];
        return called(text.str());
    }

    void expectSameRotation(const Angles& degrees, int in, const Angles& reordered, int out) {
        const Matrix before = rotated({degrees[0] * kIn, degrees[1] * kIn, degrees[2] * kIn}, in);
        const Matrix after = rotated({reordered[0] / kOut, reordered[1] / kOut, reordered[2] / kOut}, out);
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 3; ++column)
                EXPECT_NEAR(after[row][column], before[row][column], 1e-7);
        }
    }

    Scene scene_;
};

TEST_F(ReorderRotation, KeepsTheRotationBetweenAnyTwoOrders) {
    for (int in = 0; in < 6; ++in) {
        for (int out = 0; out < 6; ++out) {
            for (const Angles& degrees :
                 {Angles{30, -50, 75}, Angles{170, 130, -100}, Angles{-400, 12.5, 725}, Angles{90, 90, 90},
                  Angles{20, 90, -35}, Angles{-90, 15, 0}, Angles{0, 0, -90}}) {
                SCOPED_TRACE(::testing::PrintToString(degrees) + ' ' + std::to_string(in) + " to " +
                             std::to_string(out));
                const Angles result = reorder(degrees, in, out);
                expectSameRotation(degrees, in, result, out);
                for (std::size_t k = 0; k < 3 && in == out; ++k)
                    EXPECT_EQ(result[k], degrees[k] * kIn * kOut) << "not even reduced to one turn";
                if (in != out) {
                    EXPECT_LE(std::abs(result[static_cast<std::size_t>(kAxes[out][1])]), 90.0001);
                }
            }
        }
    }
}

TEST_F(ReorderRotation, WorksWithSinglePrecisionFactors) {
    const Angles result = reorder({90, 0, 0}, 0, 0);
    EXPECT_NEAR(result[0], 90.0000003533794, 1e-12);
    EXPECT_NEAR(reorder({0, 60, 0}, 0, 5)[1], 60.0000002355863, 1e-12);
}

/// A quarter turn about the middle axis of the target order leaves one of the other two angles open.
TEST_F(ReorderRotation, AtThePoleTheLastAngleIsNothing) {
    // The order in which the last axis of each order comes first and the others follow.
    constexpr int kTurnedOn[6] = {2, 0, 1, 4, 5, 3};
    for (int out = 0; out < 6; ++out) {
        for (const double quarter : {1.0, -1.0}) {
            const auto first = static_cast<std::size_t>(kAxes[out][0]);
            const auto middle = static_cast<std::size_t>(kAxes[out][1]);
            Angles degrees{};
            degrees[first] = 40;
            degrees[middle] = quarter * kPi / 2 / kIn;
            const Angles result = reorder(degrees, kTurnedOn[out], out);
            EXPECT_EQ(result[static_cast<std::size_t>(kAxes[out][2])], 0.0) << out;
            EXPECT_NEAR(result[first], 40.0, 1e-6) << out;
            EXPECT_NEAR(result[middle], quarter * 90.0, 1e-5) << out;
            expectSameRotation(degrees, kTurnedOn[out], result, out);
        }
    }
}

TEST_F(ReorderRotation, AnyOtherCodeIsXyzAndWhatIsNotGivenIsZero) {
    const Angles degrees{10, 20, 30};
    for (const int code : {-1, 6, 100, -2147483647}) {
        EXPECT_EQ(reorder(degrees, code, 2), reorder(degrees, 0, 2)) << code;
        EXPECT_EQ(reorder(degrees, 2, code), reorder(degrees, 2, 0)) << code;
    }
    EXPECT_EQ(called("-inRotationY 20 -outOrder 4"), (Angles{0.0, 20 * kIn * kOut, 0.0}));
    const std::string angles = "-irx 10 -iry 20 -irz 30 ";
    EXPECT_EQ(called(angles), reorder(degrees, 0, 0));
    EXPECT_EQ(called(angles + "-io 2"), reorder(degrees, 2, 0));
    EXPECT_EQ(called(angles + "-oo 2"), reorder(degrees, 0, 2));
}

}  // namespace
