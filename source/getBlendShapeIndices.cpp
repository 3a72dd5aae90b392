#include "getBlendShapeIndices.h"

#include <maya/MArgDatabase.h>
#include <maya/MFnBlendShapeDeformer.h>
#include <maya/MIntArray.h>

#include "commandSupport.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{getBlendShapeIndices::kName,
                                     "Get all weight indices of the blend shape deformer.",
                                     {},
                                     "dv_getBlendShapeIndices <string>",
                                     "int[]"};
    return command;
}

}  // namespace

void* getBlendShapeIndices::creator() {
    return new getBlendShapeIndices();
}

MSyntax getBlendShapeIndices::newSyntax() {
    return makeSyntax(info());
}

MStatus getBlendShapeIndices::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    const MStatus status = getBlendShapeNode(database, ErrorResult::kNothing, blendShape_);
    return status ? redoIt() : status;
}

MStatus getBlendShapeIndices::redoIt() {
    MIntArray indices;
    MFnBlendShapeDeformer(blendShape_).weightIndexList(indices);
    setResult(indices);
    return MS::kSuccess;
}

MStatus getBlendShapeIndices::undoIt() {
    return MS::kSuccess;
}

bool getBlendShapeIndices::isUndoable() const {
    return false;
}
