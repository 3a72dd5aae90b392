#include <gtest/gtest.h>
#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MQuaternion.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kHalfPi = kPi / 2.0;

/// Axes in the order in which they turn.
struct Order {
    MEulerRotation::RotationOrder euler;
    MTransformationMatrix::RotationOrder matrix;
    int axes[3];
};

const std::vector<Order>& orders() {
    static const std::vector<Order> all = {{MEulerRotation::kXYZ, MTransformationMatrix::kXYZ, {0, 1, 2}},
                                           {MEulerRotation::kYZX, MTransformationMatrix::kYZX, {1, 2, 0}},
                                           {MEulerRotation::kZXY, MTransformationMatrix::kZXY, {2, 0, 1}},
                                           {MEulerRotation::kXZY, MTransformationMatrix::kXZY, {0, 2, 1}},
                                           {MEulerRotation::kYXZ, MTransformationMatrix::kYXZ, {1, 0, 2}},
                                           {MEulerRotation::kZYX, MTransformationMatrix::kZYX, {2, 1, 0}}};
    return all;
}

/// Rotation about one axis, written down from the convention of row vectors.
MMatrix aboutAxis(int axis, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double rows[3][4][4] = {{{1, 0, 0, 0}, {0, c, s, 0}, {0, -s, c, 0}, {0, 0, 0, 1}},
                                  {{c, 0, -s, 0}, {0, 1, 0, 0}, {s, 0, c, 0}, {0, 0, 0, 1}},
                                  {{c, s, 0, 0}, {-s, c, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    return MMatrix(rows[axis]);
}

MMatrix expectedMatrix(const double (&angles)[3], const Order& order) {
    return aboutAxis(order.axes[0], angles[order.axes[0]]) * aboutAxis(order.axes[1], angles[order.axes[1]]) *
           aboutAxis(order.axes[2], angles[order.axes[2]]);
}

class Rotations : public testing::TestWithParam<Order> {
  protected:
    double angle(double limit = 2.0 * kPi) {
        return std::uniform_real_distribution<double>(-limit, limit)(random_);
    }
    MEulerRotation rotation(double limit = 2.0 * kPi) {
        return MEulerRotation(angle(limit), angle(limit), angle(limit), GetParam().euler);
    }
    unsigned int middleAxis() const { return static_cast<unsigned int>(GetParam().axes[1]); }

  private:
    std::mt19937 random_{17};
};

std::string orderName(const testing::TestParamInfo<Order>& info) {
    std::string name;
    for (const int axis : info.param.axes) {
        name += static_cast<char>('x' + axis);
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Orders, Rotations, testing::ValuesIn(orders()), orderName);

TEST_P(Rotations, numbersOfTheTwoEnumerationsDifferByOne) {
    const auto index = std::distance(
        orders().begin(), std::find_if(orders().begin(), orders().end(),
                                       [](const Order& o) { return o.euler == GetParam().euler; }));
    EXPECT_EQ(static_cast<int>(GetParam().euler), index);
    EXPECT_EQ(static_cast<int>(GetParam().matrix), index + 1);
}

TEST_P(Rotations, matrixTurnsAboutTheAxesInTheirOrder) {
    for (int i = 0; i < 50; ++i) {
        const MEulerRotation turned = rotation();
        const double angles[3] = {turned.x, turned.y, turned.z};
        const MMatrix expected = expectedMatrix(angles, GetParam());
        EXPECT_TRUE(turned.asMatrix().isEquivalent(expected, 1e-12));
        MTransformationMatrix transform;
        EXPECT_EQ(transform.setRotation(angles, GetParam().matrix), MS::kSuccess);
        EXPECT_TRUE(transform.asMatrix().isEquivalent(expected, 1e-12));
        EXPECT_TRUE(transform.asRotateMatrix().isEquivalent(expected, 1e-12));
    }
}

TEST_P(Rotations, reorderingKeepsTheRotationAndBoundsTheMiddleAngle) {
    for (const Order& target : orders()) {
        for (int i = 0; i < 50; ++i) {
            const MEulerRotation original = rotation();
            MEulerRotation reordered = original;
            reordered.reorderIt(target.euler);
            EXPECT_TRUE(reordered == original.reorder(target.euler));
            EXPECT_EQ(reordered.order, target.euler);
            EXPECT_TRUE(reordered.asMatrix().isEquivalent(original.asMatrix(), 1e-12));
            if (target.euler == original.order) {
                EXPECT_TRUE(reordered == original) << "the same order leaves the angles alone";
            } else {
                EXPECT_LE(std::abs(reordered[static_cast<unsigned int>(target.axes[1])]), kHalfPi + 1e-12);
            }
        }
    }
}

TEST_P(Rotations, poleKeepsTheRotationAlthoughTheAnglesAreNotUnique) {
    for (const double pole : {kHalfPi, -kHalfPi}) {
        for (int i = 0; i < 20; ++i) {
            MEulerRotation original = rotation();
            original[middleAxis()] = pole;
            const MEulerRotation read = MEulerRotation::decompose(original.asMatrix(), GetParam().euler);
            EXPECT_TRUE(read.asMatrix().isEquivalent(original.asMatrix(), 1e-7));
            EXPECT_NEAR(read[middleAxis()], pole, 1e-7);
            EXPECT_EQ(read[static_cast<unsigned int>(GetParam().axes[2])], 0.0);
            for (const Order& target : orders()) {
                const MEulerRotation there = original.reorder(target.euler);
                EXPECT_TRUE(there.asMatrix().isEquivalent(original.asMatrix(), 1e-7));
            }
        }
    }
}

TEST_P(Rotations, decompositionIgnoresScaleAndTranslation) {
    for (int i = 0; i < 20; ++i) {
        MEulerRotation original = rotation(kPi);
        original[middleAxis()] /= 2.0;
        MTransformationMatrix transform;
        transform.rotateTo(original);
        const double scale[3] = {2.0, 0.5, 3.0};
        transform.setScale(scale, MSpace::kTransform);
        transform.setTranslation(MVector(4, 5, 6), MSpace::kTransform);
        EXPECT_TRUE(
            MEulerRotation::decompose(transform.asMatrix(), GetParam().euler).isEquivalent(original, 1e-9));
        MEulerRotation assigned(0, 0, 0, GetParam().euler);
        assigned = transform.asMatrix();
        EXPECT_TRUE(assigned.isEquivalent(original, 1e-9)) << "assignment keeps the order";
    }
}

TEST_P(Rotations, closestCutAddsWholeTurnsOnly) {
    for (int i = 0; i < 50; ++i) {
        const MEulerRotation original = rotation();
        const MEulerRotation target = rotation(20.0);
        const MEulerRotation cut = original.closestCut(target);
        for (unsigned int axis = 0; axis < 3; ++axis) {
            const double turns = (cut[axis] - original[axis]) / (2.0 * kPi);
            EXPECT_NEAR(turns, std::round(turns), 1e-12);
            EXPECT_LE(std::abs(cut[axis] - target[axis]), kPi + 1e-12);
        }
        MEulerRotation set;
        EXPECT_TRUE(set.setToClosestCut(original, target) == cut);
        EXPECT_TRUE(MEulerRotation(original).setToClosestCut(target) == cut);
    }
}

TEST_P(Rotations, closestSolutionFindsTheWayBackToTheAnglesItCameFrom) {
    for (int i = 0; i < 50; ++i) {
        const MEulerRotation target = rotation(20.0);
        MEulerRotation read = MEulerRotation::decompose(target.asMatrix(), GetParam().euler);
        EXPECT_TRUE(read.closestSolution(target).isEquivalent(target, 1e-6));
        EXPECT_TRUE(read.alternateSolution().closestSolution(target).isEquivalent(target, 1e-6));
        EXPECT_TRUE(MEulerRotation().setToClosestSolution(read, target).isEquivalent(target, 1e-6));
        EXPECT_TRUE(read.setToClosestSolution(target).isEquivalent(target, 1e-6));
    }
}

TEST_P(Rotations, boundAnglesLieWithinHalfATurn) {
    for (int i = 0; i < 20; ++i) {
        const MEulerRotation wide = rotation(30.0);
        const MEulerRotation bound = wide.bound();
        for (unsigned int axis = 0; axis < 3; ++axis) {
            EXPECT_LE(std::abs(bound[axis]), kPi + 1e-12);
        }
        EXPECT_TRUE(bound.asMatrix().isEquivalent(wide.asMatrix(), 1e-10));
        EXPECT_TRUE(MEulerRotation().boundIt(wide) == bound);
        EXPECT_TRUE(MEulerRotation(wide).boundIt() == bound);
    }
}

TEST_P(Rotations, inverseUndoesTheRotation) {
    for (int i = 0; i < 20; ++i) {
        MEulerRotation turned = rotation();
        EXPECT_TRUE((turned.asMatrix() * turned.inverse().asMatrix()).isEquivalent(MMatrix::identity, 1e-12));
        EXPECT_TRUE(turned.inverse().inverse() == turned);
        EXPECT_TRUE((turned * turned.inverse()).asMatrix().isEquivalent(MMatrix::identity, 1e-7));
        const MEulerRotation inverse = turned.inverse();
        EXPECT_TRUE(turned.invertIt() == inverse);
    }
}

TEST_P(Rotations, quaternionIsTheSameRotation) {
    for (int i = 0; i < 50; ++i) {
        const MEulerRotation first = rotation();
        const MEulerRotation second = rotation();
        const MQuaternion p = first.asQuaternion();
        const MQuaternion q = second.asQuaternion();
        EXPECT_TRUE(p.asMatrix().isEquivalent(first.asMatrix(), 1e-12));
        EXPECT_TRUE(p.asEulerRotation().asMatrix().isEquivalent(first.asMatrix(), 1e-7));
        EXPECT_TRUE((p * q).asMatrix().isEquivalent(first.asMatrix() * second.asMatrix(), 1e-12))
            << "the left one turns first";
        EXPECT_TRUE((first * second).asMatrix().isEquivalent((p * q).asMatrix(), 1e-7));
        EXPECT_TRUE((first * q).asMatrix().isEquivalent((p * q).asMatrix(), 1e-7));
        EXPECT_TRUE((p * p.inverse()).isEquivalent(MQuaternion::identity, 1e-12));
        EXPECT_TRUE(p.conjugate().asMatrix().isEquivalent(first.asMatrix().transpose(), 1e-12));
    }
}

TEST_P(Rotations, sumsBringTheOtherSideIntoTheOwnOrder) {
    const MEulerRotation own = rotation(1.0);
    const MEulerRotation other(0.1, 0.2, 0.3, MEulerRotation::kZXY);
    const MEulerRotation same = other.reorder(own.order);
    EXPECT_TRUE((own + other)
                    .isEquivalent(MEulerRotation(own.x + same.x, own.y + same.y, own.z + same.z, own.order)));
    EXPECT_TRUE((own + other - other).isEquivalent(own));
    EXPECT_TRUE((-own + own).isZero());
    EXPECT_TRUE((2.0 * own).isEquivalent(own + own));
}

TEST_P(Rotations, transformKeepsAnglesAsTheyWereSet) {
    const double angles[3] = {3.5, -4.0, 7.0};
    MTransformationMatrix transform;
    ASSERT_EQ(transform.setRotation(angles, GetParam().matrix), MS::kSuccess);
    EXPECT_TRUE(transform.eulerRotation() == MEulerRotation(angles, GetParam().euler));
    EXPECT_EQ(transform.rotationOrder(), GetParam().matrix);
    double read[3] = {};
    MTransformationMatrix::RotationOrder order = MTransformationMatrix::kInvalid;
    EXPECT_EQ(transform.getRotation(read, order), MS::kSuccess);
    EXPECT_TRUE(std::equal(read, read + 3, angles));
    EXPECT_EQ(order, GetParam().matrix);
    const MMatrix before = transform.asMatrix();
    for (const Order& target : orders()) {
        EXPECT_EQ(transform.reorderRotation(target.matrix), MS::kSuccess);
        EXPECT_EQ(transform.rotationOrder(), target.matrix);
        EXPECT_TRUE(transform.asMatrix().isEquivalent(before, 1e-9));
    }
}

TEST_P(Rotations, rotatingToAQuaternionKeepsTheOrder) {
    MTransformationMatrix transform;
    transform.rotateTo(MEulerRotation(0, 0, 0, GetParam().euler));
    const MQuaternion quaternion = rotation().asQuaternion();
    transform.rotateTo(quaternion);
    EXPECT_EQ(transform.rotationOrder(), GetParam().matrix);
    EXPECT_TRUE(transform.asMatrix().isEquivalent(quaternion.asMatrix(), 1e-9));
    EXPECT_TRUE(transform.rotation().asMatrix().isEquivalent(quaternion.asMatrix(), 1e-9));
    double x = 0;
    double y = 0;
    double z = 0;
    double w = 0;
    EXPECT_EQ(transform.getRotationQuaternion(x, y, z, w), MS::kSuccess);
    MTransformationMatrix other;
    EXPECT_EQ(other.setRotationQuaternion(x, y, z, w), MS::kSuccess);
    EXPECT_TRUE(other.isEquivalent(transform, 1e-9));
}

TEST_P(Rotations, incrementsGoOnBeyondWholeTurns) {
    const MVector axes[3] = {MVector::xAxis, MVector::yAxis, MVector::zAxis};
    for (const int axis : {GetParam().axes[0], GetParam().axes[2]}) {
        MEulerRotation rotation(0, 0, 0, GetParam().euler);
        rotation.incrementalRotateBy(axes[axis], 5.0 * kPi);
        EXPECT_NEAR(rotation[static_cast<unsigned int>(axis)], 5.0 * kPi, 1e-6);
        rotation.incrementalRotateBy(axes[axis], -5.0 * kPi);
        EXPECT_TRUE(rotation.isZero(1e-6));
    }
}

TEST(MEulerRotation, isComparedByAnglesAndOrder) {
    MEulerRotation rotation;
    EXPECT_TRUE(rotation == MEulerRotation::identity);
    EXPECT_EQ(&rotation.setValue(1, 2, 3, MEulerRotation::kZYX), &rotation);
    EXPECT_TRUE(rotation.asVector() == MVector(1, 2, 3));
    EXPECT_TRUE(rotation != MEulerRotation(1, 2, 3));
    EXPECT_FALSE(rotation.isEquivalent(MEulerRotation(1, 2, 3)));
    EXPECT_FALSE(rotation.isEquivalent(MEulerRotation(1, 2, 3 + 2 * kPi, MEulerRotation::kZYX)));
    EXPECT_EQ(&rotation.setValue(MVector(4, 5, 6)), &rotation);
    EXPECT_TRUE(rotation == MEulerRotation(4, 5, 6, MEulerRotation::kXYZ));
    std::ostringstream out;
    out << rotation;
    EXPECT_EQ(out.str(), "[4, 5, 6] kXYZ");
}

TEST(MQuaternion, describesAnAxisAndAnAngle) {
    const MVector axis(1, -2, 2);
    for (const double angle : {0.1, 1.0, 3.0, 4.0, 6.0}) {
        const MQuaternion quaternion(angle, axis);
        MVector readAxis;
        double readAngle = 0.0;
        EXPECT_TRUE(quaternion.getAxisAngle(readAxis, readAngle));
        EXPECT_NEAR(readAngle, angle, 1e-12);
        EXPECT_TRUE(readAxis.isEquivalent(axis / 3.0));
        EXPECT_TRUE(axis.rotateBy(quaternion).isEquivalent(axis));
    }
    MVector noAxis;
    double noAngle = 1.0;
    EXPECT_FALSE(MQuaternion::identity.getAxisAngle(noAxis, noAngle));
    EXPECT_EQ(noAngle, 0.0);
    MQuaternion quaternion;
    EXPECT_TRUE(quaternion.setToXAxis(1.0).asMatrix().isEquivalent(aboutAxis(0, 1.0)));
    EXPECT_TRUE(quaternion.setToYAxis(1.0).asMatrix().isEquivalent(aboutAxis(1, 1.0)));
    EXPECT_TRUE(quaternion.setToZAxis(1.0).asMatrix().isEquivalent(aboutAxis(2, 1.0)));
}

TEST(MQuaternion, takesOneDirectionToAnother) {
    const MVector directions[] = {MVector(1, 0, 0),    MVector(0, -3, 0), MVector(1, 2, 3),
                                  MVector(-1, -2, -3), MVector(-1, 0, 0), MVector(1, 1e-9, 0)};
    for (const MVector& a : directions) {
        for (const MVector& b : directions) {
            EXPECT_TRUE(a.normal().rotateBy(MQuaternion(a, b)).isEquivalent(b.normal(), 1e-7));
        }
    }
    const MQuaternion half(MVector::xAxis, MVector::yAxis, 0.5);
    EXPECT_TRUE(MVector::xAxis.rotateBy(half).isEquivalent(MVector(1, 1, 0).normal()));
}

TEST(MTransformationMatrix, appliesScaleShearRotationAndTranslationInThatOrder) {
    const double scale[3] = {2, 3, 4};
    const double shear[3] = {0.5, 0, 0};
    const double angles[3] = {0, 0, kHalfPi};
    MTransformationMatrix transform;
    EXPECT_EQ(transform.setScale(scale, MSpace::kTransform), MS::kSuccess);
    EXPECT_EQ(transform.setShear(shear, MSpace::kTransform), MS::kSuccess);
    EXPECT_EQ(transform.setRotation(angles, MTransformationMatrix::kXYZ), MS::kSuccess);
    EXPECT_EQ(transform.setTranslation(MVector(10, 20, 30), MSpace::kTransform), MS::kSuccess);
    // (1, 1, 1) is scaled to (2, 3, 4), sheared to (3.5, 3, 4), turned to (-3, 3.5, 4) and moved.
    EXPECT_TRUE((MPoint(1, 1, 1) * transform.asMatrix()).isEquivalent(MPoint(7, 23.5, 34)));
    EXPECT_TRUE((transform.asMatrix() * transform.asMatrixInverse()).isEquivalent(MMatrix::identity));
    EXPECT_EQ(transform.asScaleMatrix()[1][1], 3.0);
}

TEST(MTransformationMatrix, readsThePartsOfAMatrixBack) {
    const double scale[3] = {2, 0.5, 4};
    const double shear[3] = {0.1, -0.2, 0.3};
    const double angles[3] = {0.4, -0.5, 0.6};
    MTransformationMatrix parts;
    parts.setScale(scale, MSpace::kTransform);
    parts.setShear(shear, MSpace::kTransform);
    parts.setRotation(angles, MTransformationMatrix::kXYZ);
    parts.setTranslation(MVector(1, 2, 3), MSpace::kTransform);
    const MTransformationMatrix read(parts.asMatrix());
    double readScale[3] = {};
    double readShear[3] = {};
    EXPECT_EQ(read.getScale(readScale, MSpace::kTransform), MS::kSuccess);
    EXPECT_EQ(read.getShear(readShear, MSpace::kTransform), MS::kSuccess);
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(readScale[i], scale[i], 1e-12);
        EXPECT_NEAR(readShear[i], shear[i], 1e-12);
    }
    EXPECT_TRUE(read.eulerRotation().isEquivalent(MEulerRotation(angles), 1e-12));
    EXPECT_TRUE(read.getTranslation(MSpace::kTransform).isEquivalent(MVector(1, 2, 3)));
    EXPECT_TRUE(read.isEquivalent(parts));
    MTransformationMatrix assigned;
    EXPECT_FALSE(assigned.isEquivalent(parts));
    assigned = parts.asMatrix();
    EXPECT_TRUE(assigned == read);
    EXPECT_TRUE(assigned != MTransformationMatrix::identity);
}

TEST(MTransformationMatrix, addsToItsParts) {
    const double twice[3] = {2, 2, 3};
    const double shear[3] = {1, 0, 0.5};
    MTransformationMatrix transform;
    transform.addScale(twice, MSpace::kTransform);
    transform.addScale(twice, MSpace::kObject);
    transform.addShear(shear, MSpace::kTransform);
    transform.addShear(shear, MSpace::kTransform);
    transform.addTranslation(MVector(1, 2, 3), MSpace::kTransform);
    transform.addTranslation(MVector(1, 0, 0), MSpace::kWorld);
    double read[3] = {};
    transform.getScale(read, MSpace::kTransform);
    EXPECT_EQ(read[0], 4.0);
    EXPECT_EQ(read[2], 9.0);
    transform.getShear(read, MSpace::kTransform);
    EXPECT_EQ(read[0], 2.0);
    EXPECT_TRUE(transform.getTranslation(MSpace::kPostTransform) == MVector(2, 2, 3));
}

TEST(MTransformationMatrix, refusesWhatItDoesNotCover) {
    const double values[3] = {1, 2, 3};
    double read[3] = {7, 7, 7};
    MTransformationMatrix transform;
    EXPECT_EQ(transform.setRotation(values, MTransformationMatrix::kInvalid), MS::kInvalidParameter);
    EXPECT_EQ(transform.setRotation(values, MTransformationMatrix::kLast), MS::kInvalidParameter);
    EXPECT_EQ(transform.reorderRotation(MTransformationMatrix::kLast), MS::kInvalidParameter);
    EXPECT_EQ(transform.setScale(values, MSpace::kInvalid), MS::kInvalidParameter);
    EXPECT_EQ(transform.getScale(read, MSpace::kLast), MS::kInvalidParameter);
    EXPECT_EQ(transform.addScale(values, MSpace::kWorld), MS::kNotImplemented);
    EXPECT_EQ(transform.addShear(values, MSpace::kPostTransform), MS::kNotImplemented);
    EXPECT_EQ(transform.setTranslation(MVector(1, 2, 3), MSpace::kObject), MS::kNotImplemented);
    MStatus status;
    EXPECT_TRUE(transform.getTranslation(MSpace::kInvalid, &status) == MVector::zero);
    EXPECT_EQ(status, MS::kInvalidParameter);
    transform.getTranslation(MSpace::kTransform, &status);
    EXPECT_EQ(status, MS::kSuccess);
    EXPECT_EQ(read[0], 7.0);
    EXPECT_TRUE(transform == MTransformationMatrix::identity) << "a refused call changes nothing";
}

}  // namespace
