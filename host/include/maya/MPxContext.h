#pragma once

#include <hostPrivate/access.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Base of a plug-in's tools. The current tool gets the mouse events of the view.
///
/// Each event has two handlers: Viewport 2.0 calls the one that may draw, the legacy viewport the other one.
/// A handler that is not overridden does nothing and succeeds. Neither calls the other. The right mouse
/// button opens a menu and reaches no tool.
class OPENMAYAUI_EXPORT MPxContext {
  public:
    MPxContext();
    virtual ~MPxContext();

    /// Called when this becomes the current tool, and when it stops being it.
    virtual void toolOnSetup(MEvent& event);
    virtual void toolOffCleanup();

    virtual MStatus doPress(MEvent& event);
    virtual MStatus doRelease(MEvent& event);
    virtual MStatus doDrag(MEvent& event);

    virtual MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                            const MHWRender::MFrameContext& context);
    virtual MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                              const MHWRender::MFrameContext& context);
    virtual MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                           const MHWRender::MFrameContext& context);

    /// The name by which scripts look up what belongs to this kind of tool. If not overridden, it is the name
    /// of the command that made the tool.
    virtual void getClassName(MString& name) const;

  protected:
    /// The line that tells the user what to do.
    MStatus setHelpString(const MString& text);
    MStatus setTitleString(const MString& text);
    MStatus setCursor(const MCursor& cursor);

  private:
    friend struct host::api::ToolAccess;

    struct State;
    std::unique_ptr<State> state_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
