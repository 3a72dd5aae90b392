#include "commandTable.h"

namespace {

const std::string kShape = "dv_meshEvaluate ";
const std::string kIntermediate = "dv_meshEvaluate -i ";

std::vector<Call> evaluateCalls() {
    const std::string second = "createNode mesh -name second -parent base;";
    const std::string spare =
        "createNode mesh -name spare -parent base; setAttr spare.intermediateObject 1; connectAttr "
        "baseShapeOrig.outMesh spare.inMesh; createNode mesh -name fed; connectAttr spare.outMesh "
        "fed.inMesh;";
    // The shape alone below its transform, with a tweak node, and a groupParts node before that.
    const std::string tweak =
        "createNode transform -name away; parent -shape baseShapeOrig away; createNode tweak -name stray;"
        "connectAttr -force stray.vlist[0].vertex[0] baseShape.tweakLocation;";
    const std::string parts = tweak +
                              "createNode groupParts -name parts1; connectAttr parts1.outputGeometry "
                              "stray.input[0].inputGeometry;";
    const std::string original = "connectAttr baseShapeOrig.worldMesh[0] ";
    const Strings failure{"(kFailure): Unexpected Internal Failure"};
    const Strings noShape{"base has no shape node."};
    return {
        failingCall("EvaluateNothing", "select -clear;", kShape, {"No mesh node provided."}),
        failingCall("EvaluateNoObject", "", kShape + "ghost",
                    {"No object matches name: ghost", "Error getting objects"}),
        failingCall("EvaluateUnknownFlag", "", kShape + "-x base",
                    {"Invalid flag '-x'.", "Error getting objects"}),
        failingCall("EvaluateABlendShape", "", kShape + "bs", {"bs is not a mesh object."}),
        failingCall("EvaluateAnEmptyTransform", "createNode transform -name hollow;", kShape + "hollow",
                    {"hollow has no shape node."}),
        failingCall("EvaluateAGroup", "group -name all base;", kShape + "all", {"all is not a mesh object."}),
        failingCall("EvaluateTwoShapes", second, kShape + "base",
                    {"baseShape has more than one shape node."}),
        failingCall("EvaluateTwoShapesInside", second, kIntermediate + "second",
                    {"second has more than one shape node."}),
        failingCall("EvaluateNoVisibleShape", "setAttr baseShape.intermediateObject 1;", kShape + "base",
                    failure),
        failingCall("EvaluateTwoIntermediates", spare, kIntermediate + "base",
                    {"baseShape has no too many intermediate shape nodes. See script editor for details."}),
        failingCall(
            "EvaluateTwoIntermediatesBeforeTheShape",
            spare + "createNode transform -name away; parent -shape baseShape away;"
                    "parent -shape baseShape base;",
            kIntermediate + "base",
            {"baseShapeOrig has no too many intermediate shape nodes. See script editor for details."}),
        failingCall("EvaluateATweakWithoutInput", tweak, kIntermediate + "base", failure),
        failingCall("EvaluateATweakWithoutChain", tweak + "setAttr stray.input[0].groupId 1;",
                    kIntermediate + "base", {"base has no intermediate shape node."}),
        failingCall("EvaluateGroupPartsWithoutSource", parts, kIntermediate + "base", noShape),
        failingCall("EvaluateATweakAfterItself",
                    tweak + "connectAttr stray.outputGeometry[0] stray.input[0].inputGeometry;",
                    kIntermediate + "base", noShape),
        failingCall("EvaluateAVisibleSource",
                    parts + original + "parts1.inputGeometry; setAttr baseShapeOrig.intermediateObject 0;",
                    kIntermediate + "base", noShape),
        goodCall("EvaluateShape", "", kShape + "base", "|base|baseShape"),
        goodCall("EvaluateShapeOfTheOther", "", kShape + "baseShapeOrig", "|base|baseShape"),
        goodCall("EvaluateIntermediate", "", kIntermediate + "base", "|base|baseShapeOrig"),
        goodCall("EvaluateIntermediateOfVertices", "select base.vtx[3:5];", kIntermediate,
                 "|base|baseShapeOrig"),
        goodCall("EvaluateTheFirst", "duplicate -name other base;", kIntermediate + "baseShape other bs",
                 "|base|baseShapeOrig"),
    };
}

const CommandRows kRows{"dv_meshEvaluate", evaluateCalls()};

}  // namespace
