#pragma once

#include <maya/MStatus.h>

#include <functional>

/// Runs the work of an entry that the host calls, or of a destructor, which no exception may leave.
/// @param entry    what the user knows it as, for the error
/// @param recover  run after an exception, whose error has been shown
/// @return what the work returned; a failure after an exception
MStatus guardEntry(const char* entry, const std::function<MStatus()>& work,
                   const std::function<void()>& recover = nullptr) noexcept;

/// A new object that the host takes over.
/// @param entry  what the user knows it as, for the error
/// @return null when there is no memory for it
template <typename Made>
Made* madeOrNull(const char* entry) {
    Made* made = nullptr;
    guardEntry(entry, [&] {
        made = new Made();
        return MStatus(MS::kSuccess);
    });
    return made;
}
