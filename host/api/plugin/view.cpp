// The view that a tool sees: M3dView, MEvent and MCursor.

#include <maya/M3dView.h>
#include <maya/MCursor.h>
#include <maya/MEvent.h>

#include <cstring>

#include "api/handles/answers.h"
#include "api/handles/session.h"
#include "api/plugin/toolAccess.h"

using host::api::Session;
using host::api::succeeded;

OPENMAYA_MAJOR_NAMESPACE_OPEN

const MCursor MCursor::defaultCursor("default");
const MCursor MCursor::crossHairCursor("crossHair");
const MCursor MCursor::doubleCrossHairCursor("doubleCrossHair");
const MCursor MCursor::editCursor("edit");
const MCursor MCursor::pencilCursor("pencil");
const MCursor MCursor::handCursor("hand");

MCursor::MCursor(const char* name) : name_(name) {}
MCursor::MCursor(const MCursor& other) = default;
MCursor::~MCursor() = default;
MCursor& MCursor::operator=(const MCursor& other) = default;

bool MCursor::operator==(const MCursor& other) const {
    return std::strcmp(name_, other.name_) == 0;
}

bool MCursor::operator!=(const MCursor& other) const {
    return !(*this == other);
}

MEvent::MEvent() = default;
MEvent::~MEvent() = default;

MStatus MEvent::getPosition(short& xPosition, short& yPosition) const {
    xPosition = x_;
    yPosition = y_;
    return MStatus::kSuccess;
}

MStatus MEvent::setPosition(short xPosition, short yPosition) {
    x_ = xPosition;
    y_ = yPosition;
    return MStatus::kSuccess;
}

MEvent::MouseButtonType MEvent::mouseButton(MStatus* status) const {
    return succeeded(status, button_);
}

M3dView::M3dView() = default;
M3dView::~M3dView() = default;

M3dView M3dView::active3dView(MStatus* status) {
    return succeeded(status, M3dView());
}

MStatus M3dView::refresh(bool, bool) {
    Session::current().countRefresh();
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace host::api {

MEvent ToolAccess::event(const mel::MouseEvent& source) {
    MEvent event;
    event.x_ = source.x;
    event.y_ = source.y;
    event.button_ =
        source.button == mel::MouseEvent::Button::Left ? MEvent::kLeftMouse : MEvent::kMiddleMouse;
    return event;
}

}  // namespace host::api
