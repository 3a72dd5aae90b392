#pragma once

#include <maya/MStatus.h>
#include <maya/MTime.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// The current time of the scene.
class OPENMAYAANIM_EXPORT MAnimControl {
  public:
    /// In the user's unit of time.
    static MTime currentTime();
    /// Not recorded for undo. Fails for a time that is not a number.
    static MStatus setCurrentTime(const MTime& newTime);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
