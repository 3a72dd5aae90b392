#include "reorderRotation.h"

#include <maya/MArgDatabase.h>
#include <maya/MDoubleArray.h>
#include <maya/MEulerRotation.h>
#include <maya/MTransformationMatrix.h>

namespace {

/// Deliberate: pi/180 and 180/pi in single precision (docs/compatibility.md).
constexpr double kRadiansPerDegree = 0.01745329238474369;
constexpr double kDegreesPerRadian = 57.295780181884766;

/// A rotate order in the numbers of the host's two classes.
struct Order {
    MTransformationMatrix::RotationOrder matrix;
    MEulerRotation::RotationOrder euler;
};

/// @param code  the number that rotateOrder attributes use
Order orderOf(int code) {
    constexpr Order kOrders[] = {{MTransformationMatrix::kXYZ, MEulerRotation::kXYZ},
                                 {MTransformationMatrix::kYZX, MEulerRotation::kYZX},
                                 {MTransformationMatrix::kZXY, MEulerRotation::kZXY},
                                 {MTransformationMatrix::kXZY, MEulerRotation::kXZY},
                                 {MTransformationMatrix::kYXZ, MEulerRotation::kYXZ},
                                 {MTransformationMatrix::kZYX, MEulerRotation::kZYX}};
    return kOrders[code >= 0 && code < 6 ? code : 0];
}

}  // namespace

const CommandInfo& reorderRotation::info() {
    static const CommandInfo description{
        kName,
        "Converts the input rotation to match the target rotate order.",
        {{"-io", "-inOrder", MSyntax::kLong, "source rotate order"},
         {"-oo", "-outOrder", MSyntax::kLong, "target rotate order"},
         {"-irx", "-inRotationX", MSyntax::kDouble, "x rotation value to convert"},
         {"-iry", "-inRotationY", MSyntax::kDouble, "y rotation value to convert"},
         {"-irz", "-inRotationZ", MSyntax::kDouble, "z rotation value to convert"}},
        "dv_reorderRotation -inRotationX <float> -inRotationY <float> -inRotationZ <float> -inOrder <int> "
        "-outOrder <int>",
        "float[]"};
    return description;
}

CallOutcome reorderRotation::read(const MArgDatabase& arguments) {
    readFlag(arguments, "-io", inOrder_);
    readFlag(arguments, "-oo", outOrder_);
    readFlag(arguments, "-irx", angles_[0]);
    readFlag(arguments, "-iry", angles_[1]);
    readFlag(arguments, "-irz", angles_[2]);
    return CallOutcome();
}

CallOutcome reorderRotation::edit() {
    const double radians[3] = {angles_[0] * kRadiansPerDegree, angles_[1] * kRadiansPerDegree,
                               angles_[2] * kRadiansPerDegree};
    MTransformationMatrix matrix;
    matrix.setRotation(radians, orderOf(inOrder_).matrix);
    MEulerRotation rotation = matrix.eulerRotation();
    rotation.reorderIt(orderOf(outOrder_).euler);
    MDoubleArray result;
    result.append(rotation.x * kDegreesPerRadian);
    result.append(rotation.y * kDegreesPerRadian);
    result.append(rotation.z * kDegreesPerRadian);
    setResult(result);
    return CallOutcome();
}
