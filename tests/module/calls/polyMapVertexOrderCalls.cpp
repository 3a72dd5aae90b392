#include "commandTable.h"

namespace {

std::vector<Call> mapVertexOrderCalls() {
    const std::string command = "dv_polyMapVertexOrder ";
    return {
        {"MapOfNothing", "select -clear;", command + "-v 1", false, {}, {"No mesh provided."}, ""},
        {"MapOfNoObject",
         "",
         command + "ghost",
         false,
         {},
         {"No object matches name: ghost", "Error getting objects"},
         ""},
        {"MapUnknownFlag",
         "",
         command + "-x base",
         false,
         {},
         {"Invalid flag '-x'.", "Error getting objects"},
         ""},
        {"MapOfABlendShape", "", command + "bs", false, {}, {"bs is not a mesh object."}, ""},
        {"MapOfAnEmptyGroup",
         "group -empty -name g;",
         command + "g",
         false,
         {},
         {"g has no shape node."},
         ""},
        {"MapOfAGroupOfMeshes",
         "group -name g base;",
         command + "g",
         false,
         {},
         {"g is not a mesh object."},
         ""},
        {"MapCheckWithoutMap", "", command + "-ck base", true, -1, {}, ""},
    };
}

const CommandRows kRows{
    "dv_polyMapVertexOrder",
    mapVertexOrderCalls(),
    {"", "Description: Creates a reversed vertex order and stores it on the given target mesh.", "",
     "Flags: dv_polyMapVertexOrder -h -help <n/a> this message",
     "-atm -addToMap <n/a> add to the map based on two selected edges", "-a -axis <string> symmetry axis",
     "-ck -check <n/a> check if all mapping indices are set; selects the symmetric components if "
     "vertices are selected",
     "-ct -copyTo <string> copy the vertex mapping to the given mesh",
     "-sl -select <n/a> select all found components", "-sm -selectMapped <n/a> select all mapped components",
     "-su -selectUnmapped <n/a> select all unmapped components",
     "-tol -tolerance <float> tolerance value (optional, default: 0.0001)",
     "-v -verbose <int> output info to the script editor (0: none, 1: simple, 2: full)",
     "Usage: Execute the command with the following arguments:",
     "Execute: dv_polyMapVertexOrder -a <string> -tol <float> polyName", "Return Value: int"}};

}  // namespace
