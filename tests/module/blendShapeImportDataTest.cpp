#include <gtest/gtest.h>

#include "fixtures.h"
#include "scratchFiles.h"

namespace {

using Strings = std::vector<std::string>;

/// A file with one target whose item 6000 moves vertex 1.
std::string oneTarget(const std::string& index, const std::string& name) {
    return "{\n\"" + index + "\": {\n\"name\": \"" + name +
           "\",\n\"data\": {\n\"6000\": {\n\"1\": [0, 3, 0]\n}\n}\n}\n}";
}

Outcome importText(Scene& scene, const std::string& text) {
    return scene.run("dv_blendShapeImportData -d -fn \"" + writeScratchFile("import.json", text) + "\" bs");
}

std::string alias(Scene& scene, int target) {
    return scene.mel("aliasAttr -query bs.w[" + std::to_string(target) + "]").toString();
}

TEST(BlendShapeImportData, NumbersAnAliasThatIsTaken) {
    Scene scene;
    addBlendShape(scene);
    scene.mel("aliasAttr blink1 bs.weight[9]");
    auto aliasOf = [&, target = 9](const std::string& name) mutable {
        const std::string index = std::to_string(++target);
        EXPECT_EQ(importText(scene, oneTarget(index, name)).errors, Strings());
        EXPECT_EQ(scene.mel("getAttr bs.w[" + index + "]").toFloat(), 0.0);
        EXPECT_EQ(deltas(scene, target, 6000), "1 0 3 0\n");
        return alias(scene, target);
    };
    EXPECT_EQ(aliasOf("smile"), "smile1");
    EXPECT_EQ(aliasOf("smile"), "smile2");
    EXPECT_EQ(aliasOf("blink"), "blink2");
    EXPECT_EQ(aliasOf(""), "weight_13");
    EXPECT_EQ(aliasOf("weight_13"), "weight_131");
    EXPECT_EQ(aliasOf("envelope"), "envelope1");
    EXPECT_EQ(aliasOf("big smile"), "bigsmile");
    EXPECT_EQ(aliasOf("say \"cheese\""), "say");
}

TEST(BlendShapeImportData, RunsNothingThatAFileSays) {
    Scene scene;
    addBlendShape(scene);
    const std::string names = scene.mel("ls").toString();
    const Strings hostile{"x`delete base`",
                          "x; delete base;",
                          "x';delete(\\\"base\\\")",
                          "$x {delete base}",
                          "x -rm smile",
                          "x\\",
                          "//",
                          "*"};
    for (std::size_t k = 0; k < hostile.size(); ++k) {
        const Outcome outcome = importText(scene, oneTarget(std::to_string(20 + k), hostile[k]));
        EXPECT_EQ(outcome.errors, Strings()) << hostile[k];
        EXPECT_EQ(outcome.value.toInt(), 1) << hostile[k];
    }
    EXPECT_EQ(scene.mel("ls").toString(), names);
    EXPECT_EQ(alias(scene, 0), "smile");
    EXPECT_EQ(alias(scene, 20), "xdeletebase");
    EXPECT_EQ(alias(scene, 27), "weight_27");
}

TEST(BlendShapeImportData, KeepsTheOtherItemsOfATargetThatIsThere) {
    Scene scene;
    addBlendShape(scene);
    scene.mel("setAttr bs.w[4] 0.25; flushUndo");
    const Outcome outcome = importText(scene, oneTarget("4", "other"));
    EXPECT_EQ(outcome.value.toInt(), 1);
    EXPECT_EQ(deltas(scene, 4, 6000), "1 0 3 0\n");
    EXPECT_EQ(deltas(scene, 4, 5500), "5 0 0.25 0\n");
    EXPECT_EQ(alias(scene, 4), "blink");
    EXPECT_EQ(scene.mel("getAttr bs.w[4]").toFloat(), 0.25);
    const std::string after = scene.dump();
    scene.run("undo");
    EXPECT_EQ(scene.changes(after), "") << "nothing of it is on the undo queue";
}

TEST(BlendShapeImportData, MovesOnlyVerticesThatTheMeshHas) {
    Scene scene;
    addBlendShape(scene);
    const std::vector<double> before = scene.points("base");
    const std::string points =
        "\"19\": [0, 1, 0],\n\"20\": [0, 1, 0],\n\"2147483647\": [0, 1, 0],\n\"99999999999\": [0, 1, 0],\n"
        "\"-1\": [0, 1, 0],\n\"0\": [0, 2, 0]\n";
    const Outcome outcome =
        importText(scene, "{\n\"1\": {\n\"data\": {\n\"6000\": {\n" + points + "}\n}\n}\n}");
    EXPECT_EQ(outcome.value.toInt(), 1);
    scene.mel("setAttr bs.w[1] 1");
    std::vector<double> after = scene.points("base");
    ASSERT_EQ(after.size(), before.size());
    after[1] -= 2.0;
    after[3 * 19 + 1] -= 1.0;
    EXPECT_EQ(after, before);
}

TEST(BlendShapeImportData, ReportsTargetsThatCannotBeWrittenAndImportsTheOthers) {
    Scene scene;
    addBlendShape(scene);
    scene.mel("setAttr -lock 1 bs.it[0].itg[0].iti[6000].ipt");
    const std::string item = "\"data\": {\n\"6000\": {\n\"1\": [0, 3, 0]\n}\n}\n";
    const Outcome outcome = importText(
        scene, "{\n\"-1\": {\n" + item + "},\n\"0\": {\n" + item + "},\n\"2\": {\n" + item + "}\n}");
    EXPECT_EQ(outcome.value.toInt(), 0);
    EXPECT_EQ(outcome.errors, (Strings{"Error setting components.", "Error setting points."}));
    EXPECT_EQ(deltas(scene, 2, 6000), "1 0 3 0\n");
    EXPECT_EQ(alias(scene, 2), "weight_2");
    EXPECT_EQ(scene.mel("dv_getBlendShapeIndices bs"), std::vector<int>({0, 2, 4}));
}

TEST(BlendShapeImportData, ChangesNothingForAFileOfAnotherKind) {
    Scene scene;
    addBlendShape(scene);
    const std::string before = scene.dump();
    for (const std::string& text :
         {std::string(), std::string("0 0.5\n5 0.25"), std::string("{\n\t\"0\": 0.5,\n\t\"5\": 0.25\n}"),
          std::string(100000, '{'), std::string(100000, '['), oneTarget("0", "smile").substr(0, 60)}) {
        EXPECT_EQ(importText(scene, text).value.toInt(), 1);
        EXPECT_EQ(scene.changes(before), "") << text.substr(0, 60);
    }
}

TEST(BlendShapeImportData, GivesBackWhatWasExportedByteForByte) {
    Scene scene;
    addBlendShape(scene);
    const std::string first = scratchFile("first.json");
    const std::string second = scratchFile("second.json");
    const std::string write = "dv_blendShapeExportData -d -i 4 -cn blink -i 0 -cn smile -fn ";
    scene.mel(
        "setAttr bs.it[0].itg[0].iti[6000].ipt -type pointArray 3 0.1234567 1e-9 -7654321 1 0 0 0 1 1 1 1 1");
    scene.mel(write + "\"" + first + "\" bs");
    scene.mel("polyCube -name other; blendShape -name copy other");
    scene.mel("dv_blendShapeImportData -d -fn \"" + first + "\" copy");
    scene.mel(write + "\"" + second + "\" copy");
    EXPECT_EQ(fileBytes(second), fileBytes(first));
}

}  // namespace
