#pragma once

#include <maya/MStatus.h>

#include "api/values/statusMaker.h"

namespace host::api {

// The statuses that the API's functions report most.
inline MStatus missingObject() {
    return StatusMaker::make(MStatus::kFailure, Explanation::objectDoesNotExist);
}
inline MStatus unknownObject() {
    return StatusMaker::make(MStatus::kInvalidParameter, Explanation::objectDoesNotExist);
}
inline MStatus noElement() {
    return StatusMaker::make(MStatus::kInvalidParameter, Explanation::noElementAtIndex);
}
inline MStatus incompatible() {
    return StatusMaker::make(MStatus::kInvalidParameter, Explanation::incompatibleObject);
}
inline MStatus failure() {
    return StatusMaker::make(MStatus::kFailure, Explanation::internalFailure);
}

/// Reports the status and gives the value that a failing function returns.
template <typename T>
T failed(MStatus* destination, const MStatus& status, T value) {
    report(destination, status);
    return value;
}

}  // namespace host::api
