#include "commandTable.h"

namespace {

std::vector<Call> replaceCalls() {
    const std::string command = "dv_blendShapeReplaceTarget ";
    const std::string sculpt =
        "duplicate -name sculpt base; delete |sculpt|baseShapeOrig; move -r 0 3 0 sculpt.vtx[7:8];";
    const std::string withSculpt = command + "-m sculptShape -om baseShapeOrig ";
    std::vector<Call> calls = refusedObjects("Replace", withSculpt);
    for (Call& call : calls)
        call.setup += sculpt + "select -clear;";
    const std::vector<Call> further{
        refusedCall("ReplaceWithoutMeshes", "", command + "bs",
                    "Mesh flag and original mesh flag must be defined."),
        refusedCall("ReplaceWithoutMesh", "", command + "-om baseShapeOrig bs",
                    "Mesh flag and original mesh flag must be defined."),
        refusedCall("ReplaceWithoutOriginal", sculpt, command + "-m sculptShape -om \"\" bs",
                    "Mesh flag and original mesh flag must be defined."),
        refusedCall("ReplaceByNothing", "", command + "-m ghost -om baseShapeOrig bs",
                    "Mesh flag and original mesh flag must be defined."),
        refusedCall("ReplaceByATransform", sculpt, command + "-m sculpt -om baseShapeOrig bs",
                    "sculpt is not a mesh object."),
        // The name is that of the new mesh.
        refusedCall("ReplaceOnATransform", sculpt, command + "-m sculptShape -om base bs",
                    "sculptShape is not a mesh object."),
        refusedCall("ReplaceByFewerVertices", "polyPlane -name small -subdivisionsX 1 -subdivisionsY 1;",
                    command + "-m smallShape -om baseShapeOrig bs",
                    "smallShape has fewer vertices than baseShapeOrig."),
        refusedCall("ReplaceByAMeshWithoutGeometry", "createNode mesh -name hollow;",
                    command + "-m hollow -om baseShapeOrig bs", "hollow has no points."),
        refusedCall("ReplaceOnAMeshWithoutGeometry", "createNode mesh -name hollow;",
                    command + "-m baseShape -om hollow bs", "hollow has no points."),
        failingCall("ReplaceImpossibleItem", sculpt, withSculpt + "-ti -1 bs",
                    {"Error setting components for empty target."}),
        failingCall("ReplaceLockedEmptyItem",
                    sculpt + "setAttr bs.w[2] 0; setAttr -lock 1 bs.it[0].itg[2].iti[6000].ipt;",
                    withSculpt + "-i 2 bs", {"Error setting points for empty target."},
                    "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 1 vtx[0]"),
        failingCall("ReplaceLockedDeltas", sculpt + "setAttr -lock 1 bs.it[0].itg[0].iti[6000].ipt;",
                    withSculpt + "bs", {"Error setting points."},
                    "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 2 vtx[7] vtx[8]"),
        goodCall("Replace", sculpt, withSculpt + "bs", 1),
        goodCall("ReplaceInBetween", sculpt, withSculpt + "-i 4 -ti 5500 bs", 1),
        refusedCall("ReplaceMissingTarget", sculpt, withSculpt + "-i 2 bs", "bs has no target 2."),
        refusedCall("ReplaceNegativeTarget", sculpt, withSculpt + "-i -1 bs", "bs has no target -1."),
        goodCall("ReplaceInBetweenOfATargetWithoutGroup", sculpt + "setAttr bs.w[7] 0;",
                 withSculpt + "-i 7 -ti 5500 bs", 1),
        goodCall("ReplaceMissingInBetween", sculpt, withSculpt + "-i 4 -ti 5300 bs", 1),
        goodCall("ReplaceEmptyItem", sculpt + "setAttr bs.w[2] 0;", withSculpt + "-i 2 bs", 1,
                 "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 0;"
                 "setAttr bs.it[0].itg[2].iti[6000].ipt -type pointArray 0"),
        goodCall("ReplaceSelection", sculpt + "select -noExpand bs;", withSculpt, 1),
    };
    calls.insert(calls.end(), further.begin(), further.end());
    return calls;
}

const CommandRows kRows{"dv_blendShapeReplaceTarget", replaceCalls()};

}  // namespace
