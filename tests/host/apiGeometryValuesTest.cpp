#include <gtest/gtest.h>
#include <maya/MBoundingBox.h>
#include <maya/MColor.h>
#include <maya/MEulerRotation.h>
#include <maya/MFloatMatrix.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MQuaternion.h>
#include <maya/MVector.h>

#include <cmath>
#include <random>
#include <sstream>

namespace {

constexpr double kHalfPi = 1.5707963267948966;

MMatrix matrixOf(const double (&rows)[4][4]) {
    return MMatrix(rows);
}

MMatrix translationBy(double x, double y, double z) {
    MMatrix result;
    result[3][0] = x;
    result[3][1] = y;
    result[3][2] = z;
    return result;
}

/// Random, well away from singular, with a projective part.
MMatrix randomMatrix(std::mt19937& random) {
    std::uniform_real_distribution<double> number(-1.0, 1.0);
    MMatrix result;
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column) {
            result[row][column] = number(random) + (row == column ? 4.0 : 0.0);
        }
    }
    return result;
}

template <typename Point>
class MPoints : public testing::Test {};
using PointTypes = testing::Types<MPoint, MFloatPoint>;
TYPED_TEST_SUITE(MPoints, PointTypes, );

TYPED_TEST(MPoints, liesAtTheOriginByDefault) {
    const TypeParam point;
    EXPECT_TRUE(point == TypeParam::origin);
    EXPECT_TRUE(point == TypeParam(0, 0, 0, 1));
    EXPECT_TRUE(TypeParam(3, 4) == TypeParam(3, 4, 0, 1));
}

TYPED_TEST(MPoints, elementsCountFromXToW) {
    TypeParam point(1, 2, 3, 4);
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(point[i], i + 1);
        EXPECT_EQ(point(i), i + 1);
        point[i] += 10;
        point(i) += 10;
    }
    EXPECT_TRUE(point == TypeParam(21, 22, 23, 24));
    double doubles[4] = {};
    float floats[4] = {};
    point.get(doubles);
    point.get(floats);
    EXPECT_TRUE(TypeParam(doubles) == point);
    EXPECT_TRUE(TypeParam(floats) == point);
}

TYPED_TEST(MPoints, exactComparisonSeesWAndEquivalenceSeesThePlace) {
    const TypeParam point(1, 2, 3);
    const TypeParam same(2, 4, 6, 2);
    EXPECT_TRUE(point != same);
    EXPECT_TRUE(point.isEquivalent(same));
    EXPECT_EQ(point.distanceTo(same), 0);
}

TYPED_TEST(MPoints, differencesAreCartesianAndSumsKeepW) {
    const auto difference = TypeParam(2, 4, 6, 2) - TypeParam(1, 1, 1);
    EXPECT_EQ(difference.x, 0);
    EXPECT_EQ(difference.y, 1);
    EXPECT_EQ(difference.z, 2);
    TypeParam moved(1, 2, 3, 2);
    moved += difference;
    EXPECT_TRUE(moved == TypeParam(1, 3, 5, 2));
    moved -= difference;
    EXPECT_TRUE(moved == TypeParam(1, 2, 3, 2));
    EXPECT_TRUE(moved + difference - difference == moved);
    EXPECT_TRUE(moved * 2 == TypeParam(2, 4, 6, 2));
    EXPECT_TRUE(2 * moved / 2 == moved);
}

TYPED_TEST(MPoints, homogeneousFormsChangeTheWayOfWritingOnly) {
    TypeParam point(2, 4, 6, 2);
    EXPECT_EQ(&point.cartesianize(), &point);
    EXPECT_TRUE(point == TypeParam(1, 2, 3, 1));
    point = TypeParam(2, 4, 6, 2);
    EXPECT_EQ(&point.rationalize(), &point);
    EXPECT_TRUE(point == TypeParam(1, 2, 3, 2));
    EXPECT_EQ(&point.homogenize(), &point);
    EXPECT_TRUE(point == TypeParam(2, 4, 6, 2));
    TypeParam atInfinity(1, 2, 3, 0);
    EXPECT_TRUE(atInfinity.cartesianize().rationalize() == TypeParam(1, 2, 3, 0));
}

TEST(MPoint, equivalenceIsByDistance) {
    const MPoint point(1, 1, 1);
    EXPECT_TRUE(point.isEquivalent(MPoint(1.5, 1, 1), 0.5)) << "the tolerance itself is near enough";
    EXPECT_FALSE(point.isEquivalent(MPoint(1.5, 1, 1), 0.49));
    EXPECT_FALSE(point.isEquivalent(MPoint(1.4, 1.4, 1), 0.5))
        << "each coordinate is within it, the distance is not";
    EXPECT_TRUE(point.isEquivalent(MPoint(1 + 1e-11, 1, 1)));
    EXPECT_FALSE(point.isEquivalent(MPoint(1 + 1e-9, 1, 1)));
    EXPECT_FALSE(point.isEquivalent(MPoint(std::nan(""), 1, 1), 1e9));
}

TEST(MPoint, isARowVector) {
    const MMatrix move = translationBy(10, 20, 30);
    EXPECT_TRUE(MPoint(1, 2, 3) * move == MPoint(11, 22, 33));
    EXPECT_TRUE(MPoint(1, 2, 3, 0) * move == MPoint(1, 2, 3, 0));
    MPoint moved(1, 2, 3);
    moved *= move;
    EXPECT_TRUE(moved == MPoint(11, 22, 33));
    EXPECT_TRUE(move * MPoint(1, 2, 3) == MPoint(1, 2, 3, 141)) << "on the right it is a column";
}

TEST(MPoint, isRoundedToSinglePrecisionAndBack) {
    const MPoint point(0.1, 0.2, 0.3, 0.4);
    const MFloatPoint rounded(point);
    EXPECT_EQ(rounded.x, 0.1f);
    EXPECT_EQ(rounded.w, 0.4f);
    EXPECT_TRUE(MPoint(rounded) != point);
    EXPECT_TRUE(MFloatPoint(MPoint(rounded)) == rounded);
}

template <typename Vector>
class MVectors : public testing::Test {};
using VectorTypes = testing::Types<MVector, MFloatVector>;
TYPED_TEST_SUITE(MVectors, VectorTypes, );

TYPED_TEST(MVectors, computeAsVectorsDo) {
    TypeParam v(1, 2, 3);
    const TypeParam w(4, -5, 6);
    EXPECT_TRUE(v + w == TypeParam(5, -3, 9));
    EXPECT_TRUE(v - w == TypeParam(-3, 7, -3));
    EXPECT_TRUE(-v == TypeParam(-1, -2, -3));
    EXPECT_TRUE(v * 2 == TypeParam(2, 4, 6));
    EXPECT_TRUE(2 * v / 2 == v);
    EXPECT_EQ(v * w, 12);
    EXPECT_TRUE((v ^ w) == TypeParam(27, 6, -13));
    EXPECT_TRUE((TypeParam::xAxis ^ TypeParam::yAxis) == TypeParam::zAxis);
    v += w;
    v -= TypeParam::one;
    v *= 4;
    v /= 2;
    EXPECT_TRUE(v == TypeParam(8, -8, 16));
}

TYPED_TEST(MVectors, elementsCountFromXToZ) {
    TypeParam v(5, 6, 7);
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(v[i], 5 + i);
        v(i) += 1;
    }
    std::remove_reference_t<decltype(v.x)> elements[3] = {};
    v.get(elements);
    EXPECT_TRUE(TypeParam(elements) == TypeParam(6, 7, 8));
}

TYPED_TEST(MVectors, haveLengthDirectionAndAngle) {
    TypeParam v(0, 3, 4);
    EXPECT_EQ(v.length(), 5);
    EXPECT_NEAR(v.normal().length(), 1, 1e-6);
    EXPECT_EQ(v.normalize(), MS::kSuccess);
    EXPECT_TRUE(v.isEquivalent(TypeParam(0, 3, 4) / 5));
    EXPECT_TRUE(TypeParam::zero.normal() == TypeParam::zero);
    EXPECT_NEAR(TypeParam::xAxis.angle(TypeParam(0, 7, 0)), kHalfPi, 1e-6);
    EXPECT_NEAR(TypeParam(2, 2, 2).angle(TypeParam(-1, -1, -1)), 2 * kHalfPi, 1e-6);
    EXPECT_EQ(TypeParam::xAxis.angle(TypeParam::zero), 0);
    EXPECT_TRUE(TypeParam::xAxis.isParallel(TypeParam(-3, 0, 0)));
    EXPECT_FALSE(TypeParam::xAxis.isParallel(TypeParam(1, 0.1f, 0)));
    EXPECT_FALSE(TypeParam::xAxis.isEquivalent(TypeParam::xNegAxis));
}

TEST(MVector, smallAnglesAreExact) {
    EXPECT_NEAR(MVector::xAxis.angle(MVector(1, 1e-9, 0)), 1e-9, 1e-20);
}

TEST(MVector, isTurnedAndScaledButNotMoved) {
    const double rows[4][4] = {{0, 2, 0, 0}, {-2, 0, 0, 0}, {0, 0, 2, 0}, {5, 6, 7, 1}};
    const MMatrix matrix = matrixOf(rows);
    MVector v = MVector::xAxis * matrix;
    EXPECT_TRUE(v == MVector(0, 2, 0));
    v *= matrix;
    EXPECT_TRUE(v == MVector(-4, 0, 0));
    EXPECT_TRUE(matrix * MVector::xAxis == MVector(0, -2, 0)) << "on the right it is a column";
}

TEST(MVector, normalsStayPerpendicularToTheTransformedSurface) {
    const double rows[4][4] = {{3, 0, 0, 0}, {0.5, 1, 0, 0}, {0, 0.25, 2, 0}, {1, 2, 3, 1}};
    const MMatrix matrix = matrixOf(rows);
    const MVector normal(1, 2, 3);
    const MVector along = normal ^ MVector::xAxis;
    EXPECT_NEAR(normal.transformAsNormal(matrix) * (along * matrix), 0, 1e-12);
}

TEST(MVector, rotatesTheSameByEveryDescription) {
    const MVector v(1, 2, 3);
    const double angles[3] = {0, 0, kHalfPi};
    const MVector expected(-2, 1, 3);
    EXPECT_TRUE(v.rotateBy(MVector::kZaxis, kHalfPi).isEquivalent(expected));
    EXPECT_TRUE(v.rotateBy(angles, MTransformationMatrix::kXYZ).isEquivalent(expected));
    EXPECT_TRUE(v.rotateBy(MEulerRotation(0, 0, kHalfPi)).isEquivalent(expected));
    EXPECT_TRUE(v.rotateBy(MQuaternion(kHalfPi, MVector::zAxis)).isEquivalent(expected));
    EXPECT_TRUE(v.rotateBy(0, 0, std::sqrt(0.5), std::sqrt(0.5)).isEquivalent(expected));
    EXPECT_TRUE(v.rotateBy(v.rotateTo(MVector(3, -1, 2))).isParallel(MVector(3, -1, 2)));
}

TEST(MVector, rotatesInTheOrderOfTheTransformationMatrix) {
    const double angles[3] = {kHalfPi, kHalfPi, 0};
    EXPECT_TRUE(MVector::yAxis.rotateBy(angles, MTransformationMatrix::kXYZ).isEquivalent(MVector::xAxis));
    EXPECT_TRUE(MVector::yAxis.rotateBy(angles, MTransformationMatrix::kZYX).isEquivalent(MVector::zAxis));
}

TEST(MMatrix, isTheIdentityByDefault) {
    EXPECT_TRUE(MMatrix() == MMatrix::identity);
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column) {
            EXPECT_EQ(MMatrix()(row, column), row == column ? 1.0 : 0.0);
        }
    }
    MMatrix matrix = translationBy(1, 2, 3);
    EXPECT_TRUE(matrix.setToIdentity() == MMatrix::identity);
}

TEST(MMatrix, productAppliesTheLeftSideFirst) {
    const double scaleRows[4][4] = {{2, 0, 0, 0}, {0, 2, 0, 0}, {0, 0, 2, 0}, {0, 0, 0, 1}};
    const MMatrix scale = matrixOf(scaleRows);
    const MMatrix move = translationBy(1, 0, 0);
    EXPECT_TRUE(MPoint(1, 1, 1) * (scale * move) == MPoint(3, 2, 2));
    EXPECT_TRUE(MPoint(1, 1, 1) * (move * scale) == MPoint(4, 2, 2));
    MMatrix product;
    EXPECT_TRUE(product.setToProduct(scale, move) == scale * move);
    product = scale;
    product *= move;
    EXPECT_TRUE(product == scale * move);
    EXPECT_TRUE(product.setToProduct(product, product) == scale * move * scale * move)
        << "operands may be the target";
}

TEST(MMatrix, algebraHoldsForRandomMatrices) {
    std::mt19937 random(3);
    for (int i = 0; i < 50; ++i) {
        const MMatrix a = randomMatrix(random);
        const MMatrix b = randomMatrix(random);
        EXPECT_TRUE((a * a.inverse()).isEquivalent(MMatrix::identity, 1e-12));
        EXPECT_TRUE((a.inverse() * a).isEquivalent(MMatrix::identity, 1e-12));
        EXPECT_TRUE((a * b).inverse().isEquivalent(b.inverse() * a.inverse(), 1e-12));
        EXPECT_TRUE((a * b).transpose().isEquivalent(b.transpose() * a.transpose(), 1e-12));
        EXPECT_NEAR((a * b).det4x4() / (a.det4x4() * b.det4x4()), 1.0, 1e-12);
        EXPECT_TRUE(a.adjoint().isEquivalent(a.inverse() * a.det4x4(), 1e-9));
        EXPECT_TRUE((a + b - b).isEquivalent(a, 1e-12));
        EXPECT_TRUE((2.0 * a).isEquivalent(a + a, 1e-12));
        EXPECT_FALSE(a.isSingular());
        EXPECT_NEAR(a.homogenize()[3][3], 1.0, 1e-15);
    }
}

TEST(MMatrix, compoundAssignmentDoesWhatTheOperatorDoes) {
    std::mt19937 random(5);
    const MMatrix a = randomMatrix(random);
    const MMatrix b = randomMatrix(random);
    MMatrix c = a;
    c += b;
    EXPECT_TRUE(c == a + b);
    c -= b;
    EXPECT_TRUE(c.isEquivalent(a));
    c *= 0.5;
    EXPECT_TRUE(c.isEquivalent(a * 0.5));
}

TEST(MMatrix, determinantsOfKnownMatrices) {
    const double rows[4][4] = {{2, 0, 0, 7}, {0, 3, 0, 0}, {0, 0, -4, 0}, {1, 0, 0, 5}};
    EXPECT_DOUBLE_EQ(matrixOf(rows).det3x3(), -24.0);
    EXPECT_DOUBLE_EQ(matrixOf(rows).det4x4(), -36.0);
    EXPECT_DOUBLE_EQ(MMatrix::identity.det4x4(), 1.0);
}

TEST(MMatrix, singularOneHasNoInverseButAnAdjoint) {
    const double rows[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 1}};
    const MMatrix flat = matrixOf(rows);
    EXPECT_TRUE(flat.isSingular());
    EXPECT_TRUE(flat.inverse() == MMatrix::identity);
    EXPECT_EQ(flat.adjoint()[2][2], 1.0);
    EXPECT_TRUE((flat * flat.adjoint()).isEquivalent(MMatrix() * 0.0));
}

TEST(MMatrix, copiesElementsInBothPrecisions) {
    std::mt19937 random(11);
    const MMatrix matrix = randomMatrix(random);
    double doubles[4][4];
    float floats[4][4];
    matrix.get(doubles);
    matrix.get(floats);
    EXPECT_TRUE(MMatrix(doubles) == matrix);
    EXPECT_TRUE(MMatrix(floats).isEquivalent(matrix, 1e-6));
    EXPECT_EQ(doubles[1][2], matrix[1][2]);
    EXPECT_EQ(matrix.matrix[1][2], matrix(1, 2));
    MMatrix changed = matrix;
    changed(0, 3) += 1e-8;
    EXPECT_FALSE(changed == matrix);
    EXPECT_FALSE(changed.isEquivalent(matrix));
    EXPECT_TRUE(changed.isEquivalent(matrix, 1e-7));
    changed(0, 3) = std::nan("");
    EXPECT_FALSE(changed == changed);
}

TEST(MFloatMatrix, computesLikeTheDoubleOne) {
    std::mt19937 random(13);
    for (int i = 0; i < 20; ++i) {
        const MMatrix exact = randomMatrix(random);
        const MMatrix other = randomMatrix(random);
        const MFloatMatrix a(exact.matrix);
        const MFloatMatrix b(other.matrix);
        EXPECT_TRUE((a * b).isEquivalent(MFloatMatrix((exact * other).matrix), 1e-4f));
        EXPECT_TRUE(a.inverse().isEquivalent(MFloatMatrix(exact.inverse().matrix), 1e-5f));
        EXPECT_TRUE(a.transpose() == MFloatMatrix(exact.transpose().matrix));
        EXPECT_TRUE((a - b + b).isEquivalent(a, 1e-5f));
        EXPECT_NEAR(a.det4x4() / exact.det4x4(), 1.0, 1e-5);
        EXPECT_NEAR(a.det3x3() / exact.det3x3(), 1.0, 1e-5);
        const MFloatPoint moved = MFloatPoint(1, 2, 3) * a;
        EXPECT_LT(moved.distanceTo(MFloatPoint(MPoint(1, 2, 3) * exact)), 1e-4f);
    }
}

TEST(MBoundingBox, emptyOneLiesAtTheOriginAndHoldsNothing) {
    MBoundingBox box;
    EXPECT_TRUE(box.min() == MPoint::origin);
    EXPECT_TRUE(box.max() == MPoint::origin);
    EXPECT_FALSE(box.contains(MPoint::origin));
    EXPECT_FALSE(box.intersects(MBoundingBox(MPoint(-1, -1, -1), MPoint(1, 1, 1))));
    box.expand(MBoundingBox());
    EXPECT_FALSE(box.contains(MPoint::origin));
    box.expand(MPoint(1, 2, 3));
    EXPECT_TRUE(box.min() == MPoint(1, 2, 3)) << "the origin was no part of it";
    box.clear();
    EXPECT_FALSE(box.contains(MPoint(1, 2, 3)));
}

TEST(MBoundingBox, growsToHoldPointsAndBoxes) {
    MBoundingBox box;
    box.expand(MPoint(1, 1, 1));
    box.expand(MPoint(0, 3, 1));
    box.expand(MBoundingBox(MPoint(0.5, 0, 4), MPoint(0.6, 1, 5)));
    EXPECT_TRUE(box.min() == MPoint(0, 0, 1));
    EXPECT_TRUE(box.max() == MPoint(1, 3, 5));
}

TEST(MColor, isOpaqueBlackByDefaultAndKeepsAlphaInArithmetic) {
    EXPECT_TRUE(MColor() == MColor::kOpaqueBlack);
    EXPECT_TRUE(MColor(0.5f, 0.25f) == MColor(0.5f, 0.25f, 0, 1));
    MColor color(0.25f, 0.5f, 0.75f, 0.5f);
    EXPECT_TRUE(color * 2 == MColor(0.5f, 1.0f, 1.5f, 0.5f));
    EXPECT_TRUE(color + color - color == color);
    color /= 2;
    color *= 4;
    color += MColor(1, 1, 1, 1);
    EXPECT_TRUE(color == MColor(1.5f, 2.0f, 2.5f, 0.5f));
    EXPECT_TRUE(color != MColor(1.5f, 2.0f, 2.5f, 0.25f));
    float elements[3] = {};
    EXPECT_TRUE(color.get(elements));
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(elements[i], color[i]);
    }
}

TEST(GeometryValues, writeTheirNumbersInBrackets) {
    std::ostringstream out;
    out << MPoint(1, 2, 3) << MFloatPoint(1, 2, 3) << MVector(1, 2, 3) << MFloatVector(1, 2, 3)
        << MColor(1, 0, 0);
    EXPECT_EQ(out.str(), "[1, 2, 3, 1][1, 2, 3, 1][1, 2, 3][1, 2, 3](1, 0, 0, 1)");
    out.str("");
    out << translationBy(5, 6, 7);
    EXPECT_EQ(out.str(), "[[1, 0, 0, 0], [0, 1, 0, 0], [0, 0, 1, 0], [5, 6, 7, 1]]");
}

}  // namespace
