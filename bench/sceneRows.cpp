// The host's own work: building a scene, importing, component lists, weights one by one, evaluation.

#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "benchScene.h"
#include "rows.h"
#include "table.h"

namespace {

const Grid& grid(int size) {
    static Grid current(0);
    static int currentSize = 0;
    if (currentSize != size) {
        current = Grid(size);
        currentSize = size;
    }
    return current;
}

void buildScene(benchmark::State& state, int size) {
    const Grid& source = grid(size);
    BenchScene& scene = BenchScene::of(size);
    MFnMesh mesh;
    MObject transform =
        mesh.create(static_cast<int>(source.points.length()), static_cast<int>(source.counts.length()),
                    source.points, source.counts, source.connects);
    const std::string name = MFnDependencyNode(transform).name().asChar();
    scene.mel("blendShape -name built " + name);
    state.PauseTiming();
    scene.mel("delete " + name + "; flushUndo");
    state.ResumeTiming();
}

void importObj(benchmark::State& state, int size) {
    BenchScene& scene = BenchScene::of(size);
    state.PauseTiming();
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("delvenbench" + std::to_string(size) + ".obj");
    if (!std::filesystem::exists(file)) {
        scene.mel("select base; file -force -exportSelected -type OBJexport \"" + file.generic_string() +
                  "\"");
    }
    state.ResumeTiming();
    const std::string made = scene.mel("string $made[] = `file -import -type OBJ -returnNewNodes \"" +
                                       file.generic_string() + "\"`; $made[0]");
    state.PauseTiming();
    scene.mel("delete " + made + "; flushUndo");
    std::filesystem::remove(file);
    state.ResumeTiming();
}

/// The text of a setAttr command that lists every vertex.
std::string composeList(const BenchScene& scene) {
    std::string text = "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList " +
                       std::to_string(scene.vertices.length());
    for (const int vertex : scene.vertices) {
        text += " vtx[";
        text += std::to_string(vertex);
        text += ']';
    }
    return text;
}

void composeComponents(benchmark::State&, int size) {
    benchmark::DoNotOptimize(composeList(BenchScene::of(size)));
}

void applyComponents(benchmark::State& state, int size) {
    const BenchScene& scene = BenchScene::of(size);
    state.PauseTiming();
    const MString text = composeList(scene).c_str();
    state.ResumeTiming();
    MGlobal::executeCommand(text, false, false);
}

void setWeightsOneByOne(benchmark::State& state, int size) {
    const BenchScene& scene = BenchScene::of(size);
    const MPlug weights =
        MFnDependencyNode(scene.blendShape).findPlug("inputTarget", false).elementByLogicalIndex(0).child(1);
    const unsigned int count = scene.vertices.length();
    for (unsigned int k = 0; k < count; ++k)
        weights.elementByLogicalIndex(k).setFloat(0.5F);
    state.PauseTiming();
    MGlobal::executeCommand("removeMultiInstance bs.it[0].bw[0]", false, false);
    state.ResumeTiming();
}

void evaluate(benchmark::State& state, int size) {
    const BenchScene& scene = BenchScene::of(size);
    const MPlug weight =
        MFnDependencyNode(scene.blendShape).findPlug("weight", false).elementByLogicalIndex(0);
    const MFnMesh mesh(scene.node("baseShape"));
    state.PauseTiming();
    const float next = weight.asFloat() > 0.5F ? 0.25F : 0.75F;
    state.ResumeTiming();
    MPlug(weight).setFloat(next);
    MFloatPointArray points;
    mesh.getPoints(points);
    benchmark::DoNotOptimize(points);
}

}  // namespace

void addSceneRows() {
    addHostRow("build scene", buildScene);
    addHostRow("import OBJ", importObj);
    addHostRow("compose component list", composeComponents);
    addHostRow("parse and apply the list", applyComponents);
    addHostRow("set weights one by one", setWeightsOneByOne);
    addHostRow("deform and read points", evaluate);
}
