#include "commandTable.h"

namespace {

std::vector<Call> moveCalls() {
    const std::string command = "dv_blendShapeSetInbetweenPosition ";
    std::vector<Call> calls = refusedObjects("Move", command);
    const std::vector<Call> further{
        refusedCall("MoveFromAnImpossiblePosition", "", command + "-sp -1 bs",
                    "bs has no item -1 in target 0."),
        refusedCall("MoveAMissingInBetween", "", command + "-i 4 -sp 5700 -tp 5800 bs",
                    "bs has no item 5700 in target 4."),
        refusedCall("MoveInAMissingTarget", "", command + "-i 2 -tp 5500 bs", "bs has no target 2."),
        failingCall("MoveFromALockedEmptyPosition",
                    "setAttr bs.w[2] 0; setAttr -lock 1 bs.it[0].itg[2].iti[6000].ipt;",
                    command + "-i 2 -tp 5500 bs", {"Error setting points for empty target."},
                    "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 1 vtx[0]"),
        {"MoveALockedItem",
         "setAttr bs.ibig[4].ibi[5500].ibtn -type \"string\" \"half\"; setAttr -lock 1 "
         "bs.it[0].itg[4].iti[5500];",
         command + "-i 4 -sp 5500 -tp 5300 bs",
         true,
         0,
         {"removeMultiInstance: 'bs.it[0].itg[4].iti[5500]' is locked.",
          "Item 5500 in target 4 of bs cannot be removed. Unlock it first."},
         ""},
        goodCall("Move", "", command + "-i 4 -sp 5500 -tp 5300 bs", 1),
        goodCall("MoveOntoItself", "", command + "bs", 1),
        goodCall("MoveOntoAnother", "", command + "-i 4 -sp 5500 -tp 6000 bs", 1,
                 "removeMultiInstance -b 1 bs.it[0].itg[4].iti[6000]"),
        goodCall("MoveAnEmptyItem", "setAttr bs.w[2] 0;", command + "-i 2 -tp 5300 bs", 1,
                 "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 0;"
                 "setAttr bs.it[0].itg[2].iti[6000].ipt -type pointArray 0"),
        goodCall("MoveAnInBetweenWithAllThatBelongsToIt",
                 "duplicate -name other base; move -r 0 3 0 other.vtx[1];"
                 "blendShape -edit -inBetween -target base 4 other 0.75 bs;"
                 "setAttr bs.ibig[4].ibi[5750].ibtn -type \"string\" \"half\";"
                 "setAttr bs.ibig[4].ibi[5750].itp 1;"
                 "setAttr bs.it[0].itg[4].iti[5750].irc -type componentList 1 vtx[2];"
                 "setAttr bs.it[0].itg[4].iti[5750].irp -type pointArray 1 1 2 3 1; pointPosition -local "
                 "base.vtx[0];",
                 command + "-i 4 -sp 5750 -tp 5700 bs", 1),
        goodCall("MoveOfTheSelection", "select -noExpand bs;", command + "-tp 5750", 1),
    };
    calls.insert(calls.end(), further.begin(), further.end());
    return calls;
}

const CommandRows kRows{"dv_blendShapeSetInbetweenPosition", moveCalls()};

}  // namespace
