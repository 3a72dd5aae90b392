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

const CommandRows kRows{"dv_polyMapVertexOrder", mapVertexOrderCalls()};

}  // namespace
