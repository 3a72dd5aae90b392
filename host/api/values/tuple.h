#pragma once

#include <maya/MStatus.h>

#include <cmath>
#include <ostream>

/// What points and vectors of both precisions have in common; T has x, y, z (and w), N is its number type.
namespace host::api {

/// "[x, y, z]"
template <typename T>
std::ostream& writeThree(std::ostream& out, const T& t) {
    return out << '[' << t.x << ", " << t.y << ", " << t.z << ']';
}

/// "[x, y, z, w]"
template <typename T>
std::ostream& writeFour(std::ostream& out, const T& t) {
    return out << '[' << t.x << ", " << t.y << ", " << t.z << ", " << t.w << ']';
}

template <typename T, typename N>
MStatus copyThree(const T& t, N destination[]) {
    destination[0] = static_cast<N>(t.x);
    destination[1] = static_cast<N>(t.y);
    destination[2] = static_cast<N>(t.z);
    return MStatus::kSuccess;
}

template <typename T, typename N>
MStatus copyFour(const T& t, N destination[]) {
    destination[3] = static_cast<N>(t.w);
    return copyThree(t, destination);
}

}  // namespace host::api
