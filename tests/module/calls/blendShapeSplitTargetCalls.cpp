#include "commandTable.h"

namespace {

std::vector<Call> splitCalls() {
    const std::string command = "dv_blendShapeSplitTarget ";
    const std::string onBase = command + "-om baseShapeOrig -iv 1 ";
    const std::string painted =
        "setAttr bs.it[0].itg[0].tw[3] 1; setAttr bs.it[0].itg[0].tw[7] 0.5;"
        "setAttr bs.it[0].itg[0].tw[12] 0.5";
    std::vector<Call> calls = refusedObjects("Split", onBase);
    const std::vector<Call> further{
        refusedCall("SplitWithoutOriginal", "", command + "bs", "The original mesh is not defined."),
        refusedCall("SplitOnATransform", "", command + "-om base bs", "base is not a mesh object."),
        refusedCall("SplitOnNothing", "", command + "-om ghost bs", "ghost is not a mesh object."),
        refusedCall("SplitOnAMeshWithoutGeometry",
                    "setAttr bs.it[0].itg[0].tw[3] 0.25; createNode mesh -name hollow;",
                    command + "-om hollow bs", "hollow has no points."),
        refusedCall("SplitOverAWrongAxis", "", onBase + "-ax xy bs",
                    "The axis string is not correcty defined. Use x, y, or z."),
        refusedCall("SplitOfATargetThatIsNotThere", "", onBase + "-i 9 bs", "bs has no target 9."),
        refusedCall("SplitOfANegativeTarget", "", onBase + "-i -2 bs", "bs has no target -2."),
        failingCall("SplitLockedBaseDeltas", "setAttr -lock 1 bs.it[0].itg[0].iti[6000].ipt;",
                    onBase + "-i -1 bs", {"Error setting points."}),
        // Painted weights stay after an undo.
        goodCall("Split", "", onBase + "bs", 1, painted),
        goodCall("SplitBaseWeights", "", onBase + "-i -1 bs", 1,
                 "setAttr bs.it[0].bw[3] 1; setAttr bs.it[0].bw[7] 1; setAttr bs.it[0].bw[12] 1"),
        goodCall("SplitSelection", "select -noExpand bs;", onBase, 1, painted),
    };
    calls.insert(calls.end(), further.begin(), further.end());
    return calls;
}

const CommandRows kRows{"dv_blendShapeSplitTarget", splitCalls()};

}  // namespace
