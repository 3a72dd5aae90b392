#include <gtest/gtest.h>

#include "regionFixture.h"
#include "scratchFiles.h"

namespace {

using Strings = std::vector<std::string>;

/// The grid of addBlendShape with the region node "map": rows of 5 vertices, neighbours are next to each
/// other or 5 apart.
class EditRegionMap : public ::testing::Test {
  protected:
    EditRegionMap() {
        addBlendShape(scene_);
        scene_.mel(regionNodeScript() + "flushUndo");
    }

    Outcome call(const std::string& arguments) {
        return scene_.run("dv_editRegionMap -m baseShape " + arguments + " map");
    }

    /// A call that does its work without a message.
    void edit(const std::string& arguments) {
        EXPECT_EQ(scene_.mel("dv_editRegionMap -m baseShape " + arguments + " map").toInt(), 1);
    }

    std::vector<double> array(const std::string& attribute) {
        return scene_.mel("getAttr map." + attribute).toFloatArray();
    }

    double weight(int region, std::size_t vertex) {
        return array("regionWeights" + std::to_string(region)).at(vertex);
    }

    std::vector<double> color(int vertex) {
        return scene_.mel("polyColorPerVertex -q -rgb base.vtx[" + std::to_string(vertex) + "]")
            .toFloatArray();
    }

    Scene scene_;
};

TEST_F(EditRegionMap, PaintingGoesFromTheMapAndBack) {
    scene_.mel(setRegionScript(1, {0.6}) + setRegionScript(4, {0.2}) + setRegionScript(5, {0.2}));
    edit("-e -i 1");
    scene_.mel("setAttr bs.it[0].bw[0] 0.2; setAttr bs.it[0].bw[19] 0.75");
    edit("-atm -i 1");
    EXPECT_DOUBLE_EQ(weight(1, 0), 0.2);
    EXPECT_DOUBLE_EQ(weight(4, 0), 0.4);
    EXPECT_DOUBLE_EQ(weight(5, 0), 0.4);
    EXPECT_DOUBLE_EQ(weight(1, 19), 0.75);
    scene_.mel("setAttr map.regionLock[4] 1; setAttr bs.it[0].bw[0] 0.1");
    edit("-atm -dw 0 -i 1");
    EXPECT_DOUBLE_EQ(weight(4, 0), 0.4);
    EXPECT_DOUBLE_EQ(weight(1, 0), 0.1);
    scene_.mel("setAttr bs.it[0].bw[0] 0.9; setAttr map.regionLock[1] 1");
    edit("-atm -i 1");
    EXPECT_DOUBLE_EQ(weight(1, 0), 0.1) << "locked";
}

TEST_F(EditRegionMap, PaintingOutsideTheMapIsToldAndLeftOut) {
    scene_.mel(
        "setAttr map.regionWeights2 -type doubleArray 2 0.5 0.5; setAttr bs.it[0].bw[20] 0.5;"
        "setAttr bs.it[0].bw[2000000000] 0.5; setAttr bs.it[0].bw[5] 0.5");
    const Outcome outcome = call("-atm -i 2");
    EXPECT_EQ(outcome.value.toInt(), 1);
    EXPECT_EQ(outcome.warnings, Strings{"Skipped 2 painted vertices that the region map does not have. Use "
                                        "-clear on each region of a new map."});
    // A short array is filled up to the length of the others.
    EXPECT_EQ(array("regionWeights2").size(), 20U);
    EXPECT_EQ(weight(2, 1), 0.5);
    EXPECT_EQ(weight(2, 5), 0.5);
}

TEST_F(EditRegionMap, ArraysAreFilledUpToTheLongest) {
    scene_.mel(
        "setAttr map.regionWeights0 -type doubleArray 2 0.5 0.25;"
        "setAttr map.regionWeights5 -type doubleArray 3 0 0 0.125; setAttr bs.it[0].bw[19] 0.5");
    edit("-atm -i 2");
    std::vector<double> first(20, 0.0);
    first[0] = 0.5;
    first[1] = 0.25;
    std::vector<double> last(20, 0.0);
    last[2] = 0.125;
    EXPECT_EQ(array("regionWeights0"), first);
    EXPECT_EQ(array("regionWeights5"), last);
    EXPECT_EQ(weight(2, 19), 0.5);
}

TEST_F(EditRegionMap, ANewMapGetsItsSizeByClearing) {
    scene_.mel(
        "deleteAttr map.regionWeights3; addAttr -ln regionWeights3 -dt doubleArray map;"
        "deleteAttr map.regionLock");
    EXPECT_EQ(array("regionWeights3"), std::vector<double>());
    edit("-e -i 3");
    edit("-cl -i 3");
    EXPECT_EQ(array("regionWeights3"), std::vector<double>(20, 0.0));
}

TEST_F(EditRegionMap, AppendGoesByTheNeighboursOnTheMesh) {
    scene_.mel(setRegionScript(0, {1, 0.5}) + setRegionScript(3, {0, 0.5}));
    edit("-ap -i -1");
    EXPECT_EQ(weight(0, 2), 0.5);
    EXPECT_EQ(weight(3, 2), 0.5);
    EXPECT_EQ(weight(0, 5), 1.0);
    EXPECT_EQ(weight(3, 5), 0.0);
    EXPECT_EQ(weight(0, 7), 0.0) << "what vertex 2 got in the same call does not reach further";
    scene_.mel("setAttr map.regionLock[3] 1");
    edit("-ap -i -1");
    EXPECT_EQ(weight(3, 7), 0.0);
    EXPECT_EQ(weight(0, 7), 0.5);
}

TEST_F(EditRegionMap, StoresAndRestoresAllRegions) {
    scene_.mel(setRegionScript(0, {0.25}) + setRegionScript(5, {0, 0.75}));
    edit("-res 0");
    const std::vector<double> stored = array("regionWeightsBuffer5");
    EXPECT_EQ(stored, array("regionWeights5"));
    scene_.mel(setRegionScript(0, {}) + setRegionScript(5, {1, 1, 1}));
    const std::string changed = scene_.dump();
    edit("-res 1");
    EXPECT_EQ(weight(0, 0), 0.25);
    EXPECT_EQ(array("regionWeights5"), stored);
    EXPECT_EQ(array("regionWeightsBuffer5"), std::vector<double>());
    EXPECT_EQ(scene_.mel("listConnections map"), Strings{"bs"});
    scene_.run("undo");
    EXPECT_NE(scene_.changes(changed), "") << "undo leaves it";
    EXPECT_EQ(scene_.run("redo").errors, Strings());
    EXPECT_EQ(array("regionWeights5"), stored) << "the buffers are empty by now";
}

TEST_F(EditRegionMap, StoresAlsoWhereTheBufferIsConnectedAlready) {
    scene_.mel(setRegionScript(0, {0.25}) + setRegionScript(5, {0, 0.75}));
    scene_.mel("connectAttr map.regionWeights0 map.regionWeightsBuffer0");
    const Outcome outcome = call("-res 0");
    EXPECT_EQ(outcome.value.toInt(), 1);
    EXPECT_EQ(outcome.errors, Strings());
    EXPECT_EQ(outcome.warnings, Strings());
    for (const char* region : {"0", "5"})
        EXPECT_EQ(array(std::string("regionWeightsBuffer") + region),
                  array(std::string("regionWeights") + region));
    EXPECT_EQ(scene_.mel("listConnections map"), Strings{"bs"});
}

TEST_F(EditRegionMap, ColorsShowTheMapOrOneRegion) {
    scene_.mel(setRegionScript(0, {1, 0.5}) + setRegionScript(1, {0, 0.5}));
    edit("-col 1");
    const std::vector<double> first = color(0);
    const std::vector<double> mixed = color(1);
    edit("-col 1 -i 1");
    EXPECT_EQ(color(0), (std::vector<double>{0, 0, 0}));
    const std::vector<double> second = color(1);
    for (std::size_t part = 0; part < 3; ++part)
        EXPECT_NEAR(mixed[part], 0.5 * first[part] + second[part], 1e-6);
    edit("-col 2 -i 0");
    EXPECT_EQ(color(0), (std::vector<double>{1, 0, 0}));
    EXPECT_EQ(color(1), (std::vector<double>{0, 1, 0}));
    EXPECT_EQ(color(19), (std::vector<double>{0, 0, 1}));
    scene_.mel(setRegionScript(1, {0, 0.25}));
    const Outcome outcome = call("-col 0");
    EXPECT_EQ(outcome.value.toInt(), 0);
    const Strings error{
        "Partial weights found: 1 vertex is assigned in part only, first vtx[1]. Paint the rest and add "
        "it to the map, or use -append with the -index of a region, or with -index -1 to assign it by the "
        "neighbours."};
    EXPECT_EQ(outcome.errors, error);
    EXPECT_EQ(color(1), (std::vector<double>{0.75, 0.75, 0.75})) << "shown nevertheless";
    scene_.run("undo");
    scene_.mel("undoInfo -stateWithoutFlush off; " + setRegionScript(1, {0, 0.375, 0.5}) +
               "undoInfo -stateWithoutFlush on");
    EXPECT_EQ(scene_.run("redo").errors.at(0).find("Partial weights found: 2 vertices are"), 0U);
    EXPECT_EQ(color(1), (std::vector<double>{0.875, 0.875, 0.875})) << "redo runs once more";
}

TEST_F(EditRegionMap, FilesComeBackWithTheirSettings) {
    const std::string weights = setRegionScript(0, {0.333333333, 0.5}) + setRegionScript(5, {0, 0.5});
    for (const char* name : {"regions.json", "regions.txt"}) {
        const std::string first = scratchFile(name);
        const std::string second = scratchFile(std::string("again-") + name);
        scene_.mel(weights + "setAttr map.regions -type \"string\" \"brow,lip:\\\\u00e4\"");
        edit("-ex -fn \"" + first + "\"");
        scene_.mel(setRegionScript(0, {}) + setRegionScript(5, {1}) +
                   "setAttr map.regions -type \"string\" \"\"");
        edit("-im -fn \"" + first + "\"");
        EXPECT_EQ(weight(0, 0), 0.333333);
        EXPECT_EQ(weight(5, 0), 0.0);
        EXPECT_EQ(scene_.mel("getAttr map.regions").toString(), "brow,lip:\\u00e4");
        edit("-ex -fn \"" + second + "\"");
        EXPECT_EQ(fileBytes(second), fileBytes(first));
        edit("-ex -i 5 -fn \"" + second + "\"");
        edit("-im -i 2 -fn \"" + second + "\"");
        EXPECT_EQ(weight(2, 1), 0.5);
    }
    scene_.mel(setRegionScript(1, {0, 0.25}) + "setAttr map.regionWeights1 -type doubleArray 2 0 0.25");
    edit("-ex -i 1 -fn \"" + scratchFile("one.json") + "\"");
    EXPECT_EQ(fileBytes(scratchFile("one.json")), "{\n\t\"0\": 0,\n\t\"1\": 0.25\n}");
    edit("-ex -i 1 -fn \"" + scratchFile("one.JSON") + "\"");
    EXPECT_EQ(fileBytes(scratchFile("one.JSON")), "0 0\n1 0.25");
}

TEST_F(EditRegionMap, ARegionFileNeedsEachVertexOnce) {
    const std::string before = scene_.dump();
    const auto import = [&](const std::string& first) {
        std::string text = first;
        for (int vertex = 1; vertex < 20; ++vertex)
            text += "\n" + std::to_string(vertex) + " 0.5";
        return call("-im -i 3 -fn \"" + writeScratchFile("region.txt", text) + "\"").value.toInt();
    };
    for (const char* first : {"", "1 0.5", "20 0.5", "99999999999 0.5", "0 0.5\n0 0.25", "0 0.5\n20 0.5"}) {
        EXPECT_EQ(import(first), 0) << first;
        EXPECT_EQ(scene_.changes(before), "") << first;
    }
    EXPECT_EQ(import("0 0.25"), 1);
    EXPECT_EQ(weight(3, 0), 0.25);
}

TEST_F(EditRegionMap, NamesTheLineThatCannotBeRead) {
    const std::string before = scene_.dump();
    const std::string file = writeScratchFile("line.txt",
                                              "\xEF\xBB\xBF"
                                              "0 0.5\n\n1 0.5\n2 0.5 0.5\nx");
    EXPECT_EQ(call("-im -i 3 -fn \"" + file + "\"").errors,
              Strings{"Line 4 of " + file + " does not hold an index and a weight."});
    writeScratchFile("line.txt", "settings\n0 0 0 0 0 0 0\n1 0 0 0 0 0 0 0\n2 0");
    EXPECT_EQ(call("-im -fn \"" + file + "\"").errors,
              Strings{"Line 3 of " + file + " does not hold an index and six weights."});
    EXPECT_EQ(scene_.changes(before), "");
}

TEST_F(EditRegionMap, SettingsFromAFileAreTextOnly) {
    const std::string names = scene_.mel("ls").toString();
    const std::string lines = [] {
        std::string text;
        for (int vertex = 0; vertex < 20; ++vertex)
            text += "\n" + std::to_string(vertex) + " 0 0 0 0 0 0";
        return text;
    }();
    for (const std::string& settings :
         {std::string("\"; delete base; \""), std::string("x\\"), std::string("\\\"; delete base; //"),
          std::string("`delete base`$x\tm\xC3\xA4p")}) {
        edit("-im -fn \"" + writeScratchFile("settings.txt", settings + lines) + "\"");
        EXPECT_EQ(scene_.mel("getAttr map.regions").toString(), settings);
        EXPECT_EQ(scene_.mel("ls").toString(), names);
    }
    edit("-im -fn \"" + writeScratchFile("settings.txt", std::string("a\0b\x01\x7F;c", 7) + lines) + "\"");
    EXPECT_EQ(scene_.mel("getAttr map.regions").toString(), "ab;c");
}

TEST_F(EditRegionMap, RedoRunsOnceMoreOnWhatIsThere) {
    scene_.mel(setRegionScript(0, {1}) + "flushUndo");
    edit("-cl -i 0");
    scene_.mel("undo; undoInfo -stateWithoutFlush off;" + setRegionScript(0, {0.5}) +
               "undoInfo -stateWithoutFlush on; redo");
    EXPECT_EQ(weight(0, 0), 0.0);
    scene_.mel(
        "undo; undoInfo -stateWithoutFlush off; disconnectAttr bs.message map.DELVENRegion;"
        "undoInfo -stateWithoutFlush on");
    EXPECT_EQ(scene_.run("redo").errors,
              Strings{"The region data node is not connected to a blend shape node."});
    for (const char* node : {"base", "map"}) {
        SCOPED_TRACE(node);
        scene_.mel("connectAttr -f bs.message map.DELVENRegion; flushUndo");
        edit("-cl -i 0");
        scene_.mel(std::string("undo; undoInfo -stateWithoutFlush off; delete ") + node +
                   "; undoInfo -stateWithoutFlush on");
        EXPECT_EQ(scene_.run("redo").errors.size(), 1U);
        if (std::string(node) == "base") {
            scene_.mel("flushUndo; polyCube -name base; blendShape -name bs base");
        }
    }
}

TEST_F(EditRegionMap, RedoMissesAMeshThatWasDeletedByHand) {
    scene_.mel(setRegionScript(1, std::vector<double>(20, 1.0)));
    scene_.mel("polyPlane -name other -sx 4 -sy 3; dv_editRegionMap -m otherShape -col 1 map");
    scene_.mel("undo; undoInfo -stateWithoutFlush off; delete other; undoInfo -stateWithoutFlush on");
    EXPECT_EQ(scene_.run("redo").errors, Strings{"The mesh is not in the scene any more."});
}

}  // namespace
