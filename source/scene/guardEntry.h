#pragma once

#include <maya/MStatus.h>

#include <functional>

/// Runs the work of a function that the host calls, or of a destructor. No exception leaves it.
/// @param entry    the name by which the user knows it, for the error
/// @param recover  called after an exception, after its error was shown
/// @return what the work returned; a failure after an exception
MStatus guardEntry(const char* entry, const std::function<MStatus()>& work,
                   const std::function<void()>& recover = nullptr) noexcept;

/// A new object that the host takes over.
/// @param entry  the name by which the user knows it, for the error
/// @return null if there is not enough memory
template <typename Made>
Made* madeOrNull(const char* entry) {
    Made* made = nullptr;
    guardEntry(entry, [&] {
        made = new Made();
        return MStatus(MS::kSuccess);
    });
    return made;
}
