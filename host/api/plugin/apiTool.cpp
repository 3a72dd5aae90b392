#include "api/plugin/apiTool.h"

#include "api/handles/conversions.h"
#include "api/handles/session.h"
#include "api/plugin/toolAccess.h"

namespace host::api {

namespace {

MStatus classic(MPxContext& context, mel::MouseEvent::Kind kind, MEvent& event) {
    switch (kind) {
        case mel::MouseEvent::Kind::Press:
            return context.doPress(event);
        case mel::MouseEvent::Kind::Drag:
            return context.doDrag(event);
        case mel::MouseEvent::Kind::Release:
            break;
    }
    return context.doRelease(event);
}

MStatus viewport2(MPxContext& context, mel::MouseEvent::Kind kind, MEvent& event) {
    MHWRender::MUIDrawManager& drawManager = ToolAccess::drawManager();
    const MHWRender::MFrameContext& frame = ToolAccess::frameContext();
    switch (kind) {
        case mel::MouseEvent::Kind::Press:
            return context.doPress(event, drawManager, frame);
        case mel::MouseEvent::Kind::Drag:
            return context.doDrag(event, drawManager, frame);
        case mel::MouseEvent::Kind::Release:
            break;
    }
    return context.doRelease(event, drawManager, frame);
}

}  // namespace

std::string ApiTool::className() const {
    MString name;
    context_->getClassName(name);
    return text(name);
}

std::string ApiTool::title() const {
    return ToolAccess::title(*context_);
}

std::string ApiTool::help() const {
    return ToolAccess::help(*context_);
}

std::string ApiTool::cursor() const {
    return ToolAccess::cursor(*context_);
}

void ApiTool::enter() {
    PluginCall call{owner_};
    const CallScope scope(call);
    MEvent event;
    context_->toolOnSetup(event);
}

void ApiTool::leave() {
    PluginCall call{owner_};
    const CallScope scope(call);
    context_->toolOffCleanup();
}

bool ApiTool::handle(const mel::MouseEvent& source) {
    PluginCall call{owner_};
    const CallScope scope(call);
    MEvent event = ToolAccess::event(source);
    const bool isClassic =
        source.viewport == mel::MouseEvent::Viewport::Legacy && scene().variants().callsLegacyHandlers;
    return isClassic ? classic(*context_, source.kind, event) : viewport2(*context_, source.kind, event);
}

}  // namespace host::api
