// Tools of a plug-in: making and asking them by script, the events of a drag, and what becomes of them when
// the plug-in goes. Beside them the other classes that tools use.
#include <maya/M3dView.h>
#include <maya/MAnimControl.h>
#include <maya/MCursor.h>
#include <maya/MEvent.h>
#include <maya/MGlobal.h>
#include <maya/MTime.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "api/plugin/pluginLoader.h"
#include "apiFixture.h"
#include "commands/commands.h"

using namespace apitest;

namespace {

using Names = std::vector<std::string>;
using host::mel::Value;

class ToolTest : public ApiTest {
  protected:
    ToolTest() : loader(session) {
        host::commands::registerCommands(registry);
        EXPECT_TRUE(loader.load(std::string(DELVEN_BINARY_DIR) + "/apiTestPlugin").ok);
    }

    /// Runs what is expected to succeed.
    Value run(const std::string& text) {
        host::mel::RunResult result = registry.run(text);
        EXPECT_TRUE(result.ok) << text << ": " << result.error.message;
        return result.value;
    }
    /// Runs what is expected to fail; the errors shown.
    Names errors(const std::string& text) {
        shown.errors.clear();
        EXPECT_FALSE(registry.run(text).ok) << text;
        return shown.errors;
    }
    /// What the tools wrote down since the last call.
    static std::string events() {
        const std::string all = text(MGlobal::optionVarStringValue("testPluginEvents"));
        MGlobal::removeOptionVar("testPluginEvents");
        return all;
    }
    static int toolsAlive() { return MGlobal::optionVarIntValue("testToolsAlive"); }
    static void setMood(const char* mood) { MGlobal::setOptionVarValue("testPluginMood", MString(mood)); }

    host::api::PluginLoader loader;
};

TEST_F(ToolTest, TheCommandMakesToolsByName) {
    EXPECT_EQ(run("pluginInfo -query -tool apiTestPlugin"), Names{"testPluginTool"});
    EXPECT_EQ(run("whatIs testPluginTool"), Value("Plug-in Command"));
    EXPECT_EQ(run("testPluginTool mine"), Value("mine"));
    EXPECT_EQ(run("testPluginTool"), Value("testPluginTool1"));
    EXPECT_EQ(run("testPluginTool"), Value("testPluginTool2"));
    EXPECT_EQ(toolsAlive(), 3);
    EXPECT_EQ(run("contextInfo -title mine"), Value("Test Tool"));
    EXPECT_EQ(run("contextInfo -class mine"), Value("testPluginTool"));
    EXPECT_EQ(run("testPluginTool -exists mine"), Value(1));
    EXPECT_EQ(run("testPluginTool -exists yours"), Value(0));
    EXPECT_EQ(errors("testPluginTool mine"), Names{"testPluginTool: Object's name 'mine' is not unique."});
    EXPECT_EQ(errors("testPluginTool \"two words\""), Names{"testPluginTool: 'two words' is no legal name."});
    EXPECT_EQ(errors("testPluginTool a b"), Names{"Too many objects or values."});
    setMood("noTool");
    EXPECT_EQ(errors("testPluginTool other"), Names{"testPluginTool: The tool could not be created."});
    EXPECT_EQ(toolsAlive(), 3);
    EXPECT_EQ(events(), "") << "none of them was set";
}

TEST_F(ToolTest, FlagsOfThePluginAreEditedAndQueriedPerTool) {
    run("testPluginTool -width 5 wide; testPluginTool plain");
    EXPECT_EQ(run("testPluginTool -query -width wide"), Value(5));
    EXPECT_EQ(run("testPluginTool -query -width plain"), Value(1));
    run("testPluginTool -edit -w 7 plain");
    EXPECT_EQ(run("testPluginTool -query -width plain"), Value(7));
    EXPECT_EQ(run("testPluginTool -query -width wide"), Value(5));
    EXPECT_EQ(errors("testPluginTool -edit -width -1 wide").size(), 1U);
    EXPECT_EQ(errors("testPluginTool -width -1 narrow").size(), 1U);
    EXPECT_EQ(run("contextInfo -exists narrow"), Value(0));
    EXPECT_EQ(errors("testPluginTool -query -width ghost"),
              Names{"testPluginTool: Object 'ghost' not found."});
    EXPECT_EQ(errors("testPluginTool -edit -width 1 selectSuperContext"),
              Names{"testPluginTool: Object 'selectSuperContext' not found."});
    EXPECT_EQ(errors("testPluginTool -height 1 tall"), Names{"Invalid flag '-height'."});
}

TEST_F(ToolTest, SettingAToolTellsTheOldAndTheNewOneAndIsUndone) {
    run("testPluginTool a; setToolTo a");
    EXPECT_EQ(events(), "on; ");
    run("setToolTo a");
    EXPECT_EQ(events(), "");
    run("testPluginTool b; setToolTo b");
    EXPECT_EQ(events(), "off; on; ");
    run("undo");
    EXPECT_EQ(run("currentCtx"), Value("a"));
    run("undo");
    EXPECT_EQ(run("currentCtx"), Value("selectSuperContext"));
    run("redo; redo");
    EXPECT_EQ(run("currentCtx"), Value("b"));
    EXPECT_EQ(events(), "off; on; off; on; off; on; ");
}

TEST_F(ToolTest, ADragSendsAPressDragsAndARelease) {
    run("testPluginTool tool; setToolTo tool; flushUndo");
    events();
    run("headlessDrag -from 10 20 -to 13 -22 -steps 4");
    EXPECT_EQ(events(),
              "press left 10 20; drag left 11 10; drag left 12 -1; drag left 12 -12; drag left 13 -22; ");
    run("headlessDrag -button 2 -from -32768 0 -to 32767 0");
    EXPECT_EQ(events(), "press middle -32768 0; drag middle 32767 0; ");
    run("headlessDrag -from 1 1 -to 9 9 -steps 0");
    EXPECT_EQ(events(), "press left 1 1; ");
    run("headlessDrag -legacyViewport -from 1 1 -to 2 2");
    EXPECT_EQ(events(), "press left 1 1; release left 2 2; ") << "each viewport calls its own handlers only";
    host::graph::Variants noLegacy;
    noLegacy.callsLegacyHandlers = false;
    graph.setVariants(noLegacy);
    run("headlessDrag -legacyViewport -from 1 1 -to 2 2");
    EXPECT_EQ(events(), "press left 1 1; drag left 2 2; ");
    graph.setVariants({});
    EXPECT_TRUE(shown.warnings.empty());
    run("headlessDrag -button 3 -from 1 1 -to 2 2");
    EXPECT_EQ(events(), "");
    EXPECT_EQ(shown.warnings.size(), 1U);
    EXPECT_FALSE(graph.undoQueue().canUndo());
}

TEST_F(ToolTest, ADragEndsWithTheToolThatFailsOrIsReplaced) {
    run("testPluginTool tool; setToolTo tool");
    events();
    setMood("refusePress");
    EXPECT_EQ(errors("headlessDrag -from 0 0 -to 9 9"), Names{"headlessDrag: The tool reports a failure."});
    EXPECT_EQ(events(), "press left 0 0; ");
    setMood("nest");
    run("headlessDrag -from 0 0 -to 9 9");
    EXPECT_EQ(shown.errors.back(), "headlessDrag: The mouse is being dragged already.");
    EXPECT_EQ(events(), "press left 0 0; drag left 9 9; ");
    setMood("switch");
    run("headlessDrag -from 0 0 -to 9 9");
    EXPECT_EQ(events(), "press left 0 0; off; ");
    EXPECT_EQ(run("currentCtx"), Value("selectSuperContext"));
}

TEST_F(ToolTest, UnloadingThePluginOfTheCurrentToolFallsBackToTheSelectTool) {
    run("testPluginTool a; testPluginTool b; setToolTo a; setToolTo b");
    events();
    ASSERT_TRUE(loader.unload("apiTestPlugin", false).ok);
    EXPECT_EQ(events(), "off; ");
    EXPECT_EQ(toolsAlive(), 0);
    EXPECT_FALSE(registry.has("testPluginTool"));
    EXPECT_EQ(run("currentCtx"), Value("selectSuperContext"));
    EXPECT_EQ(run("contextInfo -exists a"), Value(0));
    run("undo; undo; redo");
    EXPECT_EQ(run("currentCtx"), Value("selectSuperContext")) << "steps back to tools that are gone";
}

TEST_F(ToolTest, TheTimeIsInTheUsersUnit) {
    EXPECT_TRUE(MAnimControl::setCurrentTime(MTime(1.5, MTime::kSeconds)));
    EXPECT_EQ(MAnimControl::currentTime().unit(), MTime::kFilm);
    EXPECT_EQ(MAnimControl::currentTime().value(), 36.0);
    EXPECT_EQ(run("currentTime -query"), Value(36.0));
    EXPECT_FALSE(graph.undoQueue().canUndo());
    run("currentTime 7.25");
    EXPECT_EQ(MAnimControl::currentTime().value(), 7.25);
    for (const double time : {std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_FALSE(MAnimControl::setCurrentTime(MTime(time, MTime::kFilm)));
    EXPECT_EQ(MAnimControl::currentTime().value(), 7.25);
    EXPECT_TRUE(MAnimControl::setCurrentTime(MTime(2.0, MTime::kSeconds)));
    run("currentUnit -time \"29.97fps\"");
    EXPECT_EQ(MTime::uiUnit(), MTime::k29_97FPS);
    EXPECT_EQ(run("currentTime -query"), Value(60000.0 / 1001.0));
    EXPECT_TRUE(MTime::setUIUnit(MTime::kNTSCFrame));
    EXPECT_EQ(run("currentTime -query"), Value(60.0));
    EXPECT_EQ(run("currentUnit -query -time"), Value("ntsc"));
    EXPECT_FALSE(MTime::setUIUnit(MTime::kInvalid));
    run("file -new -force");
    EXPECT_EQ(MTime::uiUnit(), MTime::kFilm);
}

TEST_F(ToolTest, CurvesFollowTheTimeHoweverAPluginSetsIt) {
    run("createNode animCurveTU -n curve; setAttr curve.tan 2; setAttr -s 2 \"curve.ktv[0:1]\" 0 0 24 24");
    EXPECT_TRUE(MAnimControl::setCurrentTime(MTime(0.5, MTime::kSeconds)));
    EXPECT_EQ(run("getAttr curve.output"), Value(12.0));
    MSelectionList list;
    MPlug time;
    ASSERT_TRUE(list.add("time1.outTime"));
    ASSERT_TRUE(list.getPlug(0, time));
    EXPECT_TRUE(time.setValue(0.25));
    EXPECT_EQ(run("getAttr curve.output"), Value(6.0));
}

TEST_F(ToolTest, CursorsEventsAndViewsAreValues) {
    MCursor cursor = MCursor::handCursor;
    EXPECT_TRUE(cursor == MCursor::handCursor);
    EXPECT_TRUE(cursor != MCursor::crossHairCursor);
    cursor = MCursor::crossHairCursor;
    EXPECT_TRUE(cursor == MCursor::crossHairCursor);

    MEvent event;
    EXPECT_TRUE(event.setPosition(-3, 4));
    short x = 0;
    short y = 0;
    EXPECT_TRUE(event.getPosition(x, y));
    EXPECT_EQ(x, -3);
    EXPECT_EQ(y, 4);

    MStatus status = MS::kFailure;
    M3dView view = M3dView::active3dView(&status);
    EXPECT_TRUE(status);
    EXPECT_TRUE(view.refresh(false, true));
    EXPECT_EQ(session.refreshes(), 1);
}

}  // namespace
