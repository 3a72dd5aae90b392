// A corrective shape extracted from a sculpt of a skinned mesh.

#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MObject.h>
#include <maya/MString.h>

#include <cstddef>

#include "benchScene.h"
#include "rows.h"
#include "table.h"

namespace {

/// The scene of a size with a mesh "arm", bent by two joints with blended weights, and a copy "sculpt" of its
/// pose with every vertex moved.
struct SkinScene {
    explicit SkinScene(int vertices) : scene(BenchScene::of(vertices)) {
        if (scene.mel("objExists armShape") == "0") make();
        deformed = scene.node("armShape");
        original = scene.node("armShapeOrig");
        sculpt = scene.node("sculptShape");
    }

    BenchScene& scene;
    MObject deformed;
    MObject original;
    MObject sculpt;

  private:
    void make() const {
        copyAs("arm", scene.original);
        scene.mel(
            "select -clear; joint -name low; joint -position 1 1 1 -name high;"
            "skinCluster -maximumInfluences 2 low high arm; setAttr high.rotate 20 -35 50");
        MFnMesh mesh(copyAs("sculpt", scene.node("armShape")));
        MFloatPointArray points;
        mesh.getPoints(points);
        for (MFloatPoint& point : points)
            point.y += 0.25F;
        mesh.setPoints(points);
        scene.mel("flushUndo");
    }

    static MObject copyAs(const char* name, const MObject& source) {
        MFnMesh mesh;
        MObject transform = mesh.copy(source);
        MFnDependencyNode(transform).setName(name);
        mesh.setName(MString(name) + "Shape");
        return mesh.object();
    }
};

void extractCorrective(benchmark::State& state, int size) {
    state.PauseTiming();
    const SkinScene skin(size);
    state.ResumeTiming();
    skin.scene.mel("dv_sculptExtractDeltaMesh -m armShape -om armShapeOrig sculptShape");
    state.PauseTiming();
    skin.scene.mel("undo; flushUndo");
    state.ResumeTiming();
}

/// One pass of inversions of the rows (moved - posed), applied to the offsets of the sculpt.
void invertAll(const float* const moved[3], const float* posed, const float* sculpt, float* points,
               std::size_t count) {
    for (std::size_t vertex = 0; vertex < count; ++vertex) {
        const std::size_t at = 4 * vertex;
        double rows[3][3];
        double offset[3];
        for (std::size_t column = 0; column < 3; ++column) {
            for (std::size_t row = 0; row < 3; ++row)
                rows[row][column] = static_cast<double>(moved[row][at + column]) - posed[at + column];
            offset[column] = static_cast<double>(sculpt[at + column]) - posed[at + column];
        }
        double inverse[3][3];
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 3; ++column) {
                const std::size_t r1 = (column + 1) % 3, r2 = (column + 2) % 3;
                const std::size_t c1 = (row + 1) % 3, c2 = (row + 2) % 3;
                inverse[row][column] = rows[r1][c1] * rows[r2][c2] - rows[r1][c2] * rows[r2][c1];
            }
        }
        const double determinant =
            rows[0][0] * inverse[0][0] + rows[0][1] * inverse[1][0] + rows[0][2] * inverse[2][0];
        for (std::size_t column = 0; column < 3; ++column) {
            double sum = 0.0;
            for (std::size_t row = 0; row < 3; ++row)
                sum += offset[row] * inverse[row][column];
            points[at + column] += static_cast<float>(sum / determinant);
        }
    }
}

/// Four readings of the deformed mesh, the writes of the intermediate shape between them and the inversions.
void extractCorrectiveFloor(benchmark::State& state, int size) {
    state.PauseTiming();
    const SkinScene skin(size);
    MFnMesh original(skin.original);
    const MFnMesh deformed(skin.deformed);
    MFloatPointArray rest;
    original.getPoints(rest);
    MFloatPointArray sculpt;
    MFnMesh(skin.sculpt).getPoints(sculpt);
    // What a round before left evaluated is evaluated again.
    original.setPoints(rest);
    state.ResumeTiming();
    MFloatPointArray posed;
    deformed.getPoints(posed);
    MFloatPointArray moved[3];
    MFloatPointArray probe = rest;
    for (unsigned int axis = 0; axis < 3; ++axis) {
        for (unsigned int vertex = 0; vertex < probe.length(); ++vertex)
            probe[vertex][axis] += 1.0F;
        original.setPoints(probe);
        deformed.getPoints(moved[axis]);
        for (unsigned int vertex = 0; vertex < probe.length(); ++vertex)
            probe[vertex][axis] = rest[vertex][axis];
    }
    original.setPoints(probe);
    const float* const rows[3] = {&moved[0][0].x, &moved[1][0].x, &moved[2][0].x};
    invertAll(rows, &posed[0].x, &sculpt[0].x, &probe[0].x, probe.length());
    benchmark::DoNotOptimize(probe);
}

}  // namespace

void addSculptRows() {
    addModuleRow("extract corrective", extractCorrective, extractCorrectiveFloor);
}
