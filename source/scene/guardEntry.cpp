#include "scene/guardEntry.h"

#include <maya/MGlobal.h>
#include <maya/MString.h>

#include <exception>
#include <new>

namespace {

/// Shows the current exception.
void showException(const char* entry) noexcept {
    try {
        try {
            throw;
        } catch (const std::bad_alloc&) {
            MGlobal::displayError(MString(entry) + ": There is not enough memory. Nothing more was done.");
        } catch (const std::exception& exception) {
            MGlobal::displayError(MString(entry) + " stopped: " + exception.what());
        } catch (...) {
            MGlobal::displayError(MString(entry) + " stopped by an unknown error.");
        }
    } catch (...) {
        // There is no memory even for the message. The caller still gets a failure.
    }
}

}  // namespace

MStatus guardEntry(const char* entry, const std::function<MStatus()>& work,
                   const std::function<void()>& recover) noexcept {
    try {
        return work();
    } catch (...) {
        showException(entry);
    }
    try {
        if (recover) recover();
    } catch (...) {
        showException(entry);
    }
    return MS::kFailure;
}
