#include "commandTable.h"

namespace {

const std::string kCommand = "dv_sculptExtractDeltaMesh ";
const std::string kOnBase = kCommand + "-m baseShape -om baseShapeOrig ";
// A copy of a deformed mesh has an original shape of the same name, too.
const std::string kCopy = "duplicate -name sculpt base; delete |sculpt|baseShapeOrig; move 1 2 3 sculpt;";
const std::string kSculpt = kCopy + "move -r 0 3 0 sculpt.vtx[7:8]; select -clear;";
const std::string kHollow = kSculpt + "createNode mesh -name hollow; select -clear;";

/// The meshes do not go together: the result is -1.
Call fruitlessCall(const std::string& name, const std::string& setup, const std::string& text,
                   const std::string& error) {
    return {name, setup, text, true, -1, {error}, ""};
}

std::vector<Call> sculptCalls() {
    const std::string undefined = "Mesh flag and target node must be defined.";
    const std::string noPoints = "hollow has no points.";
    const std::string noBase = "base is not a mesh object.";
    return {
        failingCall("SculptOfNoObject", "", kOnBase + "ghost",
                    {"No object matches name: ghost", "Error getting objects"}),
        refusedCall("SculptOfNothing", "select -clear;", kOnBase, "No target mesh provided."),
        refusedCall("SculptWithoutMesh", kSculpt, kCommand + "-om baseShapeOrig sculptShape", undefined),
        refusedCall("SculptWithoutOriginal", kSculpt, kCommand + "-m baseShape -om \"\" sculptShape",
                    undefined),
        refusedCall("SculptOnNothing", kSculpt, kCommand + "-m ghost -om baseShapeOrig sculptShape",
                    undefined),
        refusedCall("SculptATransform", kSculpt, kOnBase + "sculpt", "sculpt is not a mesh object."),
        refusedCall("SculptOnATransform", kSculpt, kCommand + "-m base -om baseShapeOrig sculptShape",
                    noBase),
        refusedCall("SculptFromATransform", kSculpt, kCommand + "-m baseShape -om base sculptShape", noBase),
        fruitlessCall("SculptFromAnotherMesh", kSculpt + "polyPlane -name small -sx 1 -sy 1;",
                      kCommand + "-m baseShape -om smallShape sculptShape",
                      "No shape extracted. The intermediate shape has a different vertex count."),
        fruitlessCall("SculptOnAHollowMesh", kHollow, kCommand + "-m hollow -om baseShapeOrig sculptShape",
                      noPoints),
        fruitlessCall("SculptHollowMesh", kHollow, kOnBase + "hollow", noPoints),
        fruitlessCall("SculptFromAHollowMesh", kHollow, kCommand + "-m baseShape -om hollow sculptShape",
                      noPoints),
        fruitlessCall("SculptEqual", kCopy, kOnBase + "-c sculptShape",
                      "No shape extracted. Both meshes are identical."),
        goodCall("SculptExtracted", kSculpt, kOnBase + "sculptShape bs", "sculpt_corrective"),
        goodCall("SculptCompared", kSculpt + "select sculptShape;", kOnBase + "-compare",
                 "sculpt_corrective"),
        goodCall("SculptAgain", kSculpt + "createNode transform -name sculpt_corrective;",
                 kOnBase + "sculptShape", "sculpt_corrective1"),
    };
}

const CommandRows kRows{"dv_sculptExtractDeltaMesh", sculptCalls()};

}  // namespace
