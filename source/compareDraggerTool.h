#pragma once

#include <maya/M3dView.h>
#include <maya/MEvent.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

/// The compare tool: dragging left and right with the left mouse button blends between a sculpt and what it
/// is compared with, by the weight of target 10000 of a blend shape, and scrubs the time along with it.
///
/// What a drag drives is read when the mouse button is pressed, from option variables of the kit:
///   "DELVENSculptCompareToolList"    "start time,end time,speed,restore time,blend shape"; the speed is the
///                                    change of the weight per pixel, in percent
///   "DELVENCompareDraggerToolStep"   read and kept; nothing uses it
/// The kit's script procedures delvenSculpt_compareSculpt and delvenSculpt_resetCompare are called with each
/// drag event, before the weight is set, and on release. Nothing of a drag can be undone; all handlers
/// succeed, whatever the scripts do.
class DELVENCompareDraggerToolContext : public MPxContext {
  public:
    DELVENCompareDraggerToolContext();

    void toolOnSetup(MEvent& event) override;

    // Viewport 2.0 calls the second of each two, the legacy viewport the first; they do the same.
    MStatus doPress(MEvent& event) override;
    MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                    const MHWRender::MFrameContext& context) override;
    MStatus doDrag(MEvent& event) override;
    MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                   const MHWRender::MFrameContext& context) override;
    MStatus doRelease(MEvent& event) override;
    MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                      const MHWRender::MFrameContext& context) override;

  private:
    MStatus press(const MEvent& event);
    MStatus drag(const MEvent& event);
    MStatus release();
    void readToolList();
    void setTime(double time) const;
    void refreshView();

    M3dView view_;
    short pressX_ = 0;
    short currentX_ = 0;
    double step_ = 0.035;
    double value_ = 0.0;  // 0 to 1
    bool isActive_ = false;
    double restoreTime_ = 0.0;  // times in the user's unit
    MString node_;
    double startTime_ = 0.0;
    double endTime_ = 0.0;
    double timeRange_ = 0.0;
    double speed_ = 0.0;
};

/// The script command that makes compare tools.
class DELVENCompareDraggerToolContextCommand : public MPxContextCommand {
  public:
    static constexpr const char* kName = "DELVENCompareDraggerToolContext";

    static void* creator();

    MPxContext* makeObj() override;
};
