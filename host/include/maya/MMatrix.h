#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

/// Default tolerance of isEquivalent.
#define MMatrix_kTol 1.0e-10

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A 4x4 matrix, the identity by default.
///
/// Row vectors: p' = p * M, the translation is in row 3, and A * B applies A first.
class OPENMAYA_EXPORT MMatrix {
  public:
    MMatrix();
    MMatrix(const double m[4][4]);
    MMatrix(const float m[4][4]);

    double operator()(unsigned int row, unsigned int col) const { return matrix[row][col]; }
    double& operator()(unsigned int row, unsigned int col) { return matrix[row][col]; }
    const double* operator[](unsigned int row) const { return matrix[row]; }
    double* operator[](unsigned int row) { return matrix[row]; }
    MStatus get(double dest[4][4]) const;
    MStatus get(float dest[4][4]) const;

    MMatrix& setToIdentity();
    MMatrix& setToProduct(const MMatrix& left, const MMatrix& right);

    MMatrix operator+(const MMatrix& right) const;
    MMatrix operator-(const MMatrix& right) const;
    MMatrix operator*(const MMatrix& right) const;
    MMatrix operator*(double scale) const;
    MMatrix& operator+=(const MMatrix& right);
    MMatrix& operator-=(const MMatrix& right);
    MMatrix& operator*=(const MMatrix& right);
    MMatrix& operator*=(double scale);
    bool operator==(const MMatrix& other) const;
    bool operator!=(const MMatrix& other) const;
    /// Whether every element differs by at most the tolerance.
    bool isEquivalent(const MMatrix& other, double tolerance = MMatrix_kTol) const;

    MMatrix transpose() const;
    /// The identity if this matrix has no inverse.
    MMatrix inverse() const;
    /// Inverse times determinant. A singular matrix has it too.
    MMatrix adjoint() const;
    /// Scaled so that the lower right element is 1; unchanged if that is 0.
    MMatrix homogenize() const;
    double det4x4() const;
    /// Determinant of the upper left 3x3.
    double det3x3() const;
    bool isSingular() const;

    static const MMatrix identity;

    double matrix[4][4];
};

OPENMAYA_EXPORT MMatrix operator*(double scale, const MMatrix& right);
OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MMatrix& matrix);

OPENMAYA_MAJOR_NAMESPACE_CLOSE
