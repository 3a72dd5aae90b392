#include "getBlendShapeIndices.h"

#include <maya/MArgDatabase.h>
#include <maya/MFnBlendShapeDeformer.h>
#include <maya/MIntArray.h>

const CommandInfo& getBlendShapeIndices::info() {
    static const CommandInfo description{kName,
                                         "Get all weight indices of the blend shape deformer.",
                                         {},
                                         "dv_getBlendShapeIndices <string>",
                                         "int[]"};
    return description;
}

CallOutcome getBlendShapeIndices::read(const MArgDatabase& arguments) {
    return readBlendShape(arguments, blendShape_);
}

CallOutcome getBlendShapeIndices::edit() {
    MIntArray indices;
    MFnBlendShapeDeformer(blendShape_).weightIndexList(indices);
    setResult(indices);
    return CallOutcome();
}
