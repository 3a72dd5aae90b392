#pragma once

#include <string>
#include <vector>

#include "fixtures.h"

/// Script that makes the region data node "map" of the deformer "bs" (fixtures.h), all of whose regions are
/// 0 on each of the 20 vertices.
inline std::string regionNodeScript() {
    std::string zeros = "20";
    for (int vertex = 0; vertex < 20; ++vertex)
        zeros += " 0";
    std::string script =
        "createNode network -name map; addAttr -ln DELVENRegion -at message map;"
        "connectAttr bs.message map.DELVENRegion; addAttr -ln regionLock -at long -multi map;"
        "addAttr -ln regions -dt \"string\" map;";
    for (int region = 0; region < 6; ++region) {
        const std::string number = std::to_string(region);
        script += "addAttr -ln regionWeights" + number + " -dt doubleArray map;";
        script += "addAttr -ln regionWeightsBuffer" + number + " -dt doubleArray map;";
        script += "setAttr map.regionWeights" + number + " -type doubleArray " + zeros + ";";
    }
    return script + "select -clear;";
}

/// Script that makes `weights` those of a region on the first vertices, and 0 on the others of 20.
inline std::string setRegionScript(int region, const std::vector<double>& weights) {
    std::string text = "setAttr map.regionWeights" + std::to_string(region) + " -type doubleArray 20";
    for (std::size_t vertex = 0; vertex < 20; ++vertex)
        text += ' ' + host::mel::Value(vertex < weights.size() ? weights[vertex] : 0.0).toString();
    return text + ';';
}
