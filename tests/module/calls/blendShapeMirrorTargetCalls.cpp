#include "commandTable.h"

namespace {

std::vector<Call> mirrorCalls() {
    const std::string command = "dv_blendShapeMirrorTarget ";
    const std::string onBase = command + "-om baseShapeOrig ";
    const std::string map = "dv_polyMapVertexOrder baseShapeOrig;";
    const std::string zero =
        "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 1 vtx[0];"
        "setAttr bs.it[0].itg[2].iti[6000].ipt -type pointArray 1 0 0 0 1;";
    const std::string lockPoints = "setAttr -lock 1 bs.it[0].itg[0].iti[6000].ipt;";
    std::vector<Call> calls = refusedObjects("Mirror", onBase);
    const std::vector<Call> further{
        refusedCall("MirrorWithoutOriginal", "", command + "bs", "The original mesh is not defined."),
        refusedCall("MirrorOnABlendShape", "", command + "-om bs bs", "bs is not a mesh object."),
        refusedCall("MirrorOnNothing", "", command + "-om ghost bs", "ghost is not a mesh object."),
        refusedCall("MirrorOnAnAmbiguousName", "duplicate -name other base;", onBase + "bs",
                    "baseShapeOrig is not a mesh object."),
        refusedCall("MirrorOnAnEmptyGroup", "group -empty -name g;", command + "-om g bs",
                    "g has no shape node."),
        refusedCall("MirrorWithAnOrderMeshThatIsNone", "group -empty -name g;", onBase + "-ob g bs",
                    "g has no shape node."),
        refusedCall("MirrorTweaksOfNoMesh", "", onBase + "-tm bs bs", "bs is not a mesh object."),
        refusedCall("MirrorOverAWrongAxis", "", onBase + "-ax X bs",
                    "The axis string is not correcty defined. Use x, y, or z."),
        refusedCall("MirrorNegativeIndex", "", onBase + "-si -1 bs", "bs has no target -1."),
        refusedCall("MirrorMissingTarget", "", onBase + "-si 2 bs", "bs has no target 2."),
        refusedCall("MirrorMissingInBetween", "", onBase + "-si 4 -ti 4 -tit 5300 bs",
                    "bs has no item 5300 in target 4."),
        refusedCall("MirrorNegativeDestination", "", onBase + "-t 2 -ti -1 bs", "bs has no target -1."),
        refusedCall("MirrorMissingDestination", "", onBase + "-t 2 -ti 2 bs", "bs has no target 2."),
        refusedCall("MirrorInPlaceOntoAMissingTarget", "", onBase + "-ti 2 bs", "bs has no target 2."),
        refusedCall("MirrorToANewTargetOfNegativeIndex", "", onBase + "-t 1 -ti -3 -tn right -m base bs",
                    "bs has no target -3."),
        failingCall("MirrorLockedEmptyTarget",
                    "setAttr bs.w[2] 0; setAttr -lock 1 bs.it[0].itg[2].iti[6000].ipt;", onBase + "-si 2 bs",
                    {"Error setting points for empty target."},
                    "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 1 vtx[0]"),
        failingCall("MirrorLockedEmptyTargetToAnother",
                    "setAttr bs.w[2] 0; setAttr -lock 1 bs.it[0].itg[2].iti[6000].ipt;",
                    onBase + "-si 2 -t 2 -ti 4 bs", {"Error setting points for empty target."},
                    "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 1 vtx[0]"),
        failingCall(
            "MirrorLockedDeltas", lockPoints, onBase + "bs", {"Error setting mirrored points."},
            "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 4 vtx[1] vtx[7] vtx[12] vtx[3]"),
        refusedCall("MirrorInBetweenWithoutPartners", "", onBase + "-si 4 -ti 0 -t 2 -tit 5500 -tol -1 bs",
                    "Unable to find 1 mirrored points. Please increase the tolerance to account for "
                    "non-symmetrical points."),
        refusedCall(
            "MirrorWithoutPartners", "", onBase + "-tol -1 bs",
            "Unable to find 3 mirrored points. Please increase the tolerance to account for non-symmetrical "
            "points."),
        refusedCall("MirrorAnEmptyTargetWithoutMap", "setAttr bs.w[2] 0;", onBase + "-ob \"\" -si 2 -ti 2 bs",
                    "Vertex order map attribute is not available."),
        refusedCall("MirrorOntoAnEmptyTargetWithoutMap", "setAttr bs.w[2] 0;",
                    onBase + "-ob \"\" -t 2 -ti 2 bs", "Vertex order map attribute is not available."),
        refusedCall("MirrorWithoutMap", "", onBase + "-ob \"\" bs",
                    "Vertex order map attribute is not available."),
        refusedCall("MirrorWithAMapOfAnotherLength",
                    map + "setAttr -type Int32Array baseShapeOrig.dvVertexOrderMap 2 1 0;",
                    onBase + "-ob baseShapeOrig bs",
                    "The vertex order map has 2 entries for 20 vertices. Create it again with "
                    "dv_polyMapVertexOrder."),
        refusedCall("MirrorToANewTargetWithoutMesh", "", onBase + "-t 1 -ti 1 -tn right bs",
                    "The -mesh flag is missing. It names the deformed mesh, which a new target needs."),
        failingCall("MirrorToANewTargetOfAnotherMesh", "polyCube -name other;",
                    onBase + "-t 1 -ti 1 -tn right -m other bs",
                    {"blendShape: other is not deformed by bs.", "Unable to create the target right."}),
        goodCall("MirrorInPlace", "", onBase + "bs", 1),
        goodCall("MirrorInBetween", "", onBase + "-si 4 -ti 4 -tit 5500 bs", 1),
        goodCall("MirrorToANewTarget", "", onBase + "-t 1 -ti 1 -tn right -m base bs", 1),
        goodCall("MirrorToANewTargetWithTheNameOfANodeElsewhere",
                 "group -empty -name right; group -name g right;", onBase + "-t 1 -ti 1 -tn right -m base bs",
                 1),
        goodCall("MirrorToANewTargetWithATakenAlias", "", onBase + "-t 1 -ti 1 -tn smile -m base bs", 1),
        goodCall("MirrorSkippingAnEndlessRange", "", onBase + "-sc \"base.vtx[-2147483648:2147483647]\" bs",
                 1,
                 "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 0;"
                 "setAttr bs.it[0].itg[0].iti[6000].ipt -type pointArray 0"),
        goodCall("MirrorToAnotherTarget", "", onBase + "-t 2 -ti 4 bs", 1,
                 "setAttr bs.it[0].itg[4].iti[6000].ict -type componentList 3 vtx[5] vtx[6] vtx[19]"),
        goodCall("MirrorInBetweenToATargetWithoutIt", "", onBase + "-si 4 -ti 0 -t 2 -tit 5500 bs", 1),
        goodCall("MirrorInBetweenInPlaceOntoATargetWithoutIt", "", onBase + "-si 4 -ti 0 -tit 5500 bs", 1),
        goodCall("MirrorToAnEmptyTarget", "setAttr bs.w[2] 0;", onBase + "-t 2 -ti 2 bs", 1,
                 "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 0;"
                 "setAttr bs.it[0].itg[2].iti[6000].ipt -type pointArray 0"),
        goodCall("MirrorAnEmptyTarget", "setAttr bs.w[2] 0;", onBase + "-si 2 -ti 2 bs", 1, zero),
        refusedCall(
            "MirrorWithAnOrderMeshWithoutMap", "duplicate -name other base; setAttr other.pnts[1] 5 6 7;",
            command + "-om base -ob other -tm other bs", "Vertex order map attribute is not available."),
        goodCall("MirrorSelection", "select -noExpand bs;", onBase, 1),
    };
    calls.insert(calls.end(), further.begin(), further.end());
    return calls;
}

const CommandRows kRows{"dv_blendShapeMirrorTarget", mirrorCalls()};

}  // namespace
