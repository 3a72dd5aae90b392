#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

/// Default tolerance of isEquivalent.
#define MFloatMatrix_kTol 1.0e-5f

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A 4x4 matrix in single precision, the identity by default.
///
/// Row vectors: p' = p * M, the translation is in row 3, and A * B applies A first.
class OPENMAYA_EXPORT MFloatMatrix {
  public:
    MFloatMatrix();
    MFloatMatrix(const double m[4][4]);
    MFloatMatrix(const float m[4][4]);

    float operator()(unsigned int row, unsigned int col) const { return matrix[row][col]; }
    float& operator()(unsigned int row, unsigned int col) { return matrix[row][col]; }
    const float* operator[](unsigned int row) const { return matrix[row]; }
    float* operator[](unsigned int row) { return matrix[row]; }
    MStatus get(double dest[4][4]) const;
    MStatus get(float dest[4][4]) const;

    MFloatMatrix& setToIdentity();
    MFloatMatrix& setToProduct(const MFloatMatrix& left, const MFloatMatrix& right);

    MFloatMatrix operator+(const MFloatMatrix& right) const;
    MFloatMatrix operator-(const MFloatMatrix& right) const;
    MFloatMatrix operator*(const MFloatMatrix& right) const;
    MFloatMatrix operator*(float scale) const;
    MFloatMatrix& operator+=(const MFloatMatrix& right);
    MFloatMatrix& operator-=(const MFloatMatrix& right);
    MFloatMatrix& operator*=(const MFloatMatrix& right);
    MFloatMatrix& operator*=(float scale);
    bool operator==(const MFloatMatrix& other) const;
    bool operator!=(const MFloatMatrix& other) const;
    /// Whether every element differs by at most the tolerance.
    bool isEquivalent(const MFloatMatrix& other, float tolerance = MFloatMatrix_kTol) const;

    MFloatMatrix transpose() const;
    /// The identity if this matrix has no inverse.
    MFloatMatrix inverse() const;
    /// Inverse times determinant. A singular matrix has it too.
    MFloatMatrix adjoint() const;
    /// Scaled so that the lower right element is 1; unchanged if that is 0.
    MFloatMatrix homogenize() const;
    float det4x4() const;
    /// Determinant of the upper left 3x3.
    float det3x3() const;

    float matrix[4][4];
};

OPENMAYA_EXPORT MFloatMatrix operator*(float scale, const MFloatMatrix& right);
OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MFloatMatrix& matrix);

OPENMAYA_MAJOR_NAMESPACE_CLOSE
