#include <maya/MAnimControl.h>

#include <cmath>

#include "api/handles/session.h"
#include "nodes/sceneTime.h"

using host::api::scene;

OPENMAYA_MAJOR_NAMESPACE_OPEN

MTime MAnimControl::currentTime() {
    const MTime time(host::nodes::currentTime(scene()), MTime::kSeconds);
    return MTime(time.as(MTime::uiUnit()), MTime::uiUnit());
}

MStatus MAnimControl::setCurrentTime(const MTime& newTime) {
    const double seconds = newTime.as(MTime::kSeconds);
    if (!std::isfinite(seconds)) return MStatus::kInvalidParameter;
    host::nodes::setCurrentTime(scene(), seconds);
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
