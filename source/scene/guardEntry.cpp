#include "scene/guardEntry.h"

#include <maya/MGlobal.h>
#include <maya/MString.h>

#include <exception>
#include <new>

namespace {

/// Shows the exception that is being handled.
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
        // Not even the message fits the memory: the failure alone tells.
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
