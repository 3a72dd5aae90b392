#include "walk/steps.h"

namespace delven::walk {

std::string blendShapeOnNew(Draw& draw) {
    return "string $b[] = `polyPlane -sx 4 -sy 3 -w 4 -h 3 -ch 0 -n " + draw.newName() +
           "`; string $t[] = `duplicate $b[0]`; move -r 0 1 0 ($t[0] + \".vtx[3]\"); blendShape $t[0] $b[0]" +
           draw.anyOf({"", "; delete $t[0]"});
}

namespace {

std::string create(Draw& draw) {
    return "createNode " +
           draw.anyOf({"transform", "transform", "joint", "mesh", "network", "objectSet", "blendShape",
                       "nonsense"}) +
           draw.anyOf({"", " -n " + draw.newName(), " -p " + draw.node("transform")});
}

std::string createMesh(Draw& draw) {
    const std::string history = draw.anyOf({" -ch 0", " -ch 1"});
    return draw.anyOf({"polyPlane -sx 4 -sy 3 -w 4 -h 3 -n ", "polyPlane -sx 4 -sy 3 -w 4 -h 3 -n ",
                       "polyCube -n ", "polySphere -sx 5 -sy 4 -n ", "polyTorus -sx 4 -sy 4 -n "}) +
           draw.newName() + history;
}

std::string duplicate(Draw& draw) {
    return "duplicate" + draw.anyOf({"", " -n " + draw.newName(), " -po", " -rr"}) + ' ' +
           (draw.oneIn(4) ? draw.anyNode() : draw.node("transform"));
}

std::string remove(Draw& draw) {
    return "delete " + (draw.oneIn(2) ? draw.node("transform") : draw.anyNode()) +
           (draw.oneIn(4) ? ' ' + draw.anyNode() : "");
}

std::string removeHistory(Draw& draw) {
    return "delete -ch " + draw.node("mesh");
}

std::string rename(Draw& draw) {
    return "rename " + draw.anyNode() + ' ' + draw.newName();
}

std::string parent(Draw& draw) {
    if (draw.oneIn(3)) return "parent -w " + draw.node("transform");
    if (draw.oneIn(4)) return "parent -s -r " + draw.node("mesh") + ' ' + draw.node("transform");
    if (draw.oneIn(4))
        return "parent -s -add " + draw.node(draw.anyOf({"mesh", "transform"})) + ' ' +
               draw.node("transform");
    if (draw.oneIn(9)) return "parent -s -rm " + draw.node("mesh");
    if (draw.oneIn(9)) return "instance " + draw.node("transform");
    return "parent " + draw.anyOf({"", "-r "}) + draw.node("transform") + ' ' + draw.node("transform");
}

std::string group(Draw& draw) {
    return "group " + draw.anyOf({"", "-em ", "-n " + draw.newName() + ' '}) + draw.node("transform");
}

std::string moveVertices(Draw& draw) {
    return "move -r " + draw.number() + ' ' + draw.number() + " 0.5 " + draw.vertices(draw.node("mesh"));
}

std::string moveObject(Draw& draw) {
    return draw.anyOf({"move -r ", "move -a ", "rotate -r ", "scale -r "}) + draw.number() + ' ' +
           draw.number() + ' ' + draw.number() + ' ' + draw.node("transform");
}

std::string xform(Draw& draw) {
    return "xform " + draw.anyOf({"-ws ", "-os ", "-r "}) + draw.anyOf({"-t ", "-ro ", "-s "}) +
           draw.number() + ' ' + draw.number() + " 1 " + draw.node("transform");
}

std::string select(Draw& draw) {
    return "select " + draw.anyOf({"-r ", "-add ", "-d ", "-tgl ", "-hi "}) +
           (draw.oneIn(2) ? draw.components(draw.node("mesh")) : draw.anyNode());
}

std::string selectNothing(Draw&) {
    return "select -clear";
}

std::string joint(Draw& draw) {
    return "select " + draw.node("transform") + "; joint -p " + draw.number() + " 0 1 -n " + draw.newName();
}

std::string bind(Draw& draw) {
    if (!draw.oneIn(3)) {
        return "select -clear; string $j = `joint -p -1 0 0`; string $k = `joint -p 1 0.5 0`; skinCluster "
               "-mi " +
               draw.anyOf({"1", "2"}) + " $j " + draw.node("mesh");
    }
    return "skinCluster " + draw.anyOf({"-tsb ", "-mi 2 ", "-mi 1 -rui 1 ", ""}) + draw.node("joint") + ' ' +
           draw.node("joint") + ' ' + draw.node("transform");
}

std::string editSkin(Draw& draw) {
    if (draw.oneIn(6)) return "skinCluster -e -ub " + draw.node("skinCluster");
    return "skinCluster -e " + draw.anyOf({"-ai ", "-ri ", "-lw 1 -inf ", "-siv ", "-wd 1 -wt 0.5 -ai "}) +
           draw.node("joint") + ' ' + draw.node("skinCluster");
}

std::string skinWeights(Draw& draw) {
    return "skinPercent " +
           draw.anyOf({"-tv " + draw.node("joint") + ' ' + draw.number(), "-nrm 1", "-prw 0.1", "-rtd",
                       "-tmw " + draw.node("joint") + " -tmw " + draw.node("joint")}) +
           ' ' + draw.node("skinCluster") + ' ' + draw.vertices(draw.node("transform"));
}

std::string copySkin(Draw& draw) {
    return "copySkinWeights " +
           draw.anyOf({"-nm ", "-mm YZ ", "-mi ", "-nm -sa closestComponent -ia name "}) + "-ss " +
           draw.node("skinCluster") + " -ds " + draw.node("skinCluster");
}

std::string orientJoint(Draw& draw) {
    return "joint -e " +
           draw.anyOf({"-oj xyz -sao yup -zso ", "-oj zyx ", "-oj none -zso ", "-co -p 1 2 3 "}) +
           draw.anyOf({"-ch ", ""}) + draw.node("joint");
}

std::string freeze(Draw& draw) {
    return "makeIdentity " + draw.anyOf({"-a 1 ", "-a 1 ", ""}) +
           draw.anyOf({"-t 1 ", "-r 1 ", "-s 1 ", "-r 1 -s 1 ", ""}) + draw.node("transform");
}

std::string blendShape(Draw& draw) {
    return "blendShape " + draw.anyOf({"", "-n " + draw.newName() + ' ', "-foc "}) + draw.node("transform") +
           ' ' + draw.node("transform");
}

/// A chain as it was before there were component tags.
std::string tweakNode(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "string $w = `createNode tweak`; connectAttr " + mesh.original +
           ".worldMesh[0] ($w + \".input[0].inputGeometry\"); connectAttr -f ($w + \".outputGeometry[0]\") " +
           mesh.blendShape + ".input[0].inputGeometry; connectAttr ($w + \".vlist[0].vertex[0]\") " +
           mesh.shape + ".tweakLocation";
}

std::string addTarget(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "blendShape -e -t " + mesh.transform + ' ' + std::to_string(draw.below(8)) + ' ' +
           draw.node("transform") + " 1 " + mesh.blendShape;
}

std::string addInBetween(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "blendShape -e -ib -t " + mesh.transform + ' ' + draw.target(mesh.blendShape) + ' ' +
           draw.node("transform") + draw.anyOf({" 0.5 ", " 0.3 ", " -1 "}) + mesh.blendShape;
}

std::string removeTarget(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "blendShape -e -rm -t " + mesh.transform + ' ' + draw.target(mesh.blendShape) + ' ' +
           draw.node("transform") + " 1 " + mesh.blendShape;
}

std::string setTargetWeight(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    const std::string target = draw.target(mesh.blendShape);
    return draw.anyOf({"setAttr " + mesh.blendShape + ".w[" + target + "] " + draw.number(),
                       "blendShape -e -w " + target + ' ' + draw.number() + ' ' + mesh.blendShape,
                       "setAttr " + mesh.blendShape + ".en " + draw.number()});
}

std::string paint(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return "setAttr " + mesh.blendShape + ".it[0]." +
           draw.anyOf({"bw[", "itg[" + draw.target(mesh.blendShape) + "].tw["}) + draw.vertex() + "] " +
           draw.number();
}

std::string setDeltas(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    const std::string target = draw.target(mesh.blendShape);
    const std::string item =
        mesh.blendShape + ".it[0].itg[" + target + "].iti[" + draw.item(mesh.blendShape, target) + "].";
    return draw.anyOf({"setAttr " + item + "ipt -type pointArray 2 1 0 0.5 1 0 " + draw.number() + " 0 1",
                       "setAttr " + item + "ict -type componentList 2 vtx[" + draw.vertex() + "] vtx[" +
                           draw.vertex() + "]",
                       "setAttr " + item + "ict -type componentList 1 vtx[2:3]"});
}

std::string removeElement(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    const std::string target = draw.target(mesh.blendShape);
    const std::string group = ".it[0].itg[" + target + ']';
    return "removeMultiInstance " + draw.anyOf({"-b 1 ", ""}) + mesh.blendShape +
           draw.anyOf({group, ".w[" + target + ']', group + ".tw[" + draw.vertex() + ']',
                       group + ".iti[" + draw.item(mesh.blendShape, target) + ']', ".it[0].bw[2]", ".it[0]"});
}

/// A plug that likely exists, of any type.
std::string plug(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return draw.anyOf(
        {draw.node("transform") + draw.anyOf({".tx", ".t", ".ry", ".sz", ".v", ".matrix"}),
         draw.node("mesh") +
             draw.anyOf({".inMesh", ".outMesh", ".worldMesh[0]", ".pnts[3]", ".io", ".pnts[2].px"}),
         mesh.blendShape + draw.anyOf({".w[0]", ".en", ".it[0].itg[0].iti[6000].igt", ".outputGeometry[0]",
                                       ".input[0].inputGeometry", ".message", ".it[0].itg[0].iti[6000].ict",
                                       ".it[0].itg[0].tw[3]"}),
         draw.node("network") + draw.anyOf({".extra", ".list[2]", ".regions", ".message"}),
         draw.node("skinCluster") + draw.anyOf({".en", ".wl[3].w[0]", ".matrix[0]"}),
         draw.node("joint") + draw.anyOf({".worldMatrix[0]", ".jox", ".radius"}),
         draw.anyNode() + ".message"});
}

std::string lock(Draw& draw) {
    return "setAttr " + draw.anyOf({"-l 1 ", "-l 0 ", "-l 0 ", "-k 0 ", "-k 1 ", "-cb 1 "}) + plug(draw);
}

std::string set(Draw& draw) {
    return "setAttr " + plug(draw) + ' ' + draw.number() + draw.anyOf({"", "", " 1 0.5"});
}

std::string connect(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    const std::string force = draw.anyOf({"connectAttr ", "connectAttr -f "});
    const std::string number = draw.anyOf({draw.node("transform") + ".tx", draw.node("network") + ".extra",
                                           mesh.blendShape + ".en", draw.node("joint") + ".radius"});
    const std::string geometry = draw.node("mesh") + draw.anyOf({".worldMesh[0] ", ".outMesh "});
    if (draw.oneIn(3))
        return force + number + ' ' + mesh.blendShape + ".w[" + draw.target(mesh.blendShape) + ']';
    if (draw.oneIn(3))
        return force + number + ' ' + draw.node("transform") + draw.anyOf({".ry", ".tz", ".sx"});
    if (draw.oneIn(3)) {
        return force + geometry + mesh.blendShape + ".it[0].itg[" + draw.target(mesh.blendShape) +
               "].iti[6000].igt";
    }
    if (draw.oneIn(5)) return force + geometry + draw.node("mesh") + ".inMesh";
    return "connectAttr " + draw.anyOf({"", "-f ", "-f ", "-na "}) + plug(draw) + ' ' + plug(draw);
}

std::string disconnect(Draw& draw) {
    const std::string to = plug(draw);
    return "string $s[] = `listConnections -p 1 -s 1 -d 0 " + to +
           "`; if (size($s) > 0) disconnectAttr $s[0] " + to;
}

std::string alias(Draw& draw) {
    const DeformedMesh mesh = draw.deformed();
    return draw.anyOf({"aliasAttr " + draw.newName() + ' ', "aliasAttr -rm "}) + mesh.blendShape + ".w[" +
           draw.target(mesh.blendShape) + ']';
}

std::string addAttribute(Draw& draw) {
    return "addAttr -ln " +
           draw.anyOf({"extra -at double", "list -at long -multi", "words -dt \"string\"",
                       "numbers -dt doubleArray"}) +
           ' ' + draw.anyNode();
}

std::string deleteAttribute(Draw& draw) {
    return "deleteAttr " + draw.addedAttribute();
}

std::string editSet(Draw& draw) {
    const std::string objects = draw.oneIn(2) ? draw.components(draw.node("mesh")) : draw.node("mesh");
    return draw.oneIn(4)
               ? "sets -n " + draw.newName() + ' ' + objects
               : "sets " + draw.anyOf({"-add ", "-rm ", "-fe "}) + draw.node("objectSet") + ' ' + objects;
}

std::string color(Draw& draw) {
    const std::string mesh = draw.node("mesh");
    return draw.anyOf({"polyColorPerVertex -rgb 1 0.5 0 " + draw.vertices(mesh),
                       "polyColorPerVertex -rem " + draw.vertices(mesh), "polyColorSet -cr -cs paint " + mesh,
                       "polyColorSet -d -cs colorSet1 " + mesh, "polyColorSet -ccs -cs colorSet1 " + mesh});
}

std::string unite(Draw& draw) {
    return "polyUnite -ch " + draw.anyOf({"0 ", "1 "}) + draw.node("mesh") + ' ' + draw.node("mesh");
}

std::string time(Draw& draw) {
    return "currentTime " + std::to_string(draw.below(5));
}

std::string file(Draw& draw) {
    return draw.anyOf({"file -i -type \"OBJ\" -rnn \"walk.obj\"",
                       "file -f -type \"OBJexport\" -ea \"walk.obj\"",
                       "file -f -type \"OBJexport\" -es \"walk.obj\""});
}

std::string chunk(Draw& draw) {
    return "undoInfo -openChunk; " + moveObject(draw) + "; " + moveVertices(draw) + "; undoInfo -closeChunk";
}

std::string ask(Draw& draw) {
    return draw.anyOf(
        {"ls -l", "ls -dag -io", "listRelatives -ad " + draw.anyNode(), "ls -sl -fl",
         "listConnections " + draw.anyNode(), "getAttr " + plug(draw), "polyEvaluate " + draw.node("mesh"),
         "xform -q -ws -t " + draw.vertices(draw.node("mesh")), "xform -q -ws -bb " + draw.node("transform"),
         "polyInfo -ev " + draw.node("mesh"), "blendShape -q -t " + draw.node("blendShape"),
         "skinCluster -q -inf " + draw.node("skinCluster"), "sets -q " + draw.node("objectSet")});
}

}  // namespace

const std::vector<Step>& hostSteps() {
    static const std::vector<Step> all{
        {"create", create},
        {"createMesh", createMesh},
        {"duplicate", duplicate},
        {"remove", remove},
        {"removeHistory", removeHistory},
        {"rename", rename},
        {"parent", parent},
        {"group", group},
        {"moveVertices", moveVertices},
        {"moveObject", moveObject},
        {"xform", xform},
        {"select", select},
        {"selectNothing", selectNothing},
        {"joint", joint},
        {"bind", bind},
        {"editSkin", editSkin},
        {"skinWeights", skinWeights},
        {"copySkin", copySkin},
        {"orientJoint", orientJoint},
        {"freeze", freeze},
        {"blendShape", blendShape},
        {"blendShapeOnNew", blendShapeOnNew},
        {"tweakNode", tweakNode},
        {"addTarget", addTarget},
        {"addInBetween", addInBetween},
        {"removeTarget", removeTarget},
        {"setTargetWeight", setTargetWeight},
        {"paint", paint},
        {"setDeltas", setDeltas},
        {"removeElement", removeElement},
        {"lock", lock},
        {"set", set},
        {"connect", connect},
        {"disconnect", disconnect},
        {"alias", alias},
        {"addAttribute", addAttribute},
        {"deleteAttribute", deleteAttribute},
        {"editSet", editSet},
        {"color", color},
        {"unite", unite},
        {"time", time},
        {"file", file},
        {"chunk", chunk},
        {"ask", ask},
    };
    return all;
}

}  // namespace delven::walk
