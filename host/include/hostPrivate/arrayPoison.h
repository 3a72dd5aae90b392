#pragma once

#include <maya/MTypes.h>

#include <cstring>
#include <limits>
#include <type_traits>

namespace host::api {

/// Whether elements that an array of the API makes without a value are poison: NaN, or a number far below
/// zero. Not part of the API: a plug-in never names it.
///
/// The API promises no value for such elements, and code that takes them for zeros fails elsewhere. Poison is
/// on from the start if the host was compiled with DELVEN_POISON_ARRAYS, as in the sanitizer builds. Safe
/// from several threads.
OPENMAYA_EXPORT bool isArrayPoisonOn();
OPENMAYA_EXPORT void setArrayPoison(bool isOn);

/// The element that an array makes if it gets no value.
template <typename Element>
Element unsetElement() {
    // Odd, so that it is not a power of two, and no sum of a few of them wraps to a small number.
    constexpr int kPoisonInteger = -1999999999;
    Element element{};
    if (!isArrayPoisonOn()) return element;
    if constexpr (std::is_integral_v<Element>) {
        element = static_cast<Element>(kPoisonInteger);
    } else if constexpr (std::is_floating_point_v<Element>) {
        element = std::numeric_limits<Element>::quiet_NaN();
    } else if constexpr (std::is_trivially_copyable_v<Element>) {
        // Points, vectors, colours and matrices consist of floating point numbers: all bits set is NaN.
        std::memset(static_cast<void*>(&element), 0xff, sizeof element);
    }
    return element;
}

}  // namespace host::api
