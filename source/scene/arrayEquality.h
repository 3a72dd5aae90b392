#pragma once

/// Whether two arrays of the host have the same length and exactly equal elements.
template <typename Array>
bool areEqual(const Array& left, const Array& right) {
    if (left.length() != right.length()) return false;
    for (unsigned int k = 0; k < left.length(); ++k) {
        if (left[k] != right[k]) return false;
    }
    return true;
}
