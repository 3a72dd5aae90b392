// Modes of the region map. Every fourth vertex is assigned to no region, the others to two.

#include <maya/MColorArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnMesh.h>
#include <maya/MItMeshVertex.h>
#include <maya/MPlug.h>

#include <array>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "benchFile.h"
#include "benchScene.h"
#include "common.h"
#include "rows.h"
#include "table.h"

namespace {

constexpr int kRegions = 6;

using Arrays = std::array<MDoubleArray, kRegions>;

BenchFile& regionFile() {
    static BenchFile file;
    return file;
}

MPlug regionPlug(const MObject& node, int region) {
    return MFnDependencyNode(node).findPlug(MString("regionWeights") + region, false);
}

Arrays readArrays(const MObject& node) {
    Arrays arrays;
    for (int region = 0; region < kRegions; ++region) {
        MObject data;
        regionPlug(node, region).getValue(data);
        MFnDoubleArrayData(data).copyTo(arrays[static_cast<std::size_t>(region)]);
    }
    return arrays;
}

void writeArray(const MObject& node, int region, const MDoubleArray& weights) {
    MPlug plug = regionPlug(node, region);
    MObject data = MFnDoubleArrayData().create(weights);
    plug.setValue(data);
}

void writeArrays(const MObject& node, const Arrays& arrays) {
    for (int region = 0; region < kRegions; ++region)
        writeArray(node, region, arrays[static_cast<std::size_t>(region)]);
}

bool isAssigned(unsigned int vertex) {
    return vertex % 4 != 0;
}

/// The region data node of the scene, made when it is first asked for.
MObject madeNode(BenchScene& scene) {
    if (const MObject made = scene.node("map"); !made.isNull()) return made;
    scene.mel(
        "createNode network -name map; addAttr -ln DELVENRegion -at message map;"
        "connectAttr bs.message map.DELVENRegion; addAttr -ln regionLock -at long -multi map;"
        "addAttr -ln regions -dt \"string\" map; setAttr map.regions -type \"string\" \"brow,lip\"");
    for (const char* name : {"regionWeights", "regionWeightsBuffer"}) {
        for (int region = 0; region < kRegions; ++region)
            scene.mel("addAttr -ln " + (name + std::to_string(region)) + " -dt doubleArray map");
    }
    return scene.node("map");
}

/// The node with its map as it is at the beginning, and the base weights painted, while the clock stands.
MObject prepare(benchmark::State& state, BenchScene& scene) {
    state.PauseTiming();
    const MObject node = madeNode(scene);
    Arrays arrays;
    const unsigned int count = scene.vertices.length();
    for (MDoubleArray& array : arrays)
        array = MDoubleArray(count, 0.0);
    for (unsigned int vertex = 0; vertex < count; ++vertex) {
        if (!isAssigned(vertex)) continue;
        arrays[vertex % kRegions][vertex] = 0.25;
        arrays[(vertex + 1) % kRegions][vertex] = 0.75;
    }
    writeArrays(node, arrays);
    if (getWeightsPlug(scene.blendShape, kBaseWeights).numElements() == 0)
        setWeightValues(scene.blendShape, kBaseWeights, scene.vertices, scene.weights);
    state.ResumeTiming();
    return node;
}

Work command(const std::string& arguments) {
    return [arguments](benchmark::State& state, int size) {
        BenchScene& scene = BenchScene::of(size);
        prepare(state, scene);
        if (scene.mel("dv_editRegionMap -m baseShape " + arguments + " map") != "1") std::exit(1);
    };
}

void mapFloor(benchmark::State& state, int size) {
    const MObject node = prepare(state, BenchScene::of(size));
    writeArrays(node, readArrays(node));
}

void addFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    const MObject node = prepare(state, scene);
    MPlug painted = getWeightsPlug(scene.blendShape, kBaseWeights);
    MIntArray vertices;
    painted.getExistingArrayAttributeIndices(vertices);
    float sum = 0.0F;
    for (unsigned int k = 0; k < vertices.length(); ++k)
        sum += painted.elementByPhysicalIndex(k).asFloat();
    benchmark::DoNotOptimize(sum);
    writeArrays(node, readArrays(node));
}

void neighboursFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    const MObject node = prepare(state, scene);
    const Arrays arrays = readArrays(node);
    MObject shape = scene.node("baseShape");
    MItMeshVertex iterator(shape);
    MIntArray connected;
    int previous = 0;
    for (unsigned int vertex = 0; vertex < scene.vertices.length(); ++vertex) {
        if (isAssigned(vertex)) continue;
        iterator.setIndex(static_cast<int>(vertex), previous);
        iterator.getConnectedVertices(connected);
    }
    writeArrays(node, arrays);
}

void editFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    const MObject node = prepare(state, scene);
    MObject data;
    regionPlug(node, 1).getValue(data);
    MDoubleArray weights;
    MFnDoubleArrayData(data).copyTo(weights);
    const MPlug plug = getWeightsPlug(scene.blendShape, kBaseWeights);
    for (unsigned int vertex = 0; vertex < weights.length(); ++vertex)
        plug.elementByLogicalIndex(vertex).setFloat(static_cast<float>(weights[vertex]));
}

void clearFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    const MObject node = prepare(state, scene);
    writeArray(node, 1, MDoubleArray(scene.vertices.length(), 0.0));
}

void colorFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    const MObject node = prepare(state, scene);
    benchmark::DoNotOptimize(readArrays(node));
    MFnMesh mesh(scene.node("baseShape"));
    MColorArray colors(scene.vertices.length(), MColor(0.5F, 0.5F, 0.5F, 1.0F));
    mesh.setVertexColors(colors, scene.vertices);
}

void exportMap(benchmark::State& state, int size) {
    command("-ex" + regionFile().argument())(state, size);
    regionFile().size = size;
}

/// Reads the weights and puts their numbers, and nothing else, one after the other.
void exportFloor(benchmark::State& state, int size) {
    const MObject node = prepare(state, BenchScene::of(size));
    const Arrays arrays = readArrays(node);
    const unsigned int count = arrays[0].length();
    constexpr std::size_t kRoom = 128;  // more than the numbers of a vertex need
    const std::unique_ptr<char[]> buffer(new char[kRoom * count]);
    char* at = buffer.get();
    for (unsigned int vertex = 0; vertex < count; ++vertex) {
        at = std::to_chars(at, at + kRoom, vertex).ptr;
        for (const MDoubleArray& array : arrays)
            at = std::to_chars(at, at + kRoom, array[vertex], std::chars_format::general, 6).ptr;
    }
    benchmark::DoNotOptimize(buffer[0]);
}

/// The node, and the file with its map, made while the clock stands.
MObject prepareImport(benchmark::State& state, BenchScene& scene, int size) {
    const MObject node = prepare(state, scene);
    state.PauseTiming();
    if (regionFile().size != size) {
        scene.mel("dv_editRegionMap -ex" + regionFile().argument() + "map");
        regionFile().size = size;
    }
    state.ResumeTiming();
    return node;
}

void importMap(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    prepareImport(state, scene, size);
    if (scene.mel("dv_editRegionMap -im -m baseShape" + regionFile().argument() + "map") != "1") std::exit(1);
}

/// Reads the file as it is known to be: six numbers, two tabs before each, follow a bracket.
void importFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    const MObject node = prepareImport(state, scene, size);
    const std::size_t length = std::filesystem::file_size(regionFile().path());
    const std::unique_ptr<char[]> text(new char[length]);
    std::ifstream(regionFile().path(), std::ios::binary)
        .read(text.get(), static_cast<std::streamsize>(length));
    const char* const end = text.get() + length;
    Arrays arrays;
    for (MDoubleArray& array : arrays)
        array = MDoubleArray(scene.vertices.length(), 0.0);
    unsigned int vertex = 0;
    for (const char* at = text.get(); at != end; ++at) {
        if (*at != '[') continue;
        for (MDoubleArray& array : arrays)
            at = std::from_chars(at + 4, end, array[vertex]).ptr;
        ++vertex;
    }
    if (vertex != scene.vertices.length()) std::exit(1);
    writeArrays(node, arrays);
}

}  // namespace

void addRegionRows() {
    constexpr double kFactor = 1.5;
    addModuleRow("regions: add", command("-atm -i 1"), addFloor, kFactor);
    addModuleRow("regions: append", command("-ap -i 1"), mapFloor, kFactor);
    addModuleRow("regions: append by neighbours", command("-ap -i -1"), neighboursFloor, kFactor);
    addModuleRow("regions: edit", command("-e -i 1"), editFloor, kFactor);
    addModuleRow("regions: clear", command("-cl -i 1"), clearFloor, kFactor);
    addModuleRow("regions: store", command("-res 0"), mapFloor, kFactor);
    addModuleRow("regions: color", command("-col 1 -i 1"), colorFloor, kFactor);
    addModuleRow("regions: export", exportMap, exportFloor, kFactor);
    addModuleRow("regions: import", importMap, importFloor, kFactor);
}
