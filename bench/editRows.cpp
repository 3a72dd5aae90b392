// A target that moves every vertex: replaced from a sculpt, rid of half of its deltas, moved to another
// weight.

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MSelectionList.h>

#include <cstdlib>
#include <string>

#include "benchScene.h"
#include "common.h"
#include "rows.h"
#include "table.h"
#include "targetFloors.h"

namespace {

constexpr int kNewItem = 5500;

/// The mesh "sculpt", which differs from the base in every vertex; made in the scene when it is first asked
/// for.
MObject sculptIn(BenchScene& scene) {
    if (const MObject made = scene.node("sculptShape"); !made.isNull()) return made;
    MFnMesh mesh;
    MObject transform = mesh.copy(scene.original);
    MFnDependencyNode(transform).setName("sculpt");
    mesh.setName("sculptShape");
    MFloatPointArray points;
    mesh.getPoints(points);
    for (MFloatPoint& point : points)
        point.y += 1.0F;
    mesh.setPoints(points);
    return mesh.object();
}

/// A round of a command, which is undone outside of the time that counts.
void run(benchmark::State& state, BenchScene& scene, const char* command) {
    if (scene.mel(command) != "1") std::exit(1);
    state.PauseTiming();
    scene.mel("undo; flushUndo");
    state.ResumeTiming();
}

void replace(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    state.PauseTiming();
    sculptIn(scene);
    state.ResumeTiming();
    run(state, scene, "dv_blendShapeReplaceTarget -m sculptShape -om baseShapeOrig bs");
}

void replaceFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    state.PauseTiming();
    const MObject sculpt = sculptIn(scene);
    state.ResumeTiming();
    for (const MObject& mesh : {sculpt, scene.original}) {
        MFloatPointArray points;
        MFnMesh(mesh).getPoints(points, MSpace::kObject);
        benchmark::DoNotOptimize(points);
    }
    MIntArray vertices;
    MPointArray points;
    readDeltasBare(scene.blendShape, vertices, points);
    writeDeltasBare(scene.blendShape, scene.vertices, scene.deltas);
}

/// Selects half of the vertices, or of the faces, of the base.
void selectHalf(BenchScene& scene, const std::string& component, unsigned int count) {
    scene.mel("select base." + component + "[0:" + std::to_string(count / 2 - 1) + "]; flushUndo");
}

void removeVertices(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    state.PauseTiming();
    selectHalf(scene, "vtx", scene.vertices.length());
    state.ResumeTiming();
    run(state, scene, "dv_blendShapeRemoveDeltas bs");
}

void removeFaces(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    state.PauseTiming();
    selectHalf(scene, "f", static_cast<unsigned int>(MFnMesh(scene.original).numPolygons()));
    state.ResumeTiming();
    run(state, scene, "dv_blendShapeRemoveDeltas bs");
}

/// Reads the deltas, and writes those of the second half of the vertices.
void removeHalf(const BenchScene& scene) {
    MIntArray vertices;
    MPointArray points;
    readDeltasBare(scene.blendShape, vertices, points);
    MIntArray kept;
    MPointArray keptPoints;
    for (unsigned int k = vertices.length() / 2; k < vertices.length(); ++k) {
        kept.append(vertices[k]);
        keptPoints.append(points[k]);
    }
    writeDeltasBare(scene.blendShape, kept, keptPoints);
}

/// The path and the component of the first selected object.
MObject selectedComponent(MDagPath& path) {
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    MObject component;
    selection.getDagPath(0, path, component);
    return component;
}

void restoreDeltas(benchmark::State& state, const BenchScene& scene) {
    state.PauseTiming();
    writeDeltasBare(scene.blendShape, scene.vertices, scene.deltas);
    state.ResumeTiming();
}

void removeVerticesFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    state.PauseTiming();
    selectHalf(scene, "vtx", scene.vertices.length());
    state.ResumeTiming();
    MDagPath path;
    MObject component = selectedComponent(path);
    int sum = 0;
    for (MItMeshVertex vertex(path, component); !vertex.isDone(); vertex.next())
        sum ^= vertex.index();
    benchmark::DoNotOptimize(sum);
    removeHalf(scene);
    restoreDeltas(state, scene);
}

void removeFacesFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    state.PauseTiming();
    selectHalf(scene, "f", static_cast<unsigned int>(MFnMesh(scene.original).numPolygons()));
    state.ResumeTiming();
    MDagPath path;
    MObject component = selectedComponent(path);
    MIntArray corners;
    for (MItMeshPolygon face(path, component); !face.isDone(); face.next())
        face.getVertices(corners);
    benchmark::DoNotOptimize(corners);
    removeHalf(scene);
    restoreDeltas(state, scene);
}

void move(benchmark::State& state, int size) {
    run(state, BenchScene::of(size), "dv_blendShapeSetInbetweenPosition -tp 5500 bs");
}

void removeItem(int item) {
    MGlobal::executeCommand(MString("removeMultiInstance -b 1 bs.it[0].itg[0].iti[") + item + "]", false,
                            false);
}

void moveFloor(benchmark::State& state, int size) {
    const BenchScene& scene = BenchScene::of(size);
    MIntArray vertices;
    MPointArray points;
    readDeltasBare(scene.blendShape, vertices, points);
    removeItem(kFullItem);
    writeDeltasBare(scene.blendShape, vertices, points, kNewItem);
    state.PauseTiming();
    removeItem(kNewItem);
    state.ResumeTiming();
    restoreDeltas(state, scene);
}

}  // namespace

void addEditRows() {
    addModuleRow("replace target", replace, replaceFloor);
    addModuleRow("remove deltas, vertices", removeVertices, removeVerticesFloor);
    addModuleRow("remove deltas, faces", removeFaces, removeFacesFloor);
    addModuleRow("move in-between", move, moveFloor);
}
