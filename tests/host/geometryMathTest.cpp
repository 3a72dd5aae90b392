#include <gtest/gtest.h>

#include <random>

#include "geometry/math.h"

namespace {

using namespace host::geometry;

constexpr RotateOrder kOrders[] = {RotateOrder::Xyz, RotateOrder::Yzx, RotateOrder::Zxy,
                                   RotateOrder::Xzy, RotateOrder::Yxz, RotateOrder::Zyx};

void expectNear(const Vec3& a, const Vec3& b, double tolerance = 1e-12) {
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(a[i], b[i], tolerance) << "axis " << i;
}

class RotateOrderTest : public testing::TestWithParam<RotateOrder> {
  protected:
    /// Numbers that are the same on every run.
    double random(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }
    Vec3 randomVector(double low, double high) {
        return {random(low, high), random(low, high), random(low, high)};
    }

  private:
    std::mt19937 engine_{11};
};

INSTANTIATE_TEST_SUITE_P(Orders, RotateOrderTest, testing::ValuesIn(kOrders));

TEST(Math, quarterTurnsFollowTheRowVectorConvention) {
    const double quarter = kPi / 2;
    expectNear(transformPoint({0, 1, 0}, rotationMatrix({quarter, 0, 0})), {0, 0, 1});
    expectNear(transformPoint({0, 0, 1}, rotationMatrix({0, quarter, 0})), {1, 0, 0});
    expectNear(transformPoint({1, 0, 0}, rotationMatrix({0, 0, quarter})), {0, 1, 0});
    // x turns first in xyz and last in zyx.
    expectNear(transformPoint({0, 1, 0}, rotationMatrix({quarter, quarter, 0}, RotateOrder::Xyz)), {1, 0, 0});
    expectNear(transformPoint({0, 1, 0}, rotationMatrix({quarter, quarter, 0}, RotateOrder::Zyx)), {0, 0, 1});
}

TEST_P(RotateOrderTest, ordersNameTheAxesInTheOrderOfTurning) {
    static const char* const kNames[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};
    const Vec3 angles{0.3, -1.1, 2.0};
    Matrix4 expected;
    for (const char* axis = kNames[static_cast<int>(GetParam())]; *axis != '\0'; ++axis) {
        Vec3 single;
        single[*axis - 'x'] = angles[*axis - 'x'];
        expected = expected * rotationMatrix(single);
    }
    EXPECT_TRUE(isEquivalent(rotationMatrix(angles, GetParam()), expected, 1e-15));
}

TEST_P(RotateOrderTest, anglesOfAMatrixGiveTheMatrixBack) {
    for (int i = 0; i < 200; ++i) {
        const Matrix4 matrix = rotationMatrix(randomVector(-7, 7), GetParam());
        const Vec3 angles = eulerAngles(matrix, GetParam());
        EXPECT_TRUE(isEquivalent(rotationMatrix(angles, GetParam()), matrix, 1e-12));
        EXPECT_TRUE(
            isEquivalent(rotationMatrix(alternateAngles(angles, GetParam()), GetParam()), matrix, 1e-12));
        expectNear(alternateAngles(alternateAngles(angles, GetParam()), GetParam()), angles);
    }
}

TEST_P(RotateOrderTest, theMiddleAngleStaysWithinAQuarterTurnAndPolesKeepTheRotation) {
    static const int kMiddle[] = {1, 2, 0, 2, 0, 1};
    const int middle = kMiddle[static_cast<int>(GetParam())];
    for (double pole : {-kPi / 2, kPi / 2}) {
        Vec3 angles{0.4, 0.7, -0.9};
        angles[middle] = pole;
        const Matrix4 matrix = rotationMatrix(angles, GetParam());
        const Vec3 found = eulerAngles(matrix, GetParam());
        EXPECT_NEAR(found[middle], pole, 1e-7);
        EXPECT_TRUE(isEquivalent(rotationMatrix(found, GetParam()), matrix, 1e-9));
    }
    for (int i = 0; i < 50; ++i) {
        const Vec3 angles = eulerAngles(rotationMatrix(randomVector(-7, 7)), GetParam());
        EXPECT_LE(std::abs(angles[middle]), kPi / 2);
    }
}

TEST_P(RotateOrderTest, reorderedAnglesAreTheSameRotation) {
    const Vec3 angles{2.5, -4.0, 1.0};
    for (RotateOrder to : kOrders) {
        const Vec3 found = reorderAngles(angles, GetParam(), to);
        EXPECT_TRUE(isEquivalent(rotationMatrix(found, to), rotationMatrix(angles, GetParam()), 1e-12));
        if (to == GetParam()) {
            EXPECT_EQ(found, angles);
        }
    }
}

TEST_P(RotateOrderTest, decomposedTransformsComposeAgain) {
    for (int i = 0; i < 100; ++i) {
        TransformParts parts;
        parts.translate = randomVector(-100, 100);
        parts.rotate = randomVector(-1.5, 1.5);
        parts.scale = randomVector(0.1, 4);
        parts.shear = randomVector(-2, 2);
        parts.rotateOrder = GetParam();
        const TransformParts found = decomposeTransform(composeTransform(parts), GetParam());
        expectNear(found.translate, parts.translate);
        expectNear(found.scale, parts.scale, 1e-11);
        expectNear(found.shear, parts.shear, 1e-10);
        EXPECT_TRUE(isEquivalent(rotationMatrix(found.rotate, GetParam()),
                                 rotationMatrix(parts.rotate, GetParam()), 1e-10));
    }
}

TEST(Math, mirroredAndFlattenedMatricesDecomposeToWhatTheyAre) {
    const Matrix4 turned = rotationMatrix({0.3, 0.5, -0.7}) * Matrix4::translation({1, 2, 3});
    for (const Vec3& scale : {Vec3{-1, 1, 1}, Vec3{2, -3, 4}, Vec3{-1, -1, -1}, Vec3{0, 2, 3}, Vec3{1, 0, 0},
                              Vec3{0, 0, 5}, Vec3{0, 0, 0}}) {
        const Matrix4 matrix = Matrix4::scaling(scale) * turned;
        EXPECT_TRUE(isEquivalent(composeTransform(decomposeTransform(matrix)), matrix, 1e-12));
    }
}

TEST(Math, pivotsStayWhereTheyAre) {
    TransformParts parts;
    parts.translate = {10, 0, 0};
    parts.rotate = {0.2, 0.9, -0.4};
    parts.rotateAxis = {0.5, 0, 0.1};
    parts.scale = {2, 3, 4};
    parts.shear = {0.5, 0.25, -1};
    parts.scalePivot = parts.rotatePivot = {1, -2, 5};
    expectNear(transformPoint({1, -2, 5}, composeTransform(parts)), {11, -2, 5});
    parts.scalePivotTranslate = {0, 0.5, 0};
    parts.rotatePivotTranslate = {0, 0, 0.25};
    parts.rotate = parts.rotateAxis = {};
    expectNear(transformPoint({1, -2, 5}, composeTransform(parts)), {11, -1.5, 5.25});
}

TEST(Math, shearMovesLaterAxesAlongEarlierOnes) {
    TransformParts parts;
    parts.shear = {2, 3, 5};
    const Matrix4 matrix = composeTransform(parts);
    expectNear(transformPoint({0, 1, 0}, matrix), {2, 1, 0});
    expectNear(transformPoint({0, 0, 1}, matrix), {3, 5, 1});
}

TEST(Math, jointOrientTurnsAfterRotateAndParentScaleIsDividedOutLast) {
    TransformParts parts;
    parts.rotate = {kPi / 2, 0, 0};
    parts.jointOrient = {0, kPi / 2, 0};
    parts.inverseParentScale = {0.5, 1, 1};
    parts.translate = {7, 0, 0};
    expectNear(transformPoint({0, 1, 0}, composeTransform(parts)), {7.5, 0, 0});
}

TEST(Math, inverseUndoesAndSingularMatricesAreReported) {
    Matrix4 matrix = Matrix4::shearing({0.5, 1, 2}) * rotationMatrix({1, 2, 3}) *
                     Matrix4::scaling({2, 0.5, 9}) * Matrix4::translation({4, 5, 6});
    matrix.m[0][3] = 0.25;
    const InverseMatrix inverse = matrix.inverse();
    ASSERT_TRUE(inverse.ok);
    EXPECT_TRUE(isEquivalent(matrix * inverse.matrix, Matrix4()));
    EXPECT_NEAR(matrix.determinant() * inverse.matrix.determinant(), 1.0, 1e-12);
    EXPECT_NEAR((matrix * matrix.transposed()).determinant(), matrix.determinant() * matrix.determinant(),
                1e-9);

    for (const Matrix4& singular : {Matrix4::scaling({1, 0, 1}), Matrix4::scaling({1, NAN, 1})}) {
        const InverseMatrix none = singular.inverse();
        EXPECT_FALSE(none.ok);
        EXPECT_EQ(none.matrix, Matrix4());
    }
    EXPECT_EQ(Matrix4::scaling({2, 3, 4}).determinant(), 24.0);
}

TEST(Math, normalizingSurvivesExtremeLengths) {
    expectNear(normalized({3e-200, 0, 4e-200}), {0.6, 0, 0.8});
    expectNear(normalized({0, 3e200, 4e200}), {0, 0.6, 0.8});
    EXPECT_EQ(normalized({}), Vec3());
}

TEST(Math, boundingBoxGrowsFromNothing) {
    BoundingBox box;
    EXPECT_FALSE(box.contains({}));
    box.expand(BoundingBox());
    EXPECT_TRUE(box.empty);
    box.expand(Vec3{1, 2, 3});
    box.expand(Vec3{-1, 4, 3});
    EXPECT_TRUE(box.contains({0, 2, 3}));
    EXPECT_FALSE(box.contains({0, 2, 3.0001}));
    EXPECT_FALSE(box.contains({0, 0, 3}));
    EXPECT_EQ(box.center(), (Vec3{0, 3, 3}));
    const BoundingBox turned = box.transformed(rotationMatrix({0, 0, kPi / 2}));
    expectNear(turned.min, {-4, -1, 3});
    expectNear(turned.max, {-2, 1, 3});
}

}  // namespace
