#include "walk/steps.h"

namespace delven::walk {

namespace {

/// A call on a deformer that names its original mesh.
std::string call(const std::string& command, const DeformedMesh& mesh, const std::string& flags) {
    return command + " -om " + mesh.original + ' ' + flags + ' ' + mesh.blendShape;
}

/// "-i 4 -ti 5500": an item of the deformer.
std::string itemFlags(Draw& draw, const DeformedMesh& mesh) {
    const std::string target = draw.target(mesh.blendShape);
    return "-i " + target + " -ti " + draw.item(mesh.blendShape, target);
}

std::string extract(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return call("dv_blendShapeExtractTarget", mesh, itemFlags(draw, mesh));
}

std::string replace(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return call("dv_blendShapeReplaceTarget", mesh, itemFlags(draw, mesh) + " -m " + draw.node("mesh"));
}

std::string corrective(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "dv_sculptExtractDeltaMesh -m " + mesh.shape + " -om " + mesh.original +
           draw.anyOf({" ", " -c "}) + draw.node("mesh");
}

std::string removeDeltas(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return draw.anyOf({"select " + draw.vertices(mesh.transform) + "; ", "select -clear; ", ""}) +
           "dv_blendShapeRemoveDeltas " + itemFlags(draw, mesh) + ' ' + mesh.blendShape;
}

std::string moveInBetween(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    const std::string target = draw.target(mesh.blendShape);
    return "dv_blendShapeSetInbetweenPosition -i " + target + " -sp " + draw.item(mesh.blendShape, target) +
           " -tp " + draw.freeItem(mesh.blendShape, target) + ' ' + mesh.blendShape;
}

std::string moveOntoAnother(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    const std::string target = draw.target(mesh.blendShape);
    return "dv_blendShapeSetInbetweenPosition -i " + target + " -sp " + draw.item(mesh.blendShape, target) +
           " -tp " + draw.item(mesh.blendShape, target) + ' ' + mesh.blendShape;
}

std::string mirrorInPlace(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    const std::string target = draw.target(mesh.blendShape);
    return call("dv_blendShapeMirrorTarget", mesh,
                "-si " + target + " -ti " + target + " -tit " + draw.item(mesh.blendShape, target) +
                    draw.anyOf({" -dir 0", " -dir 1"}) + draw.anyOf({"", " -ob \"\"", " -ax y"}));
}

std::string mirrorToAnother(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    const std::string source = draw.target(mesh.blendShape);
    return call("dv_blendShapeMirrorTarget", mesh,
                "-t 2 -si " + source + " -ti " + draw.target(mesh.blendShape) + " -tit " +
                    draw.item(mesh.blendShape, source));
}

std::string mirrorToNew(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return call("dv_blendShapeMirrorTarget", mesh,
                "-t 1 -m " + mesh.transform + " -tn " + draw.newName() + " -si " +
                    draw.target(mesh.blendShape) + " -ti " + std::to_string(10 + draw.below(4)));
}

std::string mirrorOntoAnotherInPlace(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return call("dv_blendShapeMirrorTarget", mesh,
                "-si " + draw.target(mesh.blendShape) + " -ti " + draw.target(mesh.blendShape));
}

std::string flip(Draw& draw) {
    return call("dv_blendShapeMirrorTarget", draw.deformed(), "-f 1");
}

std::string setWeights(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "dv_blendShapeEditWeights -sw -wi " + draw.vertex() + " -w 0.25 -wi " + draw.vertex() +
           " -w 0.5 -i " + draw.target(mesh.blendShape) + ' ' + mesh.blendShape;
}

std::string editWeights(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    const std::string target = draw.oneIn(3) ? "-1" : draw.target(mesh.blendShape);
    return call("dv_blendShapeEditWeights", mesh,
                draw.anyOf({"-iv", "-m", "-t", "-fl 0.5", "-del"}) + " -i " + target);
}

std::string combineWeights(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return call("dv_blendShapeEditWeights", mesh,
                draw.anyOf({"-aw", "-sub", "-im", "-flp"}) + " -fn " +
                    draw.anyOf({"weights.json", "weights.txt", "broken.json"}) + " -i " +
                    draw.target(mesh.blendShape));
}

std::string freeze(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "dv_blendShapeEditWeights -f " + itemFlags(draw, mesh) + ' ' + mesh.blendShape;
}

std::string split(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return call("dv_blendShapeSplitTarget", mesh,
                draw.anyOf({"-iv 1 -b 0.5", "-iv -1"}) + " -i " + draw.target(mesh.blendShape));
}

std::string exportTargets(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "dv_blendShapeExportData -d -fn targets.json -i " + draw.target(mesh.blendShape) + ' ' +
           mesh.blendShape;
}

std::string importTargets(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "dv_blendShapeImportData -d -fn " + draw.anyOf({"targets.json", "targets.json", "broken.json"}) +
           draw.anyOf({" ", " -rm -si 0 -di " + draw.target(mesh.blendShape) + ' '}) + mesh.blendShape;
}

std::string mapVertexOrder(Draw& draw) {
    return "dv_polyMapVertexOrder " + draw.anyOf({"", "-ck ", "-sm ", "-su ", "-sl ", "-a z ", "-tol 0.1 "}) +
           draw.node("mesh");
}

std::string copyMap(Draw& draw) {
    return "dv_polyMapVertexOrder -ct " + draw.node("mesh") + ' ' + draw.node("mesh");
}

std::string checkSymmetry(Draw& draw) {
    return "dv_polySymmetry " + draw.anyOf({"", "-dir 0 ", "-atm ", "-ax z "}) + draw.node("mesh");
}

std::string applyMap(Draw& draw) {
    return "dv_polySymmetry -aom " + draw.node("mesh") + ' ' + draw.node("mesh");
}

std::string tweaks(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "dv_editTweakNode -om " + mesh.original + draw.anyOf({" -b 1 ", " "}) + draw.node("tweak");
}

std::string regions(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "dv_editRegionMap " + draw.anyOf({"-atm", "-ap", "-e", "-cl", "-res 0", "-res 1", "-col 1"}) +
           " -i " + std::to_string(draw.below(7)) + " -m " + mesh.shape + ' ' + draw.node("network");
}

std::string selectComponents(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "dv_getComponentList -at " + mesh.blendShape + ".it[0].itg[" + draw.target(mesh.blendShape) +
           "].iti[6000].ict -ct 0 -sl " + mesh.transform;
}

std::string findOriginal(Draw& draw) {
    return "dv_meshEvaluate " + draw.anyOf({"-i ", ""}) + draw.deformed().transform;
}

std::string askOurs(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return draw.anyOf(
        {"dv_blendShapeEditWeights -gi -i " + draw.target(mesh.blendShape) + ' ' + mesh.blendShape,
         "dv_getBlendShapeIndices " + mesh.blendShape,
         "dv_getComponentList -at " + mesh.blendShape + ".it[0].itg[0].iti[6000].ict",
         "dv_blendShapeImportData -ld -fn targets.json"});
}

}  // namespace

Line lineOf(const Step& step, Draw& draw) {
    return {step.text(draw), step.undo == Undo::kExact, *step.failure == '\0'};
}

const std::vector<Step>& moduleSteps() {
    static const std::vector<Step> all{
        {"extract", extract},
        {"replace", replace},
        {"corrective", corrective},
        {"removeDeltas", removeDeltas},
        {"moveInBetween", moveInBetween},
        {"mirrorInPlace", mirrorInPlace},
        {"mirrorToAnother", mirrorToAnother},
        {"mirrorToNew", mirrorToNew},
        {"setWeights", setWeights},
        {"editWeights", editWeights},
        {"exportTargets", exportTargets},
        {"importTargets", importTargets},
        {"askOurs", askOurs},
        {"mapVertexOrder", mapVertexOrder, Undo::kLeavesSomething, "the map stays"},
        {"checkSymmetry", checkSymmetry, Undo::kLeavesSomething, "maps and the selection stay"},
        {"selectComponents", selectComponents, Undo::kLeavesSomething, "the selection stays",
         "without the attribute nothing is selected"},
        {"tweaks", tweaks, Undo::kLeavesSomething, "edits that are gone are gone"},
        {"findOriginal", findOriginal, Undo::kLeavesSomething,
         "an original that is found elsewhere is brought back"},
        {"copyMap", copyMap, Undo::kLeavesSomething, "the map stays"},
        {"combineWeights", combineWeights, Undo::kLeavesSomething,
         "flipping, adding, subtracting and importing weights are not undone"},
        {"split", split, Undo::kLeavesSomething, "painted weights stay"},
        {"applyMap", applyMap, Undo::kLeavesSomething,
         "setting points makes the tweaks of a mesh a part of them"},
        {"mirrorOntoAnotherInPlace", mirrorOntoAnotherInPlace, Undo::kLeavesSomething,
         "undo writes the source deltas to the other target"},
        {"flip", flip, Undo::kRedoDiffers, "each redo turns the direction round"},
        {"moveOntoAnother", moveOntoAnother, Undo::kLeavesSomething,
         "what the new position held is not restored"},
        {"freeze", freeze, Undo::kLeavesSomething,
         "undo restores the deltas of one item, not those of the other in-betweens"},
        {"regions", regions, Undo::kRedoDiffers, "undo of the region map does nothing"},
    };
    return all;
}

std::vector<Line> faceScene() {
    std::string map =
        "createNode network -name map; addAttr -ln DELVENRegion -at message map; connectAttr bs.message "
        "map.DELVENRegion; addAttr -ln regionLock -at long -multi map; addAttr -ln regions -dt \"string\" "
        "map;";
    for (const char* region : {"0", "1", "2", "3", "4", "5"}) {
        map += std::string(" addAttr -ln regionWeights") + region +
               " -dt doubleArray map; addAttr -ln regionWeightsBuffer" + region +
               " -dt doubleArray map; setAttr map.regionWeights" + region +
               " -type doubleArray 20 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0;";
    }
    return {
        {"polyPlane -n base -sx 4 -sy 3 -w 4 -h 3 -ch 0"},
        {"duplicate -n smile base; move -r 0 1 0 smile.vtx[3] smile.vtx[7]; duplicate -n half smile"},
        {"duplicate -n blink base; move -r 0 -1 0.5 blink.vtx[5] blink.vtx[6]"},
        {"blendShape -n bs smile blink base; blendShape -e -ib -t base 0 half 0.5 bs"},
        {"setAttr bs.it[0].itg[4].iti[6000].ict -type componentList 3 vtx[5] vtx[6] vtx[19]; setAttr "
         "bs.it[0].itg[4].iti[6000].ipt -type pointArray 3 1 0 0 1 0 1 0 1 0 0 1 1"},
        {"setAttr bs.it[0].itg[1].tw[5] 0.5; setAttr bs.it[0].bw[2] 0.5; setAttr bs.w[0] 0.5"},
        {"delete smile half blink; duplicate -n sculpt base; move -r 0 1 0 sculpt.vtx[6]"},
        {"dv_polyMapVertexOrder |base|baseShapeOrig", false},
        {map + " select -clear"},
    };
}

}  // namespace delven::walk
