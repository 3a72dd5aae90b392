#include "commandTable.h"
#include "regionFixture.h"
#include "scratchFiles.h"

namespace {

/// Twenty zeros, for the text of an array.
std::string zeros() {
    std::string text = "20";
    for (int vertex = 0; vertex < 20; ++vertex)
        text += " 0";
    return text;
}

/// Calls that do not begin to work.
std::vector<Call> refusedCalls() {
    const std::string command = "dv_editRegionMap ";
    const std::string node = regionNodeScript();
    const std::string notConnected = "The region data node is not connected to a blend shape node.";
    const std::string noRegion = "The index of a region is a number from 0 to 5.";
    const auto givesZero = [&](const char* name, const std::string& setup, const std::string& text,
                               const std::string& error) {
        return Call{name, node + setup, command + text, true, 0, {error}, ""};
    };
    return {
        givesZero("OfNothing", "", "-e", "No region node provided."),
        {"OfNoObject",
         "",
         command + "-e ghost",
         false,
         {},
         {"No object matches name: ghost", "Error getting objects"},
         ""},
        {"UnknownFlag",
         node,
         command + "-e -x map",
         false,
         {},
         {"Invalid flag '-x'.", "Error getting objects"},
         ""},
        givesZero("OfAnotherNode", "", "-e bs", notConnected),
        givesZero("OfANodeThatIsNotConnected", "disconnectAttr bs.message map.DELVENRegion;", "-e map",
                  notConnected),
        givesZero("OfANodeConnectedFromAMesh", "connectAttr -f baseShape.message map.DELVENRegion;", "-e map",
                  notConnected),
        givesZero("OfANodeWithoutARegion", "deleteAttr map.regionWeights3;", "-e map",
                  "map has no attribute regionWeights3."),
        givesZero("ClearWithoutMesh", "", "-cl map", "The mesh is not defined."),
        givesZero("ImportWithoutMesh", "", "-im map", "The mesh is not defined."),
        givesZero("ColorWithoutMesh", "", "-col 1 map", "The mesh is not defined."),
        givesZero("AppendWithoutMesh", "", "-ap map", "The mesh is not defined."),
        givesZero("ClearOnNoMesh", "", "-cl -m ghost map", "ghost is not a mesh object."),
        givesZero("ClearOnABlendShape", "", "-cl -m bs map", "bs is not a mesh object."),
        givesZero("EditOfNoRegion", "", "-e -i 6 map", noRegion),
        givesZero("AddToNoRegion", "", "-atm -i -1 map", noRegion),
        givesZero("AppendToNoRegion", "", "-ap -i -2 -m baseShape map", noRegion),
        givesZero("ExportOfNoRegion", "", "-ex -i -1 map", noRegion),
        givesZero("ColorInNoStyle", "", "-col 3 -m baseShape map", "The color style is 0, 1 or 2."),
        givesZero("StoreWithoutBuffer", "deleteAttr map.regionWeightsBuffer5;", "-res 0 map",
                  "map has no attribute regionWeightsBuffer5."),
        givesZero("RestoreWithoutBuffer", "deleteAttr map.regionWeightsBuffer0;", "-res 1 map",
                  "map has no attribute regionWeightsBuffer0."),
        givesZero("RestoreFromEmptyBuffers", "", "-res 1 map",
                  "map has no stored regions to restore. Store them first, with -restore 0."),
        {"NoMode", node, command + "-i 3 map", true, 0, {}, ""},
    };
}

std::vector<Call> fileCalls() {
    const std::string command = "dv_editRegionMap ";
    const std::string node = regionNodeScript();
    const std::string mesh = "-m baseShape ";
    const std::string file = "-fn \"" + scratchFile("regionCalls.txt") + "\" ";
    const std::string half = setRegionScript(2, {0, 0.5});
    const std::string write =
        node + half + "setAttr map.regions -type \"string\" \"brow lip\";" + command + "-ex " + file + "map;";
    const std::string empty = setRegionScript(2, {}) + "setAttr map.regions -type \"string\" \"\";";
    const std::string otherCount =
        "The stored vertex count doesn't match the resolution of the currently loaded mesh";
    const auto givesZero = [&](const char* name, const std::string& setup, const std::string& text,
                               const std::string& error) {
        return Call{name, setup, command + text, true, 0, {error}, ""};
    };
    return {
        givesZero("ExportNowhere", node, "-ex -fn \"no/such/folder/file\" map",
                  "Unable to open file for writing"),
        givesZero("ExportToAFullDisk", node, "-ex -fn \"/dev/full\" map", "Unable to open file for writing"),
        givesZero("ExportWithoutSettings", node + "deleteAttr map.regions;", "-ex " + file + "map",
                  "map has no attribute regions."),
        givesZero("ImportOfNoFile", node, "-im -fn \"none\" " + mesh + "map",
                  "Unable to open file for reading"),
        givesZero("ImportOfAFolder", node, "-im -i 2 -fn \"" + scratchFile(".") + "\" " + mesh + "map",
                  "Unable to open file for reading"),
        givesZero("ImportForAnotherMesh", write + "polyCube;", "-im -m pCubeShape1 " + file + "map",
                  otherCount),
        givesZero("ImportARegionAsAMap", node + command + "-ex -i 2 " + file + "map;",
                  "-im " + mesh + file + "map",
                  "Line 2 of " + scratchFile("regionCalls.txt") + " does not hold an index and six weights."),
        givesZero("ImportAMapAsARegion", write, "-im -i 2 " + mesh + file + "map",
                  "The file holds a whole region map. Import it without -index."),
        givesZero("ImportWithoutSettings", write + "deleteAttr map.regions;", "-im " + mesh + file + "map",
                  "map has no attribute regions."),
        {"ImportIntoLockedSettings",
         write + empty + "setAttr -lock on map.regions;",
         command + "-im " + mesh + file + "map",
         true,
         0,
         {"setAttr: The attribute 'map.regions' is locked or connected and cannot be modified.",
          "Error setting the settings of the regions."},
         ""},
        {"Export", write, command + "-ex " + file + "map", true, 1, {}, ""},
        {"Import",
         write + empty,
         command + "-im " + mesh + file + "map",
         true,
         1,
         {},
         half + "setAttr map.regions -type \"string\" \"brow lip\";"},
        {"ImportOneRegion",
         node + half + command + "-ex -i 2 " + file + "map;",
         command + "-im -i 4 " + mesh + file + "map",
         true,
         1,
         {},
         setRegionScript(4, {0, 0.5})},
    };
}

/// Calls that change the map, or what shows it. Undo leaves what they have made.
std::vector<Call> editCalls() {
    const std::string command = "dv_editRegionMap ";
    const std::string node = regionNodeScript();
    const std::string mesh = "-m baseShape ";
    const std::string painted = node + "setAttr bs.it[0].bw[1] 0.5; setAttr bs.it[0].bw[3] 0.25;";
    const std::string half = node + setRegionScript(0, {0.5, 0.5});
    std::string buffers;
    for (int region = 0; region < 6; ++region) {
        const std::string number = std::to_string(region);
        buffers += "setAttr map.regionWeightsBuffer" + number + " -type doubleArray " + zeros() + ";";
    }
    std::string baseWeights = "setAttr -size 20 bs.it[0].bw[0:19] 0.5 0.5";
    std::string colors = "polyColorPerVertex -rgb 0 0 0 base.vtx[0:19];";
    for (int vertex = 2; vertex < 20; ++vertex)
        baseWeights += " 0";
    return {
        {"Add", painted, command + "-atm -i 2 map", true, 1, {}, setRegionScript(2, {0, 0.5, 0, 0.25})},
        {"AddToALockedArray",
         painted + "setAttr -lock on map.regionWeights0;",
         command + "-atm -i 2 map",
         false,
         {},
         {"Error setting region weights."},
         ""},
        {"AppendBesideALockedArray",
         half + "setAttr -lock on map.regionWeights3;",
         command + "-ap -i 1 " + mesh + "map",
         false,
         {},
         {"Error setting region weights."},
         ""},
        {"StoreBesideALockedArray",
         half + "setAttr -lock on map.regionWeightsBuffer3;",
         command + "-res 0 map",
         false,
         {},
         {"Error setting region weights."},
         ""},
        {"RestoreBesideALockedArray",
         half + buffers + "setAttr -lock on map.regionWeightsBuffer3;",
         command + "-res 1 map",
         false,
         {},
         {"Error setting region weights."},
         ""},
        {"RestoreFromALockedFirstArray",
         half + buffers + "setAttr -lock on map.regionWeightsBuffer0;",
         command + "-res 1 map",
         false,
         {},
         {"Error setting region weights."},
         ""},
        {"Append",
         half,
         command + "-ap -i 1 " + mesh + "map",
         true,
         1,
         {},
         setRegionScript(1, {0.5, 0.5, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1})},
        {"AppendToTheFirstRegion",
         half,
         command + "-ap -i 0 " + mesh + "map",
         true,
         1,
         {},
         setRegionScript(0, std::vector<double>(20, 1.0))},
        {"Edit", half, command + "-e -i 0 map", true, 1, {}, baseWeights},
        {"Clear", half, command + "-cl " + mesh + "map", true, 1, {}, setRegionScript(0, {})},
        {"Store", node, command + "-res 0 map", true, 1, {}, buffers},
        {"Color",
         node,
         command + "-col 0 " + mesh + "map",
         true,
         1,
         {},
         colors + "setAttr baseShape.displayColors 1;"},
        // The first that is asked for in the order of the modes.
        {"AddBeforeTheOthers",
         painted,
         command + "-atm -ap -e -cl -res 1 -col 1 -i 2 " + mesh + "map",
         true,
         1,
         {},
         setRegionScript(2, {0, 0.5, 0, 0.25})},
        {"EditBeforeTheOthers",
         half,
         command + "-e -cl -res 1 -col 1 " + mesh + "map",
         true,
         1,
         {},
         baseWeights},
    };
}

std::vector<Call> allCalls() {
    std::vector<Call> calls = refusedCalls();
    for (const std::vector<Call>& more : {fileCalls(), editCalls()})
        calls.insert(calls.end(), more.begin(), more.end());
    return calls;
}

const CommandRows kRows{"dv_editRegionMap", allCalls()};

}  // namespace
