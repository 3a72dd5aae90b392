#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A view of the scene. The headless host has only one. It is always the active one, and it shows nothing.
class OPENMAYAUI_EXPORT M3dView {
  public:
    M3dView();
    virtual ~M3dView();

    static M3dView active3dView(MStatus* status = nullptr);

    /// Draws the view, or all views.
    /// @param force  now, instead of when the program is idle
    MStatus refresh(bool all = false, bool force = false);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
