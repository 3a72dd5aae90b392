#include "commandTable.h"

namespace {

std::vector<Call> indicesCalls() {
    const std::string none = "select -clear;";
    return {
        {"IndicesOfNothing",
         none,
         "dv_getBlendShapeIndices",
         false,
         {},
         {"No blend shape node provided."},
         ""},
        {"IndicesOfAMesh",
         "",
         "dv_getBlendShapeIndices base",
         false,
         {},
         {"The node is not a blend shape node."},
         ""},
        {"IndicesOfNoObject",
         "",
         "dv_getBlendShapeIndices ghost",
         false,
         {},
         {"No object matches name: ghost", "Error getting objects"},
         ""},
        {"IndicesUnknownFlag",
         "",
         "dv_getBlendShapeIndices -x bs",
         false,
         {},
         {"Invalid flag '-x'.", "Error getting objects"},
         ""},
        {"Indices", "", "dv_getBlendShapeIndices bs", true, std::vector<int>{0, 4}, {}, ""},
    };
}

const CommandRows kRows{"dv_getBlendShapeIndices", indicesCalls()};

}  // namespace
