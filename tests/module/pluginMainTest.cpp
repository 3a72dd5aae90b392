// The module brings the one version string that a program may have.
#define MNoVersionString
#include <gtest/gtest.h>
#include <maya/MFnPlugin.h>

#include <filesystem>

#include "commandTable.h"

namespace {

/// The names of all commands, in the order of their registration.
Strings allNames() {
    Strings names;
    for (const CommandTable& table : commandTables())
        names.push_back(table.command);
    return names;
}

const std::string kToolCommand = "DELVENCompareDraggerToolContext";

Strings allNamesAndTheTool() {
    Strings names = allNames();
    names.push_back(kToolCommand);
    return names;
}

TEST(PluginMain, RegistersAllCommandsInOrder) {
    Scene scene;
    EXPECT_EQ(scene.mel("pluginInfo -query -command \"DELVENTools\""), allNames());
    EXPECT_EQ(scene.mel("pluginInfo -query -tool \"DELVENTools\""), Strings{kToolCommand});
    EXPECT_EQ(scene.mel("pluginInfo -query -version \"DELVENTools\""), host::mel::Value("5.10.0"));
}

TEST(PluginMain, UnloadingRemovesTheCommandsAndLoadingBringsThemBack) {
    Scene scene;
    addBlendShape(scene);
    scene.mel("dv_blendShapeExtractTarget -om baseShapeOrig bs; unloadPlugin -force \"DELVENTools\"");
    for (const std::string& name : allNamesAndTheTool()) {
        const Outcome outcome = scene.run(name + " bs");
        EXPECT_FALSE(outcome.ok);
        EXPECT_EQ(outcome.errors, Strings{"Cannot find procedure \"" + name + "\"."});
    }
    // Undo entries of its commands went with it.
    const std::string before = scene.dump();
    scene.run("undo");
    EXPECT_EQ(scene.changes(before), "");
    scene.mel("loadPlugin \"" + Scene::pluginFile() + "\"");
    EXPECT_EQ(scene.mel("dv_getBlendShapeIndices bs"), std::vector<int>({0, 4}));
}

/// "Register dv_a command failed.: ...", once for each command, in order.
void expectLines(const std::string& output, const std::string& verb) {
    std::size_t at = 0;
    for (const std::string& name : allNamesAndTheTool()) {
        at = output.find(verb + ' ' + name + " command failed.", at);
        ASSERT_NE(at, std::string::npos) << verb << ' ' << name << " in\n" << output;
        ++at;
    }
}

TEST(PluginMain, ASecondCopyFailsNameByNameAndIsTurnedAway) {
    Scene scene;
    const std::filesystem::path original = Scene::pluginFile();
    const std::filesystem::path copy =
        original.parent_path() / ("DELVENToolsCopy" + original.extension().string());
    std::filesystem::copy_file(original, copy, std::filesystem::copy_options::overwrite_existing);
    Outcome outcome;
    const std::string output =
        standardErrorOf([&] { outcome = scene.run("loadPlugin \"" + copy.generic_string() + "\""); });
    std::filesystem::remove(copy);
    EXPECT_FALSE(outcome.ok);
    expectLines(output, "Register");
    EXPECT_EQ(scene.mel("pluginInfo -query -listPlugins"), Strings{"DELVENTools"});
    EXPECT_TRUE(scene.run("dv_getBlendShapeIndices -h").ok) << "the first copy's commands stay";
}

TEST(PluginMain, ATakenNameDoesNotKeepTheOthersFromBeingOffered) {
    Scene scene(Scene::Plugin::NotLoaded);
    const Strings names = allNames();
    scene.takeCommandName(names.front());
    Outcome outcome;
    const std::string output =
        standardErrorOf([&] { outcome = scene.run("loadPlugin \"" + Scene::pluginFile() + "\""); });
    EXPECT_TRUE(outcome.ok) << "the last registration decides";
    EXPECT_NE(output.find("Register " + names.front() + " command failed."), std::string::npos) << output;
    EXPECT_EQ(scene.mel("pluginInfo -query -command \"DELVENTools\""),
              Strings(names.begin() + 1, names.end()));
    EXPECT_TRUE(scene.run("dv_getBlendShapeIndices -h").ok);
}

TEST(PluginMain, TheLastRegistrationDecidesWhetherItLoads) {
    Scene scene(Scene::Plugin::NotLoaded);
    scene.takeCommandName(kToolCommand);
    Outcome outcome;
    const std::string output =
        standardErrorOf([&] { outcome = scene.run("loadPlugin \"" + Scene::pluginFile() + "\""); });
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(output.find("Register " + kToolCommand + " command failed."), 0U) << output;
    EXPECT_EQ(scene.mel("pluginInfo -query -loaded \"DELVENTools\""), Value(0));
}

TEST(PluginMain, RemovingWhatIsNotRegisteredSaysSoNameByName) {
    Scene scene(Scene::Plugin::NotLoaded);
    MStatus status;
    const std::string output = standardErrorOf([&] { status = uninitializePlugin(MObject()); });
    EXPECT_EQ(status.error(), true);
    expectLines(output, "Deregister");
}

}  // namespace
