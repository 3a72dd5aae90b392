#include <gtest/gtest.h>

#include <filesystem>

#include "fixtures.h"
#include "scratchFiles.h"

namespace {

using Strings = std::vector<std::string>;

Outcome exportData(Scene& scene, const std::string& targets, const std::string& path) {
    return scene.run("dv_blendShapeExportData -d " + targets + " -fn \"" + path + "\" bs");
}

TEST(BlendShapeExportData, WritesTheTargetsInTheOrderAsked) {
    Scene scene;
    addBlendShape(scene);
    scene.mel(
        "setAttr bs.it[0].itg[0].iti[6000].ipt -type pointArray 3 0.333333333 1.23e-7 -1234567.8 1 "
        "0.5 0 0 1 0 0 -2 1");
    const std::string before = scene.dump();
    const std::string path = scratchFile("export.json");
    const Outcome outcome = exportData(scene, "-i 4 -i 0 -cn \"my blink\"", path);
    EXPECT_EQ(outcome.value.toInt(), 1);
    EXPECT_EQ(outcome.warnings, Strings());
    EXPECT_EQ(fileBytes(path), R"({
	"4": {
		"name": "my blink",
		"data": {
			"5500": {
				"5": [0, 0.25, 0]
			},
			"6000": {
				"5": [0, 1, 0],
				"6": [0, 1, 0],
				"19": [1, 1, 1]
			}
		}
	},
	"0": {
		"name": "",
		"data": {
			"6000": {
				"3": [0.333333, 1.23e-07, -1.23457e+06],
				"7": [0.5, 0, 0],
				"12": [0, 0, -2]
			}
		}
	}
})") << "an index without a name gets an empty one";
    EXPECT_EQ(scene.changes(before), "");
}

TEST(BlendShapeExportData, LeavesOutWhatHasNoDataWithoutAStrayComma) {
    Scene scene;
    addBlendShape(scene);
    // An item without anything, one with a point too few, and one with a point too many.
    scene.mel(
        "setAttr bs.it[0].itg[4].iti[6000].ict -type componentList 0;"
        "setAttr bs.it[0].itg[0].iti[5100].ict -type componentList 2 vtx[0] vtx[1];"
        "setAttr bs.it[0].itg[0].iti[5100].ipt -type pointArray 1 1 1 1 1;"
        "setAttr bs.it[0].itg[0].iti[5200].ict -type componentList 1 vtx[6];"
        "setAttr bs.it[0].itg[0].iti[5200].ipt -type pointArray 2 1 2 3 1 4 5 6 1");
    const std::string path = scratchFile("gaps.json");
    Outcome outcome = exportData(scene, "-i 9 -i 0 -i 4 -i 7 -cn a -cn b -cn c -cn d", path);
    EXPECT_EQ(outcome.value.toInt(), 1);
    const Strings warnings{"Skipped index 9 because of missing data.",
                           "Skipped position 5100 of index 0 because of missing target data.",
                           "Skipped position 6000 of index 4 because of missing target data.",
                           "Skipped index 7 because of missing data."};
    EXPECT_EQ(outcome.warnings, warnings);
    const std::string text = fileBytes(path);
    EXPECT_NE(text.find("\t\t\t}\n\t\t}\n\t},\n\t\"4\": {"), std::string::npos) << text;
    EXPECT_NE(text.find("[0, 0.25, 0]\n\t\t\t}\n\t\t}\n\t}\n}"), std::string::npos) << text;
    EXPECT_NE(text.find("\"5200\": {\n\t\t\t\t\"6\": [1, 2, 3]\n\t\t\t}"), std::string::npos) << text;
    EXPECT_EQ(text.find("\"7\": {"), std::string::npos) << text;
}

TEST(BlendShapeExportData, LeavesTheOldFileWhenThereIsNothingToExport) {
    Scene scene;
    addBlendShape(scene);
    scene.mel(
        "setAttr bs.it[0].itg[4].iti[5500].ict -type componentList 0;"
        "setAttr bs.it[0].itg[4].iti[6000].ict -type componentList 0");
    const std::string path = writeScratchFile("kept.json", "old");
    const std::string fresh = scratchFile("fresh.json");
    for (const std::string& file : {path, fresh}) {
        const Outcome outcome = exportData(scene, "-i 4 -i 9 -cn c -cn d", file);
        EXPECT_EQ(outcome.value.toInt(), 0);
        EXPECT_EQ(outcome.errors, Strings{"No items to export"});
        EXPECT_EQ(outcome.warnings.size(), 3U);
    }
    EXPECT_EQ(fileBytes(path), "old");
    EXPECT_FALSE(std::filesystem::exists(fresh));
}

TEST(BlendShapeExportData, ReportsAFullDisk) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "needs /dev/full";
    Scene scene;
    addBlendShape(scene);
    const Outcome outcome = exportData(scene, "-i 0 -cn smile", "/dev/full");
    EXPECT_EQ(outcome.value.toInt(), 0);
    EXPECT_EQ(outcome.errors, Strings{"Unable to open file for writing."});
}

}  // namespace
