// The user's unit of time: that of the scene.

#include <maya/MTime.h>

#include "api/handles/session.h"

OPENMAYA_MAJOR_NAMESPACE_OPEN

MTime::Unit MTime::uiUnit() {
    const double second = host::api::scene().framesPerSecond();
    for (int unit = kHours; unit <= k90FPS; ++unit) {
        if (MTime(1.0, kSeconds).as(static_cast<Unit>(unit)) == second) return static_cast<Unit>(unit);
    }
    return kInvalid;  // a rate without a unit of its own
}

MStatus MTime::setUIUnit(Unit newUnit) {
    const double second = MTime(1.0, kSeconds).as(newUnit);
    if (!(second > 0.0)) return MStatus::kInvalidParameter;
    host::api::scene().setFramesPerSecond(second);
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
