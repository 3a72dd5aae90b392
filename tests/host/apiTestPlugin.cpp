#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MPxCommand.h>

// The plug-in of the loader's tests. The option variable "testPluginMood" makes it misbehave.

namespace {

/// Counts itself in an option variable while it lives.
class TestCommand : public MPxCommand {
  public:
    TestCommand() { count(1); }
    ~TestCommand() override { count(-1); }
    MStatus doIt(const MArgList&) override {
        setResult("from the plug-in");
        return MS::kSuccess;
    }
    MStatus undoIt() override { return MS::kSuccess; }
    bool isUndoable() const override { return true; }
    static void* creator() { return new TestCommand; }

  private:
    static void count(int change) {
        MGlobal::setOptionVarValue("testCommandsAlive",
                                   MGlobal::optionVarIntValue("testCommandsAlive") + change);
    }
};

bool hasMood(const char* mood) {
    return MGlobal::optionVarStringValue("testPluginMood") == mood;
}

}  // namespace

PLUGIN_EXPORT MStatus initializePlugin(MObject object) {
    MFnPlugin plugin(object, "Testers", "1.2", "Any");
    MGlobal::displayInfo("path " + plugin.loadPath());
    MStatus status = plugin.registerCommand("testPluginCommand", TestCommand::creator);
    if (!status) return status;
    if (plugin.registerCommand("testPluginCommand", TestCommand::creator)) return MS::kFailure;
    if (plugin.registerCommand("not legal", TestCommand::creator)) return MS::kFailure;
    if (plugin.registerCommand("testPluginOther", TestCommand::creator) != MS::kSuccess) return MS::kFailure;
    return hasMood("refuse") ? MS::kFailure : MS::kSuccess;
}

PLUGIN_EXPORT MStatus uninitializePlugin(MObject object) {
    if (hasMood("stay")) return MS::kFailure;
    MFnPlugin plugin(object);
    if (plugin.deregisterCommand("setNumber")) return MS::kFailure;
    return plugin.deregisterCommand("testPluginCommand");
}
