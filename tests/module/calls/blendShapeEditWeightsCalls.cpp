#include "commandTable.h"

namespace {

std::vector<Call> editWeightsCalls() {
    const std::string command = "dv_blendShapeEditWeights ";
    const std::string om = "-om |base|baseShapeOrig ";
    const std::string painted = "setAttr bs.it[0].itg[0].tw[3] 0.25; setAttr bs.it[0].itg[0].tw[7] 0.5;";
    const std::string lock = "setAttr -lock 1 bs.it[0].itg[0].iti[6000].ipt;";
    const std::string skin = "joint -n low; select -clear; joint -n high; skinCluster -n skin low high base;";
    const std::string hollow = "createNode mesh -name hollow;";
    const std::string lockLater =
        "setAttr bs.it[0].itg[4].tw[5] 0.5; setAttr -lock 1 bs.it[0].itg[4].iti[6000].ipt;";
    const std::string wrongAxis = "The axis string is not correcty defined. Use x, y, or z.";
    std::vector<Call> calls = refusedObjects("Weights", command + "-gw");
    const std::vector<Call> further{
        refusedCall("MirrorWeightsWithoutMesh", painted, command + "-m bs",
                    "The original mesh is not defined."),
        refusedCall("TrimWithoutMesh", painted, command + "-t bs", "The original mesh is not defined."),
        refusedCall("AddWithoutMesh", painted, command + "-aw bs", "The original mesh is not defined."),
        refusedCall("SubtractWithoutMesh", painted, command + "-sub bs", "The original mesh is not defined."),
        refusedCall("FlushWithoutMesh", painted, command + "-fl 0.5 bs", "The original mesh is not defined."),
        // Also where something else is done in the end.
        refusedCall("QueryBesideMirrorWithoutMesh", painted, command + "-gi -m bs",
                    "The original mesh is not defined."),
        refusedCall("TrimOnAMeshWithoutGeometry", painted + hollow, command + "-t -om hollow bs",
                    "hollow has no points."),
        refusedCall("FlipWithoutMesh", painted, command + "-flp bs", "The original mesh is not defined."),
        refusedCall("WeightsOnAnEmptyGroup", "group -empty -name g;", command + "-iv -om g bs",
                    "g has no shape node."),
        refusedCall("WeightsOnABlendShape", "", command + "-iv -om bs bs", "bs is not a mesh object."),
        refusedCall("WeightsOnNoMesh", "", command + "-iv -om ghost bs", "ghost is not a mesh object."),
        refusedCall("WeightsWithAnOrderMeshThatIsNone", "", command + "-m -ob ghost " + om + "bs",
                    "ghost is not a mesh object."),
        refusedCall("WeightsOverAWrongAxis", "", command + "-gw -ax w bs", wrongAxis),
        refusedCall("WeightsOfANegativeTarget", "", command + "-gw -i -2 bs", "bs has no target -2."),
        refusedCall("FlushATargetThatIsNotThere", "", command + "-fl 0.5 -i 9 " + om + "bs",
                    "bs has no target 9."),
        refusedCall("WeightsOnNoSkin", "", command + "-ex -sc ghost -sm base bs",
                    "ghost is not a skin cluster."),
        refusedCall("WeightsOnNoInfluence", skin, command + "-ex -sc skin -sm base -ii 2 bs",
                    "skin has no influence 2."),
        refusedCall("WeightsOnNoSkinMesh", skin, command + "-im -sc skin bs",
                    "The skin mesh is not defined."),
        failingCall("ExportToTheSkinOfAnotherMesh", painted + skin + "polyPlane -name other;",
                    command + "-ex -sc skin -sm other bs", {"Error setting skin weights."}),
        failingCall("ExportAWeightForEachVertexToTheSkinOfAnotherMesh",
                    skin + "polyPlane -name other -sx 4 -sy 3;"
                           "dv_blendShapeEditWeights -sw -wi 0 -w 0.5 bs;"
                           "dv_blendShapeEditWeights -iv -av -om |base|baseShapeOrig bs;",
                    command + "-ex -sc skin -sm other bs", {"Error setting skin weights."}),
        failingCall("ImportFromTheSkinOfAnotherMesh", skin + "polyPlane -name other;",
                    command + "-im -sc skin -sm other bs", {"Error getting skin weights."}),
        refusedCall("SetTooFewWeights", "", command + "-sw -wi 1 -wi 2 -w 0.5 bs",
                    "Each weight index needs a weight."),
        refusedCall("SetANegativeIndex", painted, command + "-sw -wi 1 -w 0.5 -wi -1 -w 0.5 bs",
                    "A weight index must not be negative."),
        refusedCall(
            "MirrorWeightsWithoutPartners", painted, command + "-m -tol -1 " + om + "bs",
            "Unable to find 2 mirrored points. Please increase the tolerance to account for non-symmetrical "
            "points."),
        refusedCall("MirrorWeightsWithoutMap", painted, command + "-m -ob \"\" " + om + "bs",
                    "Vertex order map attribute is not available."),
        failingCall("FreezeALockedItem", painted + lock, command + "-f bs", {"Error setting points."}),
        failingCall("FreezeALockedLaterItem", lockLater, command + "-f -i 4 bs", {"Error setting points."},
                    "setAttr bs.it[0].itg[4].iti[6000].ict -type componentList 3 vtx[5] vtx[6] vtx[19]"),
        failingCall(
            "FreezeALockedEmptyItem",
            "setAttr bs.it[0].itg[2].tw[1] 0.5; setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 0; "
            "setAttr -lock 1 bs.it[0].itg[2].iti[6000].ipt;",
            command + "-f -i 2 bs", {"Error setting points for empty target."}),
        refusedCall("ExportNoWeights", "", command + "-ex -fn weights.json bs", "No weights to export"),
        refusedCall("ExportNoPaint", painted, command + "-ex -fp -fn weights.json bs",
                    "No weights to export"),
        refusedCall("ExportWeightsToAFolder", painted, command + "-ex -fn \"/\" bs",
                    "Unable to open file for writing"),
        refusedCall("ImportNoWeightFile", painted, command + "-im -fn \"no/such/file.json\" bs",
                    "Unable to open file for reading"),
        refusedCall("AddNoWeightFile", painted, command + "-aw -fn \"no/such/file.txt\" " + om + "bs",
                    "Unable to open file for reading"),

        {"NoMode", painted, command + "bs", true, {}, {}, ""},
        {"GetIndices", painted, command + "-gi -gw bs", true, std::vector<int>{3, 7}, {}, ""},
        {"GetWeights", painted, command + "-gw -iv bs", true, std::vector<double>{0.25, 0.5}, {}, ""},
        {"GetWeightsOfNoTarget", "", command + "-gw -i 9 bs", true, std::vector<double>{}, {}, ""},
        goodCall("SetWeights", painted, command + "-sw -iv -wi 1 -w 0.5 bs", 1),
        goodCall("SetNoWeights", painted, command + "-sw bs", 1),
        goodCall("Invert", painted, command + "-iv -m " + om + "bs", 1),
        goodCall("InvertNothing", "", command + "-iv " + om + "bs", 0),
        goodCall("MirrorWeights", painted, command + "-m -flp " + om + "bs", 1),
        goodCall("MirrorNoWeights", "", command + "-m " + om + "bs", 0),
        // Flipped weights stay after an undo.
        goodCall("FlipWeights", painted, command + "-flp -t " + om + "bs", 1,
                 "removeMultiInstance bs.it[0].itg[0].tw[3]; setAttr bs.it[0].itg[0].tw[1] 0.25"),
        goodCall("Trim", painted, command + "-t -f " + om + "bs", 1),
        goodCall("TrimNothing", "", command + "-t " + om + "bs", 0),
        goodCall("Freeze", painted, command + "-f -del bs", 1),
        goodCall("FreezeNothing", "", command + "-f bs", 0),
        goodCall("FreezeBaseWeights", "setAttr bs.it[0].bw[3] 0.5;", command + "-f -i -1 bs", 1),
        refusedCall(
            "FreezeLockedWeights",
            "setAttr bs.it[0].itg[4].tw[5] 0.5; setAttr bs.it[0].itg[4].iti[6000].ict -type componentList 3 "
            "vtx[5] vtx[6] vtx[19]; setAttr -lock 1 bs.it[0].itg[4].tw;",
            command + "-f -i 4 bs",
            "The weights cannot be removed, and so are not frozen. Unlock them first."),
        goodCall("FreezeATargetWithoutItems", "setAttr bs.it[0].itg[2].tw[3] 0.5;", command + "-f -i 2 bs",
                 1),
        goodCall("Flush", painted, command + "-fl 0.5 -del " + om + "bs", 1),
        goodCall("Delete", painted, command + "-del -ex bs", 1),
        goodCall("ExportToSkin", painted + skin, command + "-ex -sc skin -sm base -ii 1 bs", 1),
        goodCall("ExportToASkinThatLacksAVertex", painted + "setAttr bs.it[0].itg[0].tw[20] 0.5;" + skin,
                 command + "-ex -sc skin -sm base -ii 1 bs", 1),
        goodCall("ExportNothingToSkin", skin, command + "-ex -sc skin -sm base bs", 0),
        goodCall("ImportFromSkin", painted + skin, command + "-im -sc skin -sm base -ii 1 bs", 1),
        {"WeightsOfSelection",
         painted + "select -noExpand bs;",
         command + "-gi",
         true,
         std::vector<int>{3, 7},
         {},
         ""},
    };
    calls.insert(calls.end(), further.begin(), further.end());
    return calls;
}

const CommandRows kRows{"dv_blendShapeEditWeights", editWeightsCalls()};

}  // namespace
