// Target data written to a file and read from it: 50 targets, each moving every tenth vertex of the
// mesh.

#include <charconv>
#include <cmath>
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

constexpr int kTargets = 50;

BenchFile& dataFile() {
    static BenchFile file;
    return file;
}

/// The blend shape "data" with all targets, made in the scene when it is first asked for.
MObject dataNode(BenchScene& scene) {
    if (const MObject made = scene.node("data"); !made.isNull()) return made;
    scene.mel("blendShape -name data base");
    const MObject node = scene.node("data");
    MIntArray vertices;
    MPointArray deltas;
    for (unsigned int vertex = 0; vertex < scene.vertices.length(); vertex += 10) {
        vertices.append(static_cast<int>(vertex));
        // No number is a round one, as in sculpted shapes.
        deltas.append(MPoint(std::sin(vertex), 0.01 * std::cos(vertex), 1e-5 * std::sin(3.0 * vertex)));
    }
    for (int target = 0; target < kTargets; ++target) {
        setTargetComponents(node, target, kFullItem, vertices);
        setTargetPoints(node, target, kFullItem, deltas);
    }
    return node;
}

void writeFile(BenchScene& scene, int size) {
    std::string command = "dv_blendShapeExportData -d" + dataFile().argument();
    for (int target = 0; target < kTargets; ++target)
        command += " -i " + std::to_string(target) + " -cn target" + std::to_string(target);
    if (scene.mel(command + " data") != "1") std::exit(1);
    dataFile().size = size;
}

void exportTargets(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    state.PauseTiming();
    dataNode(scene);
    state.ResumeTiming();
    writeFile(scene, size);
}

/// Reads the deltas and puts their numbers, and nothing else, one after the other.
void exportFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    state.PauseTiming();
    const MObject node = dataNode(scene);
    state.ResumeTiming();
    constexpr std::size_t kRoom = 64;  // more than four numbers need
    const std::unique_ptr<char[]> buffer(new char[kRoom * kTargets * (scene.vertices.length() / 10 + 1)]);
    char* at = buffer.get();
    for (int target = 0; target < kTargets; ++target) {
        const MIntArray vertices = getTargetComponents(node, target, kFullItem);
        const MPointArray points = getTargetPoints(node, target, kFullItem);
        for (unsigned int k = 0; k < vertices.length(); ++k) {
            at = std::to_chars(at, at + kRoom, vertices[k]).ptr;
            for (const double value : {points[k].x, points[k].y, points[k].z})
                at = std::to_chars(at, at + kRoom, value, std::chars_format::general, 6).ptr;
        }
    }
    benchmark::DoNotOptimize(buffer[0]);
}

/// The blend shape "data" of the scene and the file with its targets, made while the clock stands.
MObject prepareImport(benchmark::State& state, BenchScene& scene, int size) {
    state.PauseTiming();
    const MObject node = dataNode(scene);
    if (dataFile().size != size) writeFile(scene, size);
    state.ResumeTiming();
    return node;
}

void importTargets(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    prepareImport(state, scene, size);
    if (scene.mel("dv_blendShapeImportData -d" + dataFile().argument() + "data") != "1") std::exit(1);
}

/// Reads the file as it is known to be: a number after a quote is a vertex, three after a bracket
/// its delta.
void importFloor(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    const MObject node = prepareImport(state, scene, size);
    const std::size_t length = std::filesystem::file_size(dataFile().path());
    const std::unique_ptr<char[]> text(new char[length]);
    std::ifstream(dataFile().path(), std::ios::binary).read(text.get(), static_cast<std::streamsize>(length));
    const char* const end = text.get() + length;
    MIntArray vertices;
    MPointArray points;
    int target = 0;
    int key = 0;
    for (const char* at = text.get(); at != end; ++at) {
        if (*at == '"') at = std::from_chars(at + 1, end, key).ptr;
        if (*at == '[') {
            MPoint point;
            at = std::from_chars(at + 1, end, point.x).ptr;
            at = std::from_chars(at + 2, end, point.y).ptr;
            at = std::from_chars(at + 2, end, point.z).ptr;
            vertices.append(key);
            points.append(point);
        }
        if (*at != '}' || vertices.length() == 0) continue;
        setTargetComponents(node, target, kFullItem, vertices);
        setTargetPoints(node, target++, kFullItem, points);
        vertices.clear();
        points.clear();
    }
    if (target != kTargets) std::exit(1);
}

}  // namespace

void addDataFileRows() {
    addModuleRow("export 50 targets", exportTargets, exportFloor, 1.5);
    addModuleRow("import 50 targets", importTargets, importFloor, 1.5);
}
