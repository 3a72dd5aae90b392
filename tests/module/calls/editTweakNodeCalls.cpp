#include "commandTable.h"

namespace {

std::vector<Call> tweakCalls() {
    const std::string command = "dv_editTweakNode ";
    const std::string onBase = command + "-om baseShapeOrig ";
    const std::string tweak = "createNode tweak -name edits; setAttr edits.vlist[0].vertex[2] 0 1 0;";
    const std::string cleared = "removeMultiInstance edits.vlist[0].vertex[2]";
    return {
        failingCall("TweakOfNothing", "select -clear;", onBase, {"No tweak node provided."}),
        failingCall("TweakOfABlendShape", "", onBase + "bs", {"The node is not a tweak node."}),
        failingCall("TweakOfNoObject", "", onBase + "ghost",
                    {"No object matches name: ghost", "Error getting objects"}),
        failingCall("TweakUnknownFlag", tweak, onBase + "-x edits",
                    {"Invalid flag '-x'.", "Error getting objects"}),
        refusedCall("TweakWithoutOriginal", tweak, command + "edits", "The original mesh is not defined."),
        refusedCall("TweakOnATransform", tweak, command + "-om base edits", "base is not a mesh object."),
        refusedCall("TweakOnNothing", tweak, command + "-om ghost edits", "ghost is not a mesh object."),
        failingCall("TweakOnAMeshWithoutGeometry", tweak + "createNode mesh -name hollow;",
                    command + "-om hollow edits", {"(kFailure): Object does not exist"}),
        failingCall("TweakBakedToASmallerMesh", tweak + "setAttr edits.vlist[0].vertex[99] 1 0 0;",
                    onBase + "-b 1 edits", {"The original mesh has no vertices for 1 of the edits."}),
        failingCall("TweakLocked", tweak + "setAttr -lock 1 edits.vlist[0].vertex;", onBase + "-b 1 edits",
                    {"(kFailure): Unexpected Internal Failure"}),
        // What is removed is not undone.
        goodCall("Tweak", tweak, onBase + "edits", 1, cleared),
        goodCall("TweakOfTheSelection", tweak + "select edits;", onBase, 1, cleared),
        goodCall("TweakWithoutEdits", "createNode tweak -name empty;", onBase + "-b 1 empty", 1),
    };
}

const CommandRows kRows{"dv_editTweakNode", tweakCalls()};

}  // namespace
