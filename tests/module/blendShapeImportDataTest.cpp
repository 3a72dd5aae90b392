#include <gtest/gtest.h>

#include <set>

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

TEST(BlendShapeImportData, KeepsAnItemForWhichTheFileHoldsNothingUsable) {
    Scene scene;
    addBlendShape(scene);
    const std::string before = scene.dump();
    const Outcome outcome = importText(scene,
                                       "{\n\t\"0\": {\n\t\t\"name\": \"a\",\n\t\t\"data\": "
                                       "{\n\t\t\t\"6000\": {\n\t\t\t\t\"5\": [1e400, 0, 0],\n"
                                       "\t\t\t\t\"6\": [1, 1]\n\t\t\t}\n\t\t}\n\t}\n}");
    EXPECT_EQ(outcome.value.toInt(), 0);
    EXPECT_EQ(outcome.warnings.size(), 2U) << ::testing::PrintToString(outcome.warnings);
    EXPECT_EQ(scene.changes(before), "");
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
    EXPECT_EQ(outcome.errors, Strings{"Error setting points."});
    EXPECT_EQ(outcome.warnings, Strings{"Skipped 1 indices of " + scratchFile("import.json") +
                                        " that are negative or too large."});
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
        const Outcome outcome = importText(scene, text);
        EXPECT_EQ(outcome.value.toInt(), 0);
        EXPECT_EQ(outcome.warnings, Strings{scratchFile("import.json") + " holds no deltas to import."});
        EXPECT_EQ(scene.changes(before), "") << text.substr(0, 60);
    }
    const std::string file = "-fn \"" + writeScratchFile("import.json", oneTarget("0", "smile")) + "\" bs";
    const Outcome outcome = scene.run("dv_blendShapeImportData -d -ld -rm -si 1 -di 1 " + file);
    EXPECT_EQ(outcome.value.toStringArray(), Strings{"0,6000"});
    EXPECT_EQ(outcome.warnings,
              Strings{scratchFile("import.json") + " holds no deltas of the source indices to import."});
    EXPECT_EQ(scene.changes(before), "");
    EXPECT_EQ(scene.run("dv_blendShapeImportData -ld " + file).warnings, Strings());
}

TEST(BlendShapeImportData, CompletesATargetThatHasNoWeight) {
    Scene scene;
    addBlendShape(scene);
    scene.mel("setAttr bs.it[0].itg[6].iti[5500].ipt -type pointArray 1 1 1 1 1");
    ASSERT_EQ(scene.mel("getAttr -mi bs.w").toIntArray(), std::vector<int>({0, 4}));
    EXPECT_EQ(importText(scene, oneTarget("6", "smile")).value.toInt(), 1);
    EXPECT_EQ(alias(scene, 6), "smile1");
    EXPECT_EQ(scene.mel("getAttr -mi bs.w").toIntArray(), std::vector<int>({0, 4, 6}));
    EXPECT_EQ(scene.mel("getAttr bs.w[6]").toFloat(), 0.0);
}

TEST(BlendShapeImportData, NumbersThousandsOfTargetsOfOneName) {
    constexpr int kCount = 4000;
    Scene scene;
    addBlendShape(scene);
    scene.mel("aliasAttr smile3 bs.weight[9000]; setAttr bs.w[9000] 0");
    std::string text = "{\n";
    for (int target = 10; target < 10 + kCount; ++target) {
        const std::string one = oneTarget(std::to_string(target), target % 2 == 0 ? "smile" : "smile1");
        text += one.substr(2, one.size() - 3) + ",\n";
    }
    EXPECT_EQ(importText(scene, text + "}").value.toInt(), 1);
    // The first of both is "smile1", after "smile" and before "smile3" that are there.
    EXPECT_EQ(alias(scene, 10), "smile1");
    EXPECT_EQ(alias(scene, 11), "smile11");
    EXPECT_EQ(alias(scene, 12), "smile2");
    EXPECT_EQ(alias(scene, 14), "smile4");
    EXPECT_EQ(alias(scene, 13), "smile12");
    const std::vector<int> weights = scene.mel("getAttr -mi bs.w").toIntArray();
    EXPECT_EQ(weights.size(), kCount + 3U);
    const Strings aliases = scene.mel("aliasAttr -query bs").toStringArray();
    EXPECT_EQ(std::set<std::string>(aliases.begin(), aliases.end()).size(), 2 * weights.size());
}

/// Indices are kept as the file says them; what works with them must not count up to them.
TEST(BlendShapeImportData, CommandsEndWhateverVerticesAFileNames) {
    Scene scene;
    addBlendShape(scene);
    const std::string points = "\"2147483647\": [0, 1, 0],\n\"3\": [0, 1, 0],\n\"2147483646\": [0, 1, 0]\n";
    const std::string before = "{\n\"2147483647\": {\n\"name\": \"far\",\n\"data\": {\n\"6000\": {\n";
    EXPECT_EQ(importText(scene, before + points + "}\n}\n}\n}").value.toInt(), 1);
    ASSERT_EQ(deltas(scene, 2147483647, 6000), "2147483647 0 1 0\n3 0 1 0\n2147483646 0 1 0\n");
    scene.mel("polyPlane -name copy -sx 4 -sy 3");
    const std::string file = "\"" + writeScratchFile("far.json", "\"2147483647\": 0.5,\n\"3\": 0.5") + "\"";
    const std::string target = " -i 2147483647 ";
    const std::string weights = "dv_blendShapeEditWeights " + target;
    const std::string items = "bs.it[0].itg[2147483647].iti[6000].";
    for (const std::string& command :
         Strings{weights + "-im -fn " + file + " bs",
                 weights + "-iv -av -om base bs",
                 weights + "-im -fn " + file + " bs",
                 weights + "-t -om base bs",
                 weights + "-im -fn " + file + " bs",
                 weights + "-fl 0.5 -om base bs",
                 weights + "-aw -om base -fn " + file + " bs",
                 weights + "-im -fn " + file + " bs",
                 weights + "-f bs",
                 "dv_blendShapeSplitTarget -b 0 -c 0 -iv 1 -om baseShapeOrig" + target + "bs",
                 "dv_blendShapeSplitTarget -b 1 -c 0 -iv 1 -om baseShapeOrig" + target + "bs",
                 "select base.vtx[0:3]; dv_blendShapeRemoveDeltas" + target + "bs",
                 "setAttr " + items + "ict -type componentList 2 vtx[2147483646] vtx[2147483647]",
                 "dv_getComponentList -at " + items + "ict",
                 "dv_getComponentList -at " + items + "ict -sl baseShape",
                 "ls -sl -fl",
                 "select -clear",
                 "dv_blendShapeExtractTarget -om baseShapeOrig" + target + "bs",
                 "blendShape -e -t base 1 copy 1 bs",
                 "setAttr bs.w[2147483647] 1"}) {
        const Outcome outcome = scene.run(command);
        EXPECT_EQ(outcome.errors, Strings()) << command;
    }
    EXPECT_EQ(scene.points("base").size(), 60U);
    const std::string mirror = "dv_blendShapeMirrorTarget -m baseShape -om baseShapeOrig -t 0 -ti 2147483647";
    EXPECT_EQ(scene.run(mirror + " -si 2147483647 bs").errors.size(), 1U) << "they have no partner";
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
