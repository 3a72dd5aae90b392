#include "compareDraggerTool.h"

#include <maya/MAnimControl.h>
#include <maya/MCursor.h>
#include <maya/MGlobal.h>
#include <maya/MStringArray.h>
#include <maya/MTime.h>

#include "commandSupport.h"
#include "files/numberText.h"

namespace {

constexpr const char* kTool = "The compare tool";
constexpr const char* kStepVariable = "DELVENCompareDraggerToolStep";
constexpr const char* kListVariable = "DELVENSculptCompareToolList";

/// Runs script text without undo. The host shows a failure, and the drag goes on.
void run(const MString& command) {
    MGlobal::executeCommand(command, false, false);
}

MString fixedText(double value) {
    char text[kFixedRoom];
    return MString(text, static_cast<int>(writeFixed(text, value) - text));
}

/// The number at the beginning of a text, 0 if there is none.
double numberOf(const MString& text) {
    double value = 0.0;
    readNumber(text.asChar(), value);
    return value;
}

}  // namespace

DELVENCompareDraggerToolContext::DELVENCompareDraggerToolContext() {
    setTitleString("DELVEN Compare Dragger Tool");
    setCursor(MCursor::handCursor);
}

void DELVENCompareDraggerToolContext::toolOnSetup(MEvent&) {
    guardEntry(kTool, [this] {
        setHelpString("Change the compare value by holding the left mouse button and sliding left/right");
        return MStatus(MS::kSuccess);
    });
}

MStatus DELVENCompareDraggerToolContext::doPress(MEvent& event) {
    return guardEntry(kTool, [&] { return press(event); });
}

MStatus DELVENCompareDraggerToolContext::press(const MEvent& event) {
    // Without a view, refreshing it does nothing.
    view_ = M3dView::active3dView();
    short y = 0;
    event.getPosition(pressX_, y);
    value_ = 0.0;
    if (MGlobal::optionVarExists(kStepVariable)) step_ = MGlobal::optionVarDoubleValue(kStepVariable);
    readToolList();
    isActive_ = node_.length() > 0;
    return MS::kSuccess;
}

/// If the list is missing or malformed, nothing changes: the tool uses the last one.
void DELVENCompareDraggerToolContext::readToolList() {
    if (!MGlobal::optionVarExists(kListVariable)) return;
    MStringArray fields;
    MGlobal::optionVarStringValue(kListVariable).split(',', fields);
    if (fields.length() != 5) return;
    startTime_ = numberOf(fields[0]);
    endTime_ = numberOf(fields[1]);
    timeRange_ = endTime_ - startTime_;
    speed_ = numberOf(fields[2]);
    restoreTime_ = numberOf(fields[3]);
    node_ = fields[4];
}

MStatus DELVENCompareDraggerToolContext::doDrag(MEvent& event) {
    return guardEntry(kTool, [&] { return drag(event); });
}

MStatus DELVENCompareDraggerToolContext::drag(const MEvent& event) {
    if (!isActive_ || event.mouseButton() != MEvent::kLeftMouse) return MS::kSuccess;
    run("delvenSculpt_compareSculpt");
    short y = 0;
    event.getPosition(currentX_, y);
    value_ = static_cast<short>(currentX_ - pressX_) * speed_ * 0.01;
    // NaN gives 0, too.
    if (!(value_ > 0.0)) value_ = 0.0;
    if (value_ > 1.0) value_ = 1.0;
    if (startTime_ != endTime_) setTime(startTime_ + timeRange_ * value_);
    // Deliberately no blank before the value: the host ends the name at the bracket.
    run("setAttr " + node_ + ".w[10000]" + fixedText(value_));
    refreshView();
    return MS::kSuccess;
}

MStatus DELVENCompareDraggerToolContext::doRelease(MEvent&) {
    return guardEntry(kTool, [this] { return release(); });
}

MStatus DELVENCompareDraggerToolContext::release() {
    if (!isActive_) return MS::kSuccess;
    setTime(restoreTime_);
    run("delvenSculpt_resetCompare");
    refreshView();
    isActive_ = false;
    return MS::kSuccess;
}

MStatus DELVENCompareDraggerToolContext::doPress(MEvent& event, MHWRender::MUIDrawManager&,
                                                 const MHWRender::MFrameContext&) {
    return doPress(event);
}

MStatus DELVENCompareDraggerToolContext::doDrag(MEvent& event, MHWRender::MUIDrawManager&,
                                                const MHWRender::MFrameContext&) {
    return doDrag(event);
}

MStatus DELVENCompareDraggerToolContext::doRelease(MEvent& event, MHWRender::MUIDrawManager&,
                                                   const MHWRender::MFrameContext&) {
    return doRelease(event);
}

/// A time that is not a number does not change the current time.
void DELVENCompareDraggerToolContext::setTime(double time) const {
    MAnimControl::setCurrentTime(MTime(time, MTime::uiUnit()));
}

void DELVENCompareDraggerToolContext::refreshView() {
    view_.refresh(false, true);
}

void* DELVENCompareDraggerToolContextCommand::creator() {
    return madeOrNull<DELVENCompareDraggerToolContextCommand>(kTool);
}

MPxContext* DELVENCompareDraggerToolContextCommand::makeObj() {
    return madeOrNull<DELVENCompareDraggerToolContext>(kTool);
}
