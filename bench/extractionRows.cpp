// A target extracted as a mesh.

#include <maya/MFnBlendShapeDeformer.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MObjectArray.h>

#include "benchScene.h"
#include "rows.h"
#include "table.h"
#include "targetFloors.h"

namespace {

void extract(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    scene.mel("dv_blendShapeExtractTarget -om baseShapeOrig bs");
    state.PauseTiming();
    scene.mel("undo; flushUndo");
    state.ResumeTiming();
}

/// The host calls of an extraction without checks, names and messages.
void extractFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    MIntArray vertices;
    MPointArray points;
    readDeltasBare(scene.blendShape, vertices, points);
    MFnMesh baseMesh;
    MObject base = baseMesh.copy(scene.original);
    MFnMesh targetMesh;
    MObject target = targetMesh.copy(scene.original);
    MFnBlendShapeDeformer deformer;
    const MObject node = deformer.create(base);
    MObjectArray bases;
    deformer.getBaseObjects(bases);
    deformer.addTarget(bases[0], 0, targetMesh.object(), 1.0);
    deformer.setWeight(0, 1.0F);
    writeDeltasBare(node, vertices, points);
    MObject extracted = MFnMesh().copy(MFnDagNode(base).child(0));
    MGlobal::deleteNode(base);
    MGlobal::deleteNode(target);
    MGlobal::executeCommand(
        "sets -e -forceElement initialShadingGroup " + MFnDagNode(extracted).fullPathName(), false, false);
    state.PauseTiming();
    MGlobal::deleteNode(extracted);
    state.ResumeTiming();
}

}  // namespace

void addExtractionRows() {
    addModuleRow("extract target", extract, extractFloor);
}
