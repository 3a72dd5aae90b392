#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A view of the scene. The headless host has one, which is always the active one and shows nothing.
class OPENMAYAUI_EXPORT M3dView {
  public:
    M3dView();
    virtual ~M3dView();

    static M3dView active3dView(MStatus* status = nullptr);

    /// Draws the view, or all of them.
    /// @param force  now, not when the program is idle
    MStatus refresh(bool all = false, bool force = false);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
