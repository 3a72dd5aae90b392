#include <maya/MGlobal.h>

#include <string>
#include <vector>

#include "api/plugin/pluginLoader.h"
#include "apiFixture.h"
#include "commands/commands.h"

using namespace apitest;

namespace {

using Names = std::vector<std::string>;

class PluginTest : public ApiTest {
  protected:
    PluginTest() : loader(session) {}

    bool load() { return loader.load(kFile).ok; }
    int commandsAlive() const { return MGlobal::optionVarIntValue("testCommandsAlive"); }

    static inline const std::string kFile = std::string(DELVEN_BINARY_DIR) + "/apiTestPlugin";
    host::api::PluginLoader loader;
};

TEST_F(PluginTest, LoadingRegistersCommandsAndUnloadingRemovesThem) {
    EXPECT_EQ(registry.plugins(), &loader);
    const host::mel::CommandResult loaded = loader.load(kFile);
    ASSERT_TRUE(loaded.ok) << loaded.error;
    EXPECT_EQ(loaded.value.toString(), "apiTestPlugin");
    EXPECT_EQ(loader.loaded(), Names{"apiTestPlugin"});
    const auto description = loader.describe("apiTestPlugin");
    ASSERT_TRUE(description);
    EXPECT_EQ(description->vendor, "Testers");
    EXPECT_EQ(description->version, "1.2");
    EXPECT_EQ(description->apiVersion, "20250000");
    EXPECT_EQ(description->commands, (Names{"testPluginCommand", "testPluginMake", "testPluginOther"}));
    EXPECT_EQ(description->path.rfind(kFile, 0), 0U);
    EXPECT_EQ(shown.infos, Names{std::string("path ") + DELVEN_BINARY_DIR});
    EXPECT_EQ(registry.owner("testPluginCommand"), "apiTestPlugin");
    EXPECT_EQ(registry.run("testPluginCommand").value.toString(), "from the plug-in");
    EXPECT_TRUE(loader.unload("apiTestPlugin", false).ok);
    EXPECT_FALSE(registry.has("testPluginCommand") || registry.has("testPluginOther"));
    EXPECT_TRUE(registry.has("setNumber"));
    EXPECT_TRUE(loader.loaded().empty());
    EXPECT_FALSE(loader.describe("apiTestPlugin"));
    EXPECT_FALSE(loader.unload("apiTestPlugin", false).ok);
}

TEST_F(PluginTest, APlainNameIsFoundBesideTheProgram) {
    for (int round = 0; round < 2; ++round) {
        const host::mel::CommandResult loaded = loader.load("apiTestPlugin");
        ASSERT_TRUE(loaded.ok) << loaded.error;
        EXPECT_EQ(loader.describe("apiTestPlugin")->path.rfind(kFile, 0), 0U);
        EXPECT_TRUE(loader.unload("apiTestPlugin", false).ok);
    }
}

TEST_F(PluginTest, LoadingTwiceWarns) {
    ASSERT_TRUE(load());
    EXPECT_TRUE(load());
    EXPECT_EQ(shown.warnings, Names{"Plug-in, \"apiTestPlugin\", is already loaded."});
    EXPECT_EQ(loader.loaded().size(), 1U);
}

TEST_F(PluginTest, UnloadingTakesItsCommandsOffTheUndoQueue) {
    ASSERT_TRUE(load());
    addNode("transform", "arm");
    registry.run("setNumber arm.tx 1; testPluginCommand");
    EXPECT_EQ(commandsAlive(), 1);
    ASSERT_TRUE(graph.undoQueue().canUndo());
    ASSERT_TRUE(loader.unload("apiTestPlugin", false).ok);
    EXPECT_EQ(commandsAlive(), 0);
    EXPECT_FALSE(graph.undoQueue().canUndo());
}

TEST_F(PluginTest, UnloadingTakesItsCommandsOutOfAnOpenUndoChunk) {
    ASSERT_TRUE(load());
    graph.undoQueue().openChunk();
    registry.run("testPluginCommand");
    EXPECT_EQ(commandsAlive(), 1);
    ASSERT_TRUE(loader.unload("apiTestPlugin", false).ok);
    EXPECT_EQ(commandsAlive(), 0);
}

TEST_F(PluginTest, ARedoThatMakesANewNodeLeavesTheStepsOnTheOldOneOut) {
    host::commands::registerCommands(registry);
    ASSERT_TRUE(load());
    const auto run = [&](const char* script) {
        const host::mel::RunResult result = registry.run(script);
        EXPECT_TRUE(result.ok) << script << ": " << result.error.message;
        return result.value.toString();
    };
    run("testPluginMake; createNode transform -n other; connectAttr other.tx made.tx; setAttr made.ty 3;");
    run("undo; undo; undo; undo; redo; redo;");
    EXPECT_TRUE(shown.warnings.empty()) << shown.warnings.front();
    run("redo");
    ASSERT_EQ(shown.warnings.size(), 1U);
    EXPECT_NE(shown.warnings[0].find("nodes that are not in the scene: made"), std::string::npos);
    run("redo");
    EXPECT_EQ(shown.warnings.size(), 2U);
    EXPECT_EQ(run("getAttr made.ty"), "0");
    // With the queue goes what was left of the old node.
    run("flushUndo; createNode transform -n next");
    EXPECT_EQ(run("listConnections other"), "");
}

TEST_F(PluginTest, APluginThatRefusesLeavesNothing) {
    MGlobal::setOptionVarValue("testPluginMood", MString("refuse"));
    const host::mel::CommandResult result = loader.load(kFile);
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.error, "initializePlugin function failed (apiTestPlugin)");
    EXPECT_TRUE(loader.loaded().empty());
    EXPECT_FALSE(registry.has("testPluginCommand"));
    MGlobal::removeOptionVar("testPluginMood");
    EXPECT_TRUE(load());
}

TEST_F(PluginTest, APluginThatWillNotGoStaysUnlessForced) {
    ASSERT_TRUE(load());
    MGlobal::setOptionVarValue("testPluginMood", MString("stay"));
    EXPECT_FALSE(loader.unload("apiTestPlugin", false).ok);
    EXPECT_TRUE(registry.has("testPluginCommand"));
    EXPECT_TRUE(loader.unload("apiTestPlugin", true).ok);
    EXPECT_FALSE(registry.has("testPluginCommand"));
}

TEST_F(PluginTest, WhatIsNoPluginIsNamedInTheError) {
    EXPECT_EQ(loader.load("nowhere/nothing").error,
              "Plug-in, \"nowhere/nothing\", was not found on MAYA_PLUG_IN_PATH or beside the program.");
    const std::string source = std::string(DELVEN_SOURCE_DIR) + "/CMakeLists.txt";
    EXPECT_EQ(loader.load(source).error.rfind("Unable to load plug-in \"" + source, 0), 0U);
    EXPECT_TRUE(loader.loaded().empty());
}

TEST_F(PluginTest, WhatDoesNotSayWhatItWasBuiltWithIsRefused) {
    const host::mel::CommandResult result = loader.load("apiTestPluginWithoutVersion");
    EXPECT_FALSE(result.ok);
    EXPECT_NE(result.error.find("apiTestPluginWithoutVersion"), std::string::npos);
    EXPECT_NE(result.error.find("MApiVersion is not among the names that it exports"), std::string::npos)
        << result.error;
    EXPECT_TRUE(shown.infos.empty()) << "it must not have run";
    EXPECT_FALSE(registry.has("testPluginCommand"));
}

}  // namespace
