#pragma once

#include <vector>

#include "geometry/math.h"

/// Rotations as quaternions, and rigid motions as dual quaternions.
namespace host::geometry {

/// A rotation if its length is 1. `q` and `-q` are the same rotation.
struct Quaternion {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;

    Vec3 axisPart() const { return {x, y, z}; }
};

/// Product in the usual sense: a * b turns by b first. Matrices multiply the other way round.
Quaternion operator*(const Quaternion& a, const Quaternion& b);
Quaternion operator*(const Quaternion& q, double factor);
Quaternion operator+(const Quaternion& a, const Quaternion& b);
double dot(const Quaternion& a, const Quaternion& b);
/// Unit quaternion of `q`. The identity if `q` is (nearly) zero.
Quaternion normalized(const Quaternion& q);

/// @param matrix  a rotation in its upper 3x3
Quaternion quaternionOf(const Matrix4& matrix);
Matrix4 toMatrix(const Quaternion& unit);

/// From `a` (share 0) to `b` (share 1) at constant speed: along the shorter arc, or along the longer one.
Quaternion interpolated(const Quaternion& a, const Quaternion& b, double share, bool takesLongerArc = false);

/// How rotations with weights become one. The numbers are those of a constraint's interpType attribute.
enum class RotationBlend {
    NoFlip = 0,  ///< weighted mean of the quaternions on the side of a reference
    Average,     ///< weighted mean of the quaternions on the side of the first one
    Shortest,    ///< one after the other, each by its share of the weights so far, along the shorter arc
    Longest,     ///< the same along the longer arc
    Cache,       ///< like Shortest: there is no cache
};

struct WeightedRotation {
    Quaternion rotation;
    double weight = 1.0;
};

/// @param rotations  at least one; weights are positive, their sum need not be 1
/// @param reference  decides between q and -q for NoFlip
Quaternion blendRotations(const std::vector<WeightedRotation>& rotations, RotationBlend method,
                          const Quaternion& reference);

/// A rotation and a translation after it. A weighted sum of dual quaternions, made unit again, is a rigid
/// motion too, unlike a sum of matrices.
struct DualQuaternion {
    Quaternion real;
    Quaternion dual{0.0, 0.0, 0.0, 0.0};

    static DualQuaternion rigid(const Quaternion& rotation, const Vec3& translation);
};

/// Moves a point. The length of `motion.real` must not be 0; it need not be 1.
Vec3 transformPoint(const Vec3& p, const DualQuaternion& motion);

}  // namespace host::geometry
