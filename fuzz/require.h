#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the program, for the fuzzer to see, where something does not hold.
inline void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

/// A number that comes back as the same digits: the few bits of one that is no more than rounding do not.
inline double writable(double value) {
    return value < 1e-300 && value > -1e-300 ? 0.0 : value;
}
