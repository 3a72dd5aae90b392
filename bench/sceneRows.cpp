// The host's own work: building a scene, importing, component lists, weights one by one, evaluation.

#include <maya/MFnDependencyNode.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>

#include <filesystem>
#include <map>
#include <string>
#include <system_error>

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

/// An OBJ file of a size, gone when the program ends.
class ObjFile {
  public:
    explicit ObjFile(BenchScene& scene, int size)
        : path_(std::filesystem::temp_directory_path() / ("delvenbench" + std::to_string(size) + ".obj")) {
        scene.mel("select base; file -force -exportSelected -type OBJexport \"" + path() + "\"");
    }
    ~ObjFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    ObjFile(const ObjFile&) = delete;
    ObjFile& operator=(const ObjFile&) = delete;
    std::string path() const { return path_.generic_string(); }

  private:
    std::filesystem::path path_;
};

void importObj(benchmark::State& state, int size) {
    static std::map<int, ObjFile> files;
    BenchScene& scene = BenchScene::of(size);
    state.PauseTiming();
    const ObjFile& file = files.try_emplace(size, scene, size).first->second;
    state.ResumeTiming();
    const std::string made = scene.mel("string $made[] = `file -import -type OBJ -returnNewNodes \"" +
                                       file.path() + "\"`; $made[0]");
    state.PauseTiming();
    scene.mel("delete " + made + "; flushUndo");
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

/// New elements one after the other: the list is empty before each round.
void setWeightsOneByOne(benchmark::State& state, int size) {
    const BenchScene& scene = BenchScene::of(size);
    MPlug weights =
        MFnDependencyNode(scene.blendShape).findPlug("inputTarget", false).elementByLogicalIndex(0).child(1);
    state.PauseTiming();
    MObject empty = MFnDoubleArrayData().create(MDoubleArray());
    weights.setValue(empty);
    state.ResumeTiming();
    const unsigned int count = scene.vertices.length();
    for (unsigned int k = 0; k < count; ++k)
        weights.elementByLogicalIndex(k).setFloat(0.5F);
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
