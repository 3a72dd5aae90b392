#include <maya/MCursor.h>
#include <maya/MFrameContext.h>
#include <maya/MPxContext.h>
#include <maya/MUIDrawManager.h>

#include <string>
#include <utility>

#include "api/handles/conversions.h"
#include "api/plugin/toolAccess.h"

OPENMAYA_MAJOR_NAMESPACE_OPEN

struct MPxContext::State {
    std::string command;
    std::string title;
    std::string help;
    MCursor cursor = MCursor::defaultCursor;
};

MPxContext::MPxContext() : state_(std::make_unique<State>()) {}
MPxContext::~MPxContext() = default;

void MPxContext::toolOnSetup(MEvent&) {}
void MPxContext::toolOffCleanup() {}

MStatus MPxContext::doPress(MEvent&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::doRelease(MEvent&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::doDrag(MEvent&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::doPress(MEvent&, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::doRelease(MEvent&, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::doDrag(MEvent&, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&) {
    return MStatus::kSuccess;
}

void MPxContext::getClassName(MString& name) const {
    name = host::api::string(state_->command);
}

MStatus MPxContext::setHelpString(const MString& text) {
    state_->help = host::api::text(text);
    return MStatus::kSuccess;
}

MStatus MPxContext::setTitleString(const MString& text) {
    state_->title = host::api::text(text);
    return MStatus::kSuccess;
}

MStatus MPxContext::setCursor(const MCursor& cursor) {
    state_->cursor = cursor;
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace host::api {

std::string ToolAccess::title(const MPxContext& context) {
    return context.state_->title;
}

std::string ToolAccess::help(const MPxContext& context) {
    return context.state_->help;
}

std::string ToolAccess::cursor(const MPxContext& context) {
    return context.state_->cursor.name_;
}

void ToolAccess::setCommandName(MPxContext& context, std::string name) {
    context.state_->command = std::move(name);
}

MHWRender::MUIDrawManager& ToolAccess::drawManager() {
    static MHWRender::MUIDrawManager only;
    return only;
}

MHWRender::MFrameContext& ToolAccess::frameContext() {
    static MHWRender::MFrameContext only;
    return only;
}

}  // namespace host::api
