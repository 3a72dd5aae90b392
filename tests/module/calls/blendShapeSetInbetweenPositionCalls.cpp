#include "commandTable.h"

namespace {

std::vector<Call> moveCalls() {
    const std::string command = "dv_blendShapeSetInbetweenPosition ";
    std::vector<Call> calls = refusedObjects("Move", command);
    const std::vector<Call> further{
        failingCall("MoveFromAnImpossiblePosition", "", command + "-sp -1 bs",
                    {"Error setting components for empty target."}),
        failingCall("MoveFromALockedEmptyPosition", "setAttr -lock 1 bs.it[0].itg[2].iti[5500].ipt;",
                    command + "-i 2 -sp 5500 bs", {"Error setting points for empty target."},
                    "setAttr bs.it[0].itg[2].iti[5500].ict -type componentList 1 vtx[0]"),
        goodCall("Move", "", command + "-i 4 -sp 5500 -tp 5300 bs", 1),
        goodCall("MoveOntoItself", "", command + "bs", 1),
        goodCall("MoveOntoAnother", "", command + "-i 4 -sp 5500 -tp 6000 bs", 1,
                 "removeMultiInstance -b 1 bs.it[0].itg[4].iti[6000]"),
        goodCall("MoveAnEmptyItem", "", command + "-i 2 -sp 5500 -tp 5300 bs", 1,
                 "setAttr bs.it[0].itg[2].iti[5500].ict -type componentList 0;"
                 "setAttr bs.it[0].itg[2].iti[5500].ipt -type pointArray 0"),
        goodCall("MoveOfTheSelection", "select -noExpand bs;", command + "-tp 5750", 1),
    };
    calls.insert(calls.end(), further.begin(), further.end());
    return calls;
}

const CommandRows kRows{
    "dv_blendShapeSetInbetweenPosition",
    moveCalls(),
    {"", "Description: Moves an in-between target to a new position.", "",
     "Flags: dv_blendShapeSetInbetweenPosition -h -help <n/a> this message",
     "-i -index <int> index of the source target channel", "-sp -sourcePosition <int> current position",
     "-tp -targetPosition <int> result position", "Usage: Execute the command with the following arguments:",
     "Execute: dv_blendShapeSetInbetweenPosition -i <int> -sp <int> -tp <int>", "Return Value: int"}};

}  // namespace
