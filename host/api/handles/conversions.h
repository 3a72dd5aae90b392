#pragma once

#include <maya/MFloatPoint.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MString.h>
#include <maya/MVector.h>

#include <string>
#include <string_view>
#include <vector>

#include "geometry/math.h"

namespace host::api {

inline std::string text(const MString& string) {
    return std::string(string.asChar(), string.length());
}

inline MString string(std::string_view text) {
    return MString(text.data(), static_cast<int>(text.size()));
}

inline MMatrix toMatrix(const geometry::Matrix4& source) {
    MMatrix result;
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column)
            result(row, column) = source.m[row][column];
    }
    return result;
}

inline geometry::Matrix4 fromMatrix(const MMatrix& source) {
    geometry::Matrix4 result;
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column)
            result.m[row][column] = source(row, column);
    }
    return result;
}

inline MPoint toPoint(const geometry::Vec3& source) {
    return MPoint(source.x, source.y, source.z);
}

inline MVector toVector(const geometry::Vec3& source) {
    return MVector(source.x, source.y, source.z);
}

inline geometry::Vec3 fromPoint(const MPoint& source) {
    return {source.x, source.y, source.z};
}

inline geometry::Vec3 fromVector(const MVector& source) {
    return {source.x, source.y, source.z};
}

/// The numbers of one of the API's arrays.
template <typename Number, typename Array>
std::vector<Number> numbersOf(const Array& array) {
    std::vector<Number> numbers(array.length());
    if (!numbers.empty()) array.get(numbers.data());
    return numbers;
}

}  // namespace host::api
