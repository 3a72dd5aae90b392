#include "commandTable.h"

namespace {

std::vector<Call> listCalls() {
    const std::string command = "dv_getComponentList ";
    const std::string smile = command + "-at bs.it[0].itg[0].iti[6000].ict ";
    const std::vector<int> vertices{3, 7, 12};
    const std::vector<int> none;
    // A command that fails without a message of its own.
    const std::string noElement = "(kInvalidParameter): No element at given index";
    return {
        failingCall("ListUnknownFlag", "", smile + "-x", {"Invalid flag '-x'."}),
        failingCall("ListBesideAnObject", "", smile + "bs", {"Too many objects or values."}),
        goodCall("ListOfNothing", "", command + "-sl base -ct 0", {}),
        goodCall("ListOfAnEmptyName", "", command + "-at \"\"", {}),
        failingCall("ListOfNoAttribute", "", command + "-at bs.ghost", {noElement}),
        failingCall("ListOfANode", "", command + "-at bs",
                    {"(kInvalidParameter): Object is incompatible with this method"}),
        goodCall("ListOfAnotherAttribute", "", command + "-at bs.envelope", none),
        goodCall("ListOfAnEmptyItem", "", command + "-at bs.it[0].itg[0].iti[5500].ict", none),
        goodCall("List", "", smile, vertices),
        goodCall("ListAlthoughAMeshIsNamed", "", smile + "-sl base", vertices),
        goodCall("ListAlthoughATypeIsNamed", "", smile + "-ct 0", vertices),
        failingCall("ListSelectedOnNothing", "select base;", smile + "-sl ghost -ct 0", {noElement}),
        // What it selects stays selected: the command is not undoable.
        goodCall("ListSelectedAsVertices", "", smile + "-sl base -ct 0", {},
                 "select base.vtx[3] base.vtx[7] base.vtx[12]"),
        goodCall("ListSelectedAsEdges", "select base;", smile + "-sl baseShape -ct 1", {},
                 "select base.e[3] base.e[7] base.e[12]"),
        goodCall("ListSelectedAsFaces", "", command + "-at bs.it[0].itg[4].iti[5500].ict -sl base -ct 2", {},
                 "select base.f[5]"),
        goodCall("ListSelectedAsNoType", "", smile + "-sl base -ct 3", {}, "select baseShape"),
    };
}

const CommandRows kRows{"dv_getComponentList",
                        listCalls(),
                        {"-h", "-help -at bs.it[0].itg[0].iti[6000].ict -sl base -ct 0", "-at ghost -h"}};

}  // namespace
