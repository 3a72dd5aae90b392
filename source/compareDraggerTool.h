#pragma once

#include <maya/M3dView.h>
#include <maya/MEvent.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

/// The compare tool: dragging left and right with the left mouse button blends between a sculpt and the shape
/// it is compared with, and scrubs the time. The blend is the weight of target 10000 of a blend shape.
///
/// When the mouse button is pressed, the tool reads its settings from option variables:
///     "DELVENSculptCompareToolList"    "start time,end time,speed,restore time,blend shape"
///     "DELVENCompareDraggerToolStep"   read and stored; nothing uses it
/// The speed is the change of the weight per pixel, in percent.
///
/// Each drag event calls the script procedure delvenSculpt_compareSculpt before it sets the weight. Releasing
/// the button calls delvenSculpt_resetCompare. A drag cannot be undone. All handlers succeed even if a script
/// fails.
class DELVENCompareDraggerToolContext : public MPxContext {
  public:
    DELVENCompareDraggerToolContext();

    void toolOnSetup(MEvent& event) override;

    // Viewport 2.0 calls the second of each pair, the legacy viewport the first. Both do the same.
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
    double restoreTime_ = 0.0;  // all times are in the user's time unit
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
