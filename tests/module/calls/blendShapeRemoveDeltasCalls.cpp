#include "commandTable.h"

namespace {

std::vector<Call> removeCalls() {
    const std::string command = "dv_blendShapeRemoveDeltas ";
    const std::string lock = "setAttr -lock 1 bs.it[0].itg[0].iti[6000].ipt;";
    const std::string emptyItem =
        "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 0;"
        "setAttr bs.it[0].itg[2].iti[6000].ipt -type pointArray 0";
    std::vector<Call> calls = refusedObjects("Remove", command);
    const std::vector<Call> further{
        refusedCall("RemoveFromAMissingInBetween", "", command + "-i 4 -ti 5300 bs",
                    "bs has no item 5300 in target 4."),
        refusedCall("RemoveFromAnImpossibleItem", "", command + "-ti -1 bs",
                    "bs has no item -1 in target 0."),
        refusedCall("RemoveFromAMissingTarget", "", command + "-i 2 bs", "bs has no target 2."),
        refusedCall("RemoveVerticesFromAnImpossibleTarget", "select base.vtx[3];", command + "-i -1 bs",
                    "bs has no target -1."),
        failingCall("RemoveLockedDeltas", lock, command + "bs", {"Error setting points for empty target."},
                    "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 1 vtx[0]"),
        failingCall("RemoveVerticesFromLockedDeltas", lock + "select base.vtx[3];", command + "bs",
                    {"Error setting points."},
                    "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 2 vtx[7] vtx[12]"),
        goodCall("RemoveAll", "", command + "bs", 1),
        goodCall("RemoveAllOfTheSelection", "select -noExpand bs;", command, 1),
        goodCall("RemoveAllOfAnEmptyItem", "setAttr bs.w[2] 0;", command + "-i 2 bs", 1, emptyItem),
        goodCall("RemoveVertices", "select base.vtx[3:8];", command + "bs", 1),
        goodCall("RemoveEveryVertex", "select base.vtx[*];", command + "bs", 1),
        goodCall("RemoveEdgesOfAnInBetween", "select base.e[*];", command + "-i 4 -ti 5500 bs", 1),
        goodCall("RemoveFacesOfAnEmptyItem", "setAttr bs.w[2] 0; select base.f[1];", command + "-i 2 bs", 1,
                 emptyItem),
    };
    calls.insert(calls.end(), further.begin(), further.end());
    return calls;
}

const CommandRows kRows{"dv_blendShapeRemoveDeltas", removeCalls()};

}  // namespace
