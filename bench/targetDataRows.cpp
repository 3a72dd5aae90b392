// Deltas and weights of a target, written and read.

#include <maya/MFnComponentListData.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>

#include <charconv>
#include <string>

#include "benchScene.h"
#include "common.h"
#include "rows.h"
#include "table.h"

namespace {

MPlug group(const BenchScene& scene) {
    return MFnDependencyNode(scene.blendShape)
        .findPlug("inputTarget", false)
        .elementByLogicalIndex(0)
        .child(0)
        .elementByLogicalIndex(0);
}

MPlug itemChild(const BenchScene& scene, unsigned int child) {
    return group(scene).child(0).elementByLogicalIndex(kFullItem).child(child);
}

constexpr unsigned int kPoints = 3;
constexpr unsigned int kComponents = 4;

void writeDeltas(benchmark::State&, int size) {
    const BenchScene& scene = BenchScene::of(size);
    setTargetComponents(scene.blendShape, 0, kFullItem, scene.vertices);
    setTargetPoints(scene.blendShape, 0, kFullItem, scene.deltas);
}

void writeDeltasFloor(benchmark::State&, int size) {
    const BenchScene& scene = BenchScene::of(size);
    std::string text = std::string("setAttr ") + itemChild(scene, kComponents).name().asChar() +
                       " -type componentList " + std::to_string(scene.vertices.length());
    text.reserve(text.size() + scene.vertices.length() * 13 + 1);
    char digits[16];
    for (const int vertex : scene.vertices) {
        const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, vertex);
        text.append(" vtx[").append(digits, end.ptr).append("]");
    }
    text += ';';
    MGlobal::executeCommand(text.c_str(), false, false);
    itemChild(scene, kPoints).setValue(MFnPointArrayData().create(scene.deltas));
}

void readDeltas(benchmark::State&, int size) {
    const BenchScene& scene = BenchScene::of(size);
    benchmark::DoNotOptimize(getTargetComponents(scene.blendShape, 0, kFullItem));
    benchmark::DoNotOptimize(getTargetPoints(scene.blendShape, 0, kFullItem));
}

void readDeltasFloor(benchmark::State&, int size) {
    const BenchScene& scene = BenchScene::of(size);
    const MFnComponentListData list(itemChild(scene, kComponents).asMObject());
    MIntArray vertices;
    for (unsigned int k = 0; k < list.length(); ++k) {
        MObject object = list[k];
        const MFnSingleIndexedComponent component(object);
        for (int e = 0; e < component.elementCount(); ++e)
            vertices.append(component.element(e));
    }
    MPointArray points;
    MFnPointArrayData(itemChild(scene, kPoints).asMObject()).copyTo(points);
    benchmark::DoNotOptimize(vertices);
    benchmark::DoNotOptimize(points);
}

void writeWeights(benchmark::State&, int size) {
    const BenchScene& scene = BenchScene::of(size);
    setWeightValues(scene.blendShape, 0, scene.vertices, scene.weights);
}

void writeWeightsFloor(benchmark::State&, int size) {
    const BenchScene& scene = BenchScene::of(size);
    MPlug plug = group(scene).child(1);
    plug.setValue(MFnDoubleArrayData().create(MDoubleArray()));
    for (unsigned int k = 0; k < scene.vertices.length(); ++k) {
        plug.elementByLogicalIndex(static_cast<unsigned int>(scene.vertices[k]))
            .setFloat(static_cast<float>(scene.weights[k]));
    }
}

void readWeights(benchmark::State& state, int size) {
    const BenchScene& scene = BenchScene::of(size);
    const MPlug plug = group(scene).child(1);
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
