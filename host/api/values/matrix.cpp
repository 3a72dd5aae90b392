// MMatrix and MFloatMatrix.

#include <maya/MFloatMatrix.h>
#include <maya/MMatrix.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <ostream>

#include "api/values/conversion.h"

namespace host::api {

geometry::Matrix4 toGeometry(const MMatrix& matrix) {
    geometry::Matrix4 result;
    for (unsigned int row = 0; row < 4; ++row) {
        std::copy(matrix[row], matrix[row] + 4, result.m[row].begin());
    }
    return result;
}

MMatrix fromGeometry(const geometry::Matrix4& matrix) {
    MMatrix result;
    for (unsigned int row = 0; row < 4; ++row) {
        std::copy(matrix.m[row].begin(), matrix.m[row].end(), result[row]);
    }
    return result;
}

geometry::Matrix4 rotationOnly(const geometry::Matrix4& matrix) {
    return geometry::rotationMatrix(geometry::decomposeTransform(matrix).rotate);
}

namespace {

// The double and the single precision matrix have the same members, so one set of functions serves both.

template <typename From, typename To>
void copyElements(const From source[4][4], To destination[4][4]) {
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            destination[row][column] = static_cast<To>(source[row][column]);
        }
    }
}

template <typename Matrix, typename Operation>
Matrix combined(const Matrix& left, const Matrix& right, Operation operation) {
    Matrix result;
    for (unsigned int row = 0; row < 4; ++row) {
        std::transform(left[row], left[row] + 4, right[row], result[row], operation);
    }
    return result;
}

template <typename Matrix>
Matrix product(const Matrix& left, const Matrix& right) {
    Matrix result;
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column) {
            result[row][column] = left[row][0] * right[0][column] + left[row][1] * right[1][column] +
                                  left[row][2] * right[2][column] + left[row][3] * right[3][column];
        }
    }
    return result;
}

template <typename Matrix, typename Number>
Matrix scaled(const Matrix& matrix, Number scale) {
    return combined(matrix, matrix, [scale](Number element, Number) { return element * scale; });
}

template <typename Matrix, typename Number>
bool differAtMost(const Matrix& left, const Matrix& right, Number tolerance) {
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column) {
            if (!(std::abs(left[row][column] - right[row][column]) <= tolerance)) return false;
        }
    }
    return true;
}

template <typename Matrix>
Matrix transposed(const Matrix& matrix) {
    Matrix result;
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column) {
            result[column][row] = matrix[row][column];
        }
    }
    return result;
}

/// Determinant of three rows and columns, given in ascending order.
template <typename Matrix>
auto minorOf(const Matrix& m, const unsigned int (&r)[3], const unsigned int (&c)[3]) {
    return m[r[0]][c[0]] * (m[r[1]][c[1]] * m[r[2]][c[2]] - m[r[1]][c[2]] * m[r[2]][c[1]]) -
           m[r[0]][c[1]] * (m[r[1]][c[0]] * m[r[2]][c[2]] - m[r[1]][c[2]] * m[r[2]][c[0]]) +
           m[r[0]][c[2]] * (m[r[1]][c[0]] * m[r[2]][c[1]] - m[r[1]][c[1]] * m[r[2]][c[0]]);
}

constexpr unsigned int kOthers[4][3] = {{1, 2, 3}, {0, 2, 3}, {0, 1, 3}, {0, 1, 2}};

template <typename Matrix>
auto cofactor(const Matrix& matrix, unsigned int row, unsigned int column) {
    const auto minor = minorOf(matrix, kOthers[row], kOthers[column]);
    return (row + column) % 2 == 0 ? minor : -minor;
}

template <typename Matrix>
Matrix adjointOf(const Matrix& matrix) {
    Matrix result;
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column) {
            result[column][row] = cofactor(matrix, row, column);
        }
    }
    return result;
}

template <typename Matrix>
auto determinantOf(const Matrix& matrix) {
    return matrix[0][0] * cofactor(matrix, 0, 0) + matrix[0][1] * cofactor(matrix, 0, 1) +
           matrix[0][2] * cofactor(matrix, 0, 2) + matrix[0][3] * cofactor(matrix, 0, 3);
}

template <typename Matrix>
Matrix homogenized(const Matrix& matrix) {
    return matrix[3][3] == 0 ? matrix : scaled(matrix, 1 / matrix[3][3]);
}

template <typename Matrix>
void writeRows(std::ostream& out, const Matrix& matrix) {
    out << '[';
    for (unsigned int row = 0; row < 4; ++row) {
        out << (row == 0 ? "[" : ", [");
        for (unsigned int column = 0; column < 4; ++column) {
            out << (column == 0 ? "" : ", ") << matrix[row][column];
        }
        out << ']';
    }
    out << ']';
}

}  // namespace

}  // namespace host::api

OPENMAYA_MAJOR_NAMESPACE_OPEN

using namespace host::api;

const MMatrix MMatrix::identity;

MMatrix::MMatrix() {
    setToIdentity();
}

MMatrix::MMatrix(const double m[4][4]) {
    copyElements(m, matrix);
}

MMatrix::MMatrix(const float m[4][4]) {
    copyElements(m, matrix);
}

MStatus MMatrix::get(double dest[4][4]) const {
    copyElements(matrix, dest);
    return MStatus::kSuccess;
}

MStatus MMatrix::get(float dest[4][4]) const {
    copyElements(matrix, dest);
    return MStatus::kSuccess;
}

MMatrix& MMatrix::setToIdentity() {
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            matrix[row][column] = row == column ? 1 : 0;
        }
    }
    return *this;
}

MMatrix& MMatrix::setToProduct(const MMatrix& left, const MMatrix& right) {
    return *this = product(left, right);
}

MMatrix MMatrix::operator+(const MMatrix& right) const {
    return combined(*this, right, std::plus<double>());
}

MMatrix MMatrix::operator-(const MMatrix& right) const {
    return combined(*this, right, std::minus<double>());
}

MMatrix MMatrix::operator*(const MMatrix& right) const {
    return product(*this, right);
}

MMatrix MMatrix::operator*(double scale) const {
    return scaled(*this, scale);
}

MMatrix& MMatrix::operator+=(const MMatrix& right) {
    return *this = *this + right;
}

MMatrix& MMatrix::operator-=(const MMatrix& right) {
    return *this = *this - right;
}

MMatrix& MMatrix::operator*=(const MMatrix& right) {
    return *this = *this * right;
}

MMatrix& MMatrix::operator*=(double scale) {
    return *this = *this * scale;
}

bool MMatrix::operator==(const MMatrix& other) const {
    return isEquivalent(other, 0);
}

bool MMatrix::operator!=(const MMatrix& other) const {
    return !(*this == other);
}

bool MMatrix::isEquivalent(const MMatrix& other, double tolerance) const {
    return differAtMost(*this, other, tolerance);
}

MMatrix MMatrix::transpose() const {
    return transposed(*this);
}

MMatrix MMatrix::inverse() const {
    return fromGeometry(toGeometry(*this).inverse().matrix);
}

MMatrix MMatrix::adjoint() const {
    return adjointOf(*this);
}

MMatrix MMatrix::homogenize() const {
    return homogenized(*this);
}

double MMatrix::det4x4() const {
    return determinantOf(*this);
}

double MMatrix::det3x3() const {
    return minorOf(*this, kOthers[3], kOthers[3]);
}

bool MMatrix::isSingular() const {
    return !toGeometry(*this).inverse().ok;
}

MMatrix operator*(double scale, const MMatrix& right) {
    return right * scale;
}

std::ostream& operator<<(std::ostream& out, const MMatrix& matrix) {
    writeRows(out, matrix);
    return out;
}

MFloatMatrix::MFloatMatrix() {
    setToIdentity();
}

MFloatMatrix::MFloatMatrix(const double m[4][4]) {
    copyElements(m, matrix);
}

MFloatMatrix::MFloatMatrix(const float m[4][4]) {
    copyElements(m, matrix);
}

MStatus MFloatMatrix::get(double dest[4][4]) const {
    copyElements(matrix, dest);
    return MStatus::kSuccess;
}

MStatus MFloatMatrix::get(float dest[4][4]) const {
    copyElements(matrix, dest);
    return MStatus::kSuccess;
}

MFloatMatrix& MFloatMatrix::setToIdentity() {
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            matrix[row][column] = row == column ? 1 : 0;
        }
    }
    return *this;
}

MFloatMatrix& MFloatMatrix::setToProduct(const MFloatMatrix& left, const MFloatMatrix& right) {
    return *this = product(left, right);
}

MFloatMatrix MFloatMatrix::operator+(const MFloatMatrix& right) const {
    return combined(*this, right, std::plus<float>());
}

MFloatMatrix MFloatMatrix::operator-(const MFloatMatrix& right) const {
    return combined(*this, right, std::minus<float>());
}

MFloatMatrix MFloatMatrix::operator*(const MFloatMatrix& right) const {
    return product(*this, right);
}

MFloatMatrix MFloatMatrix::operator*(float scale) const {
    return scaled(*this, scale);
}

MFloatMatrix& MFloatMatrix::operator+=(const MFloatMatrix& right) {
    return *this = *this + right;
}

MFloatMatrix& MFloatMatrix::operator-=(const MFloatMatrix& right) {
    return *this = *this - right;
}

MFloatMatrix& MFloatMatrix::operator*=(const MFloatMatrix& right) {
    return *this = *this * right;
}

MFloatMatrix& MFloatMatrix::operator*=(float scale) {
    return *this = *this * scale;
}

bool MFloatMatrix::operator==(const MFloatMatrix& other) const {
    return isEquivalent(other, 0);
}

bool MFloatMatrix::operator!=(const MFloatMatrix& other) const {
    return !(*this == other);
}

bool MFloatMatrix::isEquivalent(const MFloatMatrix& other, float tolerance) const {
    return differAtMost(*this, other, tolerance);
}

MFloatMatrix MFloatMatrix::transpose() const {
    return transposed(*this);
}

MFloatMatrix MFloatMatrix::inverse() const {
    return MFloatMatrix(MMatrix(matrix).inverse().matrix);
}

MFloatMatrix MFloatMatrix::adjoint() const {
    return adjointOf(*this);
}

MFloatMatrix MFloatMatrix::homogenize() const {
    return homogenized(*this);
}

float MFloatMatrix::det4x4() const {
    return determinantOf(*this);
}

float MFloatMatrix::det3x3() const {
    return minorOf(*this, kOthers[3], kOthers[3]);
}

MFloatMatrix operator*(float scale, const MFloatMatrix& right) {
    return right * scale;
}

std::ostream& operator<<(std::ostream& out, const MFloatMatrix& matrix) {
    writeRows(out, matrix);
    return out;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
