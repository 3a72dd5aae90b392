#include "fixtures.h"

#include "support/meshZoo.h"
#include "support/variants.h"

namespace {

void addTarget(Scene& scene, const std::string& item, const std::string& vertices,
               const std::string& points) {
    const std::string plug = "bs.inputTarget[0]." + item;
    scene.mel("setAttr " + plug + ".inputComponentsTarget -type componentList " + vertices);
    scene.mel("setAttr " + plug + ".inputPointsTarget -type pointArray " + points);
}

}  // namespace

void addBlendShape(Scene& scene) {
    scene.addMesh("base", zoo::openGrid());
    scene.mel("blendShape -name bs base");
    addTarget(scene, "inputTargetGroup[0].inputTargetItem[6000]", "3 vtx[3] vtx[7] vtx[12]",
              "3 0 1 0 1 0.5 0 0 1 0 0 -2 1");
    addTarget(scene, "inputTargetGroup[4].inputTargetItem[5500]", "1 vtx[5]", "1 0 0.25 0 1");
    addTarget(scene, "inputTargetGroup[4].inputTargetItem[6000]", "2 vtx[5:6] vtx[19]",
              "3 0 1 0 1 0 1 0 1 1 1 1 1");
    scene.mel(
        "setAttr bs.weight[0] 0; setAttr bs.weight[4] 0; aliasAttr smile bs.weight[0] blink bs.weight[4]");
    scene.mel("flushUndo; select -clear; flushUndo");
}

std::string extractedName(int item) {
    using host::graph::CopyNames;
    std::string copy = "base3";
    if (variant().copyNames == CopyNames::Default) copy = "polySurface3";
    // A copy of the first copy, and not of "base".
    if (variant().copyNames == CopyNames::Appended) copy = "base_copy1_copy1";
    return copy + '_' + std::to_string(item);
}

std::string deltas(Scene& scene, int target, int item) {
    const std::string plug = "bs.inputTarget[0].inputTargetGroup[" + std::to_string(target) +
                             "].inputTargetItem[" + std::to_string(item) + "]";
    const std::vector<std::string> components =
        scene.mel("getAttr " + plug + ".inputComponentsTarget").toStringArray();
    const std::vector<double> points = scene.mel("getAttr " + plug + ".inputPointsTarget").toFloatArray();
    std::string text;
    for (std::size_t k = 0; k < components.size(); ++k) {
        text += components[k].substr(4, components[k].size() - 5);
        for (std::size_t axis = 0; axis < 3; ++axis)
            text += ' ' + host::mel::Value(points[4 * k + axis] + 0.0).toString();  // -0 becomes 0
        text += '\n';
    }
    return text;
}

void addLegacyChain(Scene& scene) {
    if (variant().hasLegacyChains) {
        scene.mel(
            "rename groupParts1 parts1; rename groupId1 id1; rename bsGroupParts parts2;"
            "rename bsGroupId id2; select -clear; flushUndo");
        return;
    }
    scene.mel(
        "createNode tweak -name tweak1; createNode groupParts -name parts1; createNode groupId -name id1;"
        "createNode groupParts -name parts2; createNode groupId -name id2;"
        "setAttr parts1.inputComponents -type componentList 1 vtx[*];"
        "setAttr parts2.inputComponents -type componentList 1 vtx[*];"
        "connectAttr baseShapeOrig.worldMesh[0] parts1.inputGeometry; connectAttr id1.groupId parts1.groupId;"
        "connectAttr id1.groupId tweak1.input[0].groupId;"
        "connectAttr parts1.outputGeometry tweak1.input[0].inputGeometry;"
        "connectAttr tweak1.outputGeometry[0] parts2.inputGeometry; connectAttr id2.groupId parts2.groupId;"
        "connectAttr id2.groupId bs.input[0].groupId;"
        "connectAttr -force parts2.outputGeometry bs.input[0].inputGeometry;"
        "connectAttr tweak1.vlist[0].vertex[0] baseShape.tweakLocation; select -clear; flushUndo");
}
