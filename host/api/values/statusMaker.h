#pragma once

#include <maya/MStatus.h>

namespace host::api {

/// Why a call failed, if the host can say more than the status code does.
enum class Explanation : unsigned char {
    OfCode = 0,  ///< the code's own general text
    ObjectDoesNotExist,
    NoElementAtIndex,
    IncompatibleObject,
    InternalFailure
};

/// Makes statuses that carry an explanation, and reads it back.
class StatusMaker {
  public:
    static MStatus make(MStatus::MStatusCode code, Explanation explanation);
    /// The explanation alone, without the code's name.
    static const char* text(const MStatus& status);
};

/// Writes the status to `destination` unless that is null, for the `MStatus* ReturnStatus` of the API.
/// Returns the status.
MStatus report(MStatus* destination, const MStatus& status);

}  // namespace host::api
