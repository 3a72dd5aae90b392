#include <maya/MEvent.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MPxCommand.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>

// The plug-in of the loader's tests. The option variable "testPluginMood" makes it misbehave.

namespace {

void count(const char* variable, int change) {
    MGlobal::setOptionVarValue(variable, MGlobal::optionVarIntValue(variable) + change);
}

bool hasMood(const char* mood) {
    return MGlobal::optionVarStringValue("testPluginMood") == mood;
}

/// Counts itself in an option variable while it lives.
class TestCommand : public MPxCommand {
  public:
    TestCommand() { count("testCommandsAlive", 1); }
    ~TestCommand() override { count("testCommandsAlive", -1); }
    MStatus doIt(const MArgList&) override {
        setResult("from the plug-in");
        return MS::kSuccess;
    }
    MStatus undoIt() override { return MS::kSuccess; }
    bool isUndoable() const override { return true; }
    static void* creator() { return new TestCommand; }
};

/// Makes a node that no record knows; each redo makes a new one.
class MakingCommand : public MPxCommand {
  public:
    MStatus doIt(const MArgList&) override { return redoIt(); }
    MStatus redoIt() override { return MGlobal::executeCommand("createNode transform -n made"); }
    MStatus undoIt() override { return MGlobal::executeCommand("delete made"); }
    bool isUndoable() const override { return true; }
    static void* creator() { return new MakingCommand; }
};

/// Writes what happens to it into an option variable, and counts itself in another while it lives. It has
/// both handlers of the press, that of Viewport 2.0 of the drag, and the classic one of the release.
class TestTool : public MPxContext {
  public:
    TestTool() {
        count("testToolsAlive", 1);
        setTitleString("Test Tool");
    }
    ~TestTool() override { count("testToolsAlive", -1); }

    void toolOnSetup(MEvent&) override { log("on"); }
    void toolOffCleanup() override { log("off"); }

    MStatus doPress(MEvent& event) override {
        log("press", event);
        if (hasMood("switch")) MGlobal::executeCommand("setToolTo selectSuperContext");
        if (hasMood("nest")) MGlobal::executeCommand("headlessDrag -from 0 0 -to 1 1");
        return hasMood("refusePress") ? MS::kFailure : MS::kSuccess;
    }

    MStatus doPress(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&) override {
        return doPress(event);
    }

    using MPxContext::doDrag;
    MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&) override {
        log("drag", event);
        return MS::kSuccess;
    }

    using MPxContext::doRelease;
    MStatus doRelease(MEvent& event) override {
        log("release", event);
        return MS::kSuccess;
    }

    int width = 1;

  private:
    static void log(const MString& text) {
        MGlobal::setOptionVarValue("testPluginEvents",
                                   MGlobal::optionVarStringValue("testPluginEvents") + text + "; ");
    }
    static void log(const char* kind, const MEvent& event) {
        short x = 0;
        short y = 0;
        event.getPosition(x, y);
        MString text(kind);
        text += event.mouseButton() == MEvent::kLeftMouse ? " left " : " middle ";
        log(text + static_cast<int>(x) + " " + static_cast<int>(y));
    }
};

class TestToolCommand : public MPxContextCommand {
  public:
    MPxContext* makeObj() override {
        tool_ = hasMood("noTool") ? nullptr : new TestTool;
        return tool_;
    }
    MStatus appendSyntax() override {
        MSyntax mine = syntax();
        return mine.addFlag("-w", "-width", MSyntax::kLong);
    }
    MStatus doEditFlags() override {
        const MArgParser arguments = parser();
        int width = 0;
        MStatus status = arguments.getFlagArgument("-width", 0, width);
        if (!status || width < 0) return MS::kFailure;
        tool_->width = width;
        return status;
    }
    MStatus doQueryFlags() override {
        return parser().isFlagSet("-width") ? setResult(tool_->width) : MS::kFailure;
    }
    static void* creator() { return new TestToolCommand; }

  private:
    TestTool* tool_ = nullptr;
};

}  // namespace

PLUGIN_EXPORT MStatus initializePlugin(MObject object) {
    MFnPlugin plugin(object, "Testers", "1.2", "Any");
    MGlobal::displayInfo("path " + plugin.loadPath());
    MStatus status = plugin.registerCommand("testPluginCommand", TestCommand::creator);
    if (!status) return status;
    if (plugin.registerCommand("testPluginCommand", TestCommand::creator)) return MS::kFailure;
    if (!plugin.registerCommand("testPluginMake", MakingCommand::creator)) return MS::kFailure;
    if (plugin.registerCommand("not legal", TestCommand::creator)) return MS::kFailure;
    if (plugin.registerCommand("testPluginOther", TestCommand::creator) != MS::kSuccess) return MS::kFailure;
    if (!plugin.registerContextCommand("testPluginTool", TestToolCommand::creator)) return MS::kFailure;
    if (plugin.registerContextCommand("testPluginOther", TestToolCommand::creator)) return MS::kFailure;
    return hasMood("refuse") ? MS::kFailure : MS::kSuccess;
}

PLUGIN_EXPORT MStatus uninitializePlugin(MObject object) {
    if (hasMood("stay")) return MS::kFailure;
    MFnPlugin plugin(object);
    if (plugin.deregisterCommand("setNumber")) return MS::kFailure;
    if (plugin.deregisterContextCommand("testPluginOther")) return MS::kFailure;
    if (!plugin.deregisterCommand("testPluginMake")) return MS::kFailure;
    return plugin.deregisterCommand("testPluginCommand");
}
