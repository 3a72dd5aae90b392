// The compare tool, driven by scripts as an artist's mouse drives it. The scripts of the kit that it calls
// print the weight and the time that they find.
#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "api/handles/session.h"
#include "fixtures.h"
#include "mel/tools.h"

namespace {

using Strings = std::vector<std::string>;
using host::mel::Value;

class CompareTool : public ::testing::Test {
  protected:
    CompareTool() {
        addBlendShape(scene);
        scene.mel(
            "global proc delvenReport(string $what)"
            "{ print($what + \" \" + `getAttr bs.w[10000]` + \" at \" + `currentTime -q` + \"; \"); }"
            "global proc delvenSculpt_compareSculpt() { delvenReport(\"compare\"); }"
            "global proc delvenSculpt_resetCompare() { delvenReport(\"reset\"); }");
        setUpTool();
    }

    void setUpTool() {
        EXPECT_EQ(scene.mel("DELVENCompareDraggerToolContext compareTool"), Value("compareTool"));
        scene.mel("setToolTo compareTool; currentTime 3; flushUndo");
    }
    void setList(const std::string& list) {
        scene.mel("optionVar -sv \"DELVENSculptCompareToolList\" \"" + list + "\"");
    }
    /// What the scripts of the kit printed during a drag, which must succeed without a message.
    std::string drag(const std::string& flags) {
        const Outcome outcome = scene.run("headlessDrag " + flags);
        EXPECT_TRUE(outcome.ok) << flags;
        EXPECT_EQ(outcome.errors, Strings());
        EXPECT_EQ(outcome.warnings, Strings());
        return outcome.printed;
    }
    double weight() { return scene.mel("getAttr bs.w[10000]").toFloat(); }
    double time() { return scene.mel("currentTime -q").toFloat(); }

    Scene scene;
};

TEST_F(CompareTool, TellsTheUserWhatItIs) {
    const host::mel::Tool& tool = *host::api::Session::current().commands().tools().current();
    EXPECT_EQ(scene.mel("contextInfo -title compareTool"), Value("DELVEN Compare Dragger Tool"));
    EXPECT_EQ(tool.cursor(), "hand");
    EXPECT_EQ(tool.help(),
              "Change the compare value by holding the left mouse button and sliding left/right");
    scene.mel("DELVENCompareDraggerToolContext idle");
    EXPECT_EQ(host::api::Session::current().commands().tools().find("idle")->help(), "")
        << "the help line is that of a tool in use";
}

class CompareToolInViewport : public CompareTool, public ::testing::WithParamInterface<const char*> {};

TEST_P(CompareToolInViewport, BlendsAndScrubsWhileItIsDragged) {
    setList("1,11,1,5,bs");
    const int refreshes = host::api::Session::current().refreshes();
    EXPECT_EQ(drag(std::string("-from 100 40 -to 200 10 -steps 4") + GetParam()),
              "compare 0 at 3; compare 0.25 at 3.5; compare 0.5 at 6; compare 0.75 at 8.5; reset 1 at 5; ");
    EXPECT_EQ(weight(), 1.0);
    EXPECT_EQ(time(), 5.0);
    EXPECT_EQ(host::api::Session::current().refreshes(), refreshes + 5) << "one an event, none for the press";
    EXPECT_EQ(scene.mel("undoInfo -query -undoQueueEmpty"), Value(1)) << "a drag is not undone";

    // The next press starts from 0 again, whatever the last drag left.
    EXPECT_EQ(drag(std::string("-from 200 0 -to 225 0") + GetParam()), "compare 1 at 5; reset 0.25 at 5; ");
}

INSTANTIATE_TEST_SUITE_P(Both, CompareToolInViewport, ::testing::Values("", " -legacyViewport"),
                         [](const auto& tested) {
                             return std::string(*tested.param == '\0' ? "Viewport2" : "Legacy");
                         });

struct Way {
    const char* name;
    const char* speed;
    int from;
    int to;
    float weight;
};

void PrintTo(const Way& way, std::ostream* out) {
    *out << way.name;
}

class CompareToolOnItsWay : public CompareTool, public ::testing::WithParamInterface<Way> {};

TEST_P(CompareToolOnItsWay, SetsTheWeight) {
    const Way& way = GetParam();
    scene.mel("setAttr bs.w[10000] 0.125; flushUndo");
    setList(std::string("0,0,") + way.speed + ",3,bs");
    drag("-from " + std::to_string(way.from) + " 0 -to " + std::to_string(way.to) + " 0");
    EXPECT_EQ(weight(), way.weight);
}

INSTANTIATE_TEST_SUITE_P(Module, CompareToolOnItsWay,
                         ::testing::Values(Way{"Right", "1", 10, 60, 0.5F}, Way{"Far", "1", 10, 160, 1.0F},
                                           Way{"Left", "1", 60, 10, 0.0F}, Way{"Nowhere", "1", 60, 60, 0.0F},
                                           Way{"Fast", "2.5", 0, 20, 0.5F},
                                           Way{"SixDecimals", "0.33333333", 0, 100, 0.333333F},
                                           Way{"Backwards", "-1", 60, 10, 0.5F},
                                           Way{"NoSpeed", "fast", 0, 50, 0.0F},
                                           Way{"NoNumber", "nan", 0, 50, 0.0F},
                                           // The difference of the positions has 16 bits as they have.
                                           Way{"BeyondSixteenBits", "1", -32768, 32767, 0.0F},
                                           Way{"RoundTheWorld", "1", 32767, -32719, 0.5F}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(CompareTool, WithoutATimeRangeOnlyTheReleaseSetsTheTime) {
    setList("7,7,1,5,bs");
    EXPECT_EQ(drag("-from 0 0 -to 100 0 -steps 2"), "compare 0 at 3; compare 0.5 at 3; reset 1 at 5; ");
}

TEST_F(CompareTool, TheTimeMayRunBackwards) {
    setList("10,-10,1,0.5,bs");
    EXPECT_EQ(drag("-from 0 0 -to 100 0 -steps 2"), "compare 0 at 3; compare 0.5 at 0; reset 1 at 0.5; ");
}

TEST_F(CompareTool, OnlyTheLeftButtonDrags) {
    setList("1,11,1,5,bs");
    EXPECT_EQ(drag("-button 2 -from 0 0 -to 50 0 -steps 3"), "reset 0 at 5; ");
    scene.mel("currentTime 3");
    EXPECT_EQ(scene.run("headlessDrag -button 3 -from 0 0 -to 50 0 -steps 3").printed, "");
    EXPECT_EQ(weight(), 0.0);
    EXPECT_EQ(time(), 3.0);
    EXPECT_EQ(drag("-from 0 0 -to 50 0 -steps 0"), "reset 0 at 5; ") << "a click";
}

class CompareToolWithList : public CompareTool, public ::testing::WithParamInterface<const char*> {};

TEST_P(CompareToolWithList, StaysIdleOrAsItWas) {
    if (*GetParam() != '\0') setList(GetParam());
    const int refreshes = host::api::Session::current().refreshes();
    EXPECT_EQ(drag("-from 0 0 -to 50 0 -steps 3"), "");
    EXPECT_EQ(time(), 3.0);
    EXPECT_EQ(host::api::Session::current().refreshes(), refreshes);

    setList("1,11,1,5,bs");
    EXPECT_EQ(drag("-from 0 0 -to 50 0"), "compare 0 at 3; reset 0.5 at 5; ");
    scene.mel("optionVar -remove \"DELVENSculptCompareToolList\"");
    if (*GetParam() != '\0') setList(GetParam());
    EXPECT_EQ(drag("-from 0 0 -to 100 0"), "compare 0.5 at 5; reset 1 at 5; ") << "the last valid list";
}

INSTANTIATE_TEST_SUITE_P(MissingOrMalformed, CompareToolWithList,
                         ::testing::Values("", ",", "bs", "1,11,1,5", "1,10,,5,bs", "1,11,1,5,bs,6"),
                         [](const auto& tested) { return "List" + std::to_string(tested.index); });

TEST_F(CompareTool, TheStepIsReadAndChangesNothing) {
    setList("0,0,1,3,bs");
    for (const char* step :
         {"-fv \"DELVENCompareDraggerToolStep\" 25", "-sv \"DELVENCompareDraggerToolStep\" x"}) {
        scene.mel(std::string("optionVar ") + step);
        drag("-from 0 0 -to 50 0");
        EXPECT_EQ(weight(), 0.5);
    }
}

TEST_F(CompareTool, GoesOnWhenAScriptOrTheNodeFails) {
    setList("1,11,1,5,ghost");
    const Outcome noNode = scene.run("headlessDrag -from 0 0 -to 50 0");
    EXPECT_TRUE(noNode.ok);
    EXPECT_EQ(noNode.errors, Strings{"setAttr: No object matches name: ghost.w[10000]"});
    EXPECT_EQ(noNode.printed, "compare 0 at 3; reset 0 at 5; ");

    scene.mel("global proc delvenSculpt_compareSculpt() { error \"no sculpt\"; }");
    setList("1,11,1,5,bs");
    const Outcome noSculpt = scene.run("headlessDrag -from 0 0 -to 50 0 -steps 2");
    EXPECT_TRUE(noSculpt.ok);
    EXPECT_EQ(noSculpt.errors, (Strings{"no sculpt", "no sculpt"}));
    EXPECT_EQ(noSculpt.printed, "reset 0.5 at 5; ");
}

TEST_F(CompareTool, IsIdleAfterTheRelease) {
    using host::mel::MouseEvent;
    setList("1,11,1,5,bs");
    drag("-from 0 0 -to 50 0");
    scene.mel("currentTime 9");
    for (const auto kind : {MouseEvent::Kind::Drag, MouseEvent::Kind::Release}) {
        const MouseEvent event{kind, MouseEvent::Button::Left, 90, 0, MouseEvent::Viewport::Viewport2};
        EXPECT_TRUE(host::api::Session::current().commands().tools().current()->handle(event));
    }
    EXPECT_EQ(weight(), 0.5);
    EXPECT_EQ(time(), 9.0);
}

TEST_F(CompareTool, ToolsAreApart) {
    setList("1,11,1,5,bs");
    drag("-from 0 0 -to 50 0");
    scene.mel("DELVENCompareDraggerToolContext other; setToolTo other");
    scene.mel("optionVar -remove \"DELVENSculptCompareToolList\"");
    EXPECT_EQ(drag("-from 0 0 -to 50 0"), "") << "it has never seen a list";
}

TEST_F(CompareTool, GoesWithThePluginAndComesBack) {
    setList("1,11,1,5,bs");
    scene.mel("unloadPlugin \"DELVENTools\"");
    EXPECT_EQ(scene.mel("currentCtx"), Value("selectSuperContext"));
    EXPECT_EQ(scene.mel("contextInfo -exists compareTool"), Value(0));
    EXPECT_FALSE(scene.run("headlessDrag -from 0 0 -to 50 0").ok);
    scene.mel("loadPlugin \"" + Scene::pluginFile() + "\"");
    setUpTool();
    EXPECT_EQ(drag("-from 0 0 -to 50 0"), "compare 0 at 3; reset 0.5 at 5; ");
}

TEST(CompareToolWithoutTheKit, NamesTheScriptsThatAreMissing) {
    Scene scene;
    scene.forgetScripts();
    addBlendShape(scene);
    scene.mel(
        "DELVENCompareDraggerToolContext tool; setToolTo tool;"
        "optionVar -sv \"DELVENSculptCompareToolList\" \"0,0,1,0,bs\"");
    const Outcome outcome = scene.run("headlessDrag -from 0 0 -to 50 0");
    EXPECT_TRUE(outcome.ok);
    EXPECT_EQ(outcome.errors, (Strings{"Cannot find procedure \"delvenSculpt_compareSculpt\".",
                                       "Cannot find procedure \"delvenSculpt_resetCompare\"."}));
    EXPECT_EQ(scene.mel("getAttr bs.w[10000]"), Value(0.5));
}

}  // namespace
