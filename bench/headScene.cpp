#include "headScene.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>

#include "common.h"
#include "sheets.h"

HeadScene::HeadScene(int vertices) : scene(BenchScene::of(vertices)) {
    if (scene.mel("objExists headTargets") == "0") make(vertices);
    blendShape = scene.node("headTargets");
    MSelectionList list;
    list.add("headShapeOrig");
    list.add("headShapeOrig.dvVertexOrderMap");
    list.getDagPath(0, original);
    list.getPlug(1, map);
}

void HeadScene::make(int vertices) {
    const SheetShape shape(headSheets(vertices));
    MFnMesh mesh;
    MObject transform =
        mesh.create(static_cast<int>(shape.points.length()), static_cast<int>(shape.counts.length()),
                    shape.points, shape.counts, shape.connects);
    MFnDagNode(transform).setName("head");
    mesh.setName("headShape");
    scene.mel("blendShape -name headTargets head; dv_polyMapVertexOrder headShapeOrig");
    MIntArray moved;
    MPointArray deltas;
    for (unsigned int vertex = 0; vertex < shape.points.length(); ++vertex) {
        moved.append(static_cast<int>(vertex));
        deltas.append(MPoint(0.001 * vertex, 1.0, -0.5));
    }
    setTargetComponents(scene.node("headTargets"), 0, kFullItem, moved);
    setTargetPoints(scene.node("headTargets"), 0, kFullItem, deltas);
    scene.mel("flushUndo");
}
