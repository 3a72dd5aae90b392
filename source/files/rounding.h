#pragma once

#include <cmath>
#include <cstdint>

/// std::round, whose call takes most of the time where a million weights are rounded; it never gives -0 for a
/// number between -0.5 and 0.
template <typename Number>
Number roundInline(Number value) {
    // Beyond that every number is whole, or the conversion would not hold it.
    constexpr auto kLargest = static_cast<Number>(1LL << 52);
    if (!(value > -kLargest && value < kLargest)) return std::round(value);
    const auto whole = static_cast<Number>(static_cast<std::int64_t>(value));
    const Number rest = value - whole;
    if (rest >= Number(0.5)) return whole + 1;
    return rest <= Number(-0.5) ? whole - 1 : whole;
}

/// A value rounded to five decimals, halves away from zero: the precision in which weights are stored and
/// sides of the symmetry plane are told apart. Works in the precision of its argument; a coordinate of
/// 0.000005 lies beside the plane in single precision, and on it if it were widened first.
inline float round5(float value) {
    return roundInline(value * 100000.0F) / 100000.0F;
}

inline double round5(double value) {
    return roundInline(value * 100000.0) / 100000.0;
}
