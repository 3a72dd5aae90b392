#pragma once

#include <hostPrivate/access.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// What the mouse did in a view.
class OPENMAYAUI_EXPORT MEvent {
  public:
    enum MouseButtonType { kLeftMouse = 64, kMiddleMouse = 128 };

    MEvent();
    virtual ~MEvent();

    /// The position in the view, in pixels from its lower left corner.
    MStatus getPosition(short& xPosition, short& yPosition) const;
    MStatus setPosition(short xPosition, short yPosition);
    /// The button that is, or was, held down; also while the mouse is dragged.
    MouseButtonType mouseButton(MStatus* status = nullptr) const;

  private:
    friend struct host::api::ToolAccess;

    short x_ = 0;
    short y_ = 0;
    MouseButtonType button_ = kLeftMouse;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
