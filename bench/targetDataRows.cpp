// Deltas and weights of a target, written and read.

#include <maya/MFnDoubleArrayData.h>
#include <maya/MPlug.h>

#include "benchScene.h"
#include "common.h"
#include "rows.h"
#include "table.h"
#include "targetFloors.h"

namespace {

void writeDeltas(benchmark::State&, int size) {
    const BenchScene& scene = BenchScene::of(size);
    setTargetComponents(scene.blendShape, 0, kFullItem, scene.vertices);
    setTargetPoints(scene.blendShape, 0, kFullItem, scene.deltas);
}

void writeDeltasFloor(benchmark::State&, int size) {
    const BenchScene& scene = BenchScene::of(size);
    writeDeltasBare(scene.blendShape, scene.vertices, scene.deltas);
}

void readDeltas(benchmark::State&, int size) {
    const BenchScene& scene = BenchScene::of(size);
    benchmark::DoNotOptimize(getTargetComponents(scene.blendShape, 0, kFullItem));
    benchmark::DoNotOptimize(getTargetPoints(scene.blendShape, 0, kFullItem));
}

void readDeltasFloor(benchmark::State&, int size) {
    MIntArray vertices;
    MPointArray points;
    readDeltasBare(BenchScene::of(size).blendShape, vertices, points);
    benchmark::DoNotOptimize(vertices);
    benchmark::DoNotOptimize(points);
}

void writeWeights(benchmark::State&, int size) {
    const BenchScene& scene = BenchScene::of(size);
    setWeightValues(scene.blendShape, 0, scene.vertices, scene.weights);
}

void writeWeightsFloor(benchmark::State&, int size) {
    const BenchScene& scene = BenchScene::of(size);
    MPlug plug = targetGroup(scene.blendShape).child(1);
    MObject empty = MFnDoubleArrayData().create(MDoubleArray());
    plug.setValue(empty);
    for (unsigned int k = 0; k < scene.vertices.length(); ++k) {
        plug.elementByLogicalIndex(static_cast<unsigned int>(scene.vertices[k]))
            .setFloat(static_cast<float>(scene.weights[k]));
    }
}

void readWeights(benchmark::State& state, int size) {
    const BenchScene& scene = BenchScene::of(size);
    const MPlug plug = targetGroup(scene.blendShape).child(1);
    state.PauseTiming();
    if (plug.numElements() == 0) setWeightValues(scene.blendShape, 0, scene.vertices, scene.weights);
    state.ResumeTiming();
    float sum = 0.0F;
    const unsigned int count = plug.numElements();
    for (unsigned int k = 0; k < count; ++k)
        sum += plug.elementByPhysicalIndex(k).asFloat();
    benchmark::DoNotOptimize(sum);
}

}  // namespace

void addTargetDataRows() {
    addModuleRow("write deltas", writeDeltas, writeDeltasFloor);
    addModuleRow("read deltas", readDeltas, readDeltasFloor);
    addModuleRow("write weights", writeWeights, writeWeightsFloor);
    addHostRow("read weights", readWeights);
}
