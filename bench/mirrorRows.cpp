// A target of a head-like mesh, mirrored both ways and split; every vertex moves.

#include <maya/MDoubleArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMesh.h>
#include <maya/MPlug.h>

#include <limits>
#include <nanoflann.hpp>
#include <vector>

#include "common.h"
#include "headScene.h"
#include "partnerFloor.h"
#include "rows.h"
#include "table.h"
#include "targetFloors.h"

namespace {

void run(benchmark::State& state, int size, const char* command) {
    state.PauseTiming();
    HeadScene scene(size);
    state.ResumeTiming();
    if (scene.scene.mel(command) != "1") state.SkipWithError("a wrong result");
    state.PauseTiming();
    scene.scene.mel("flushUndo");
    state.ResumeTiming();
}

/// A mirrored delta for each partner: what both floors write.
void passOn(const std::vector<int>& partners, MIntArray& vertices, MPointArray& points) {
    for (unsigned int k = 0; k < vertices.length(); ++k) {
        vertices[k] = partners[static_cast<std::size_t>(vertices[k])];
        points[k].x = -points[k].x;
    }
}

void mirrorByPositionFloor(benchmark::State& state, int size) {
    state.PauseTiming();
    const HeadScene scene(size);
    state.ResumeTiming();
    MIntArray vertices;
    MPointArray points;
    readDeltasBare(scene.blendShape, vertices, points);
    passOn(findPartnersBare(scene.original), vertices, points);
    writeDeltasBare(scene.blendShape, vertices, points);
}

void mirrorByOrderFloor(benchmark::State& state, int size) {
    state.PauseTiming();
    const HeadScene scene(size);
    state.ResumeTiming();
    MIntArray vertices;
    MPointArray points;
    readDeltasBare(scene.blendShape, vertices, points);
    const MIntArray map = MFnIntArrayData(scene.map.asMObject()).array();
    std::vector<int> partners(map.length());
    map.get(partners.data());
    passOn(partners, vertices, points);
    writeDeltasBare(scene.blendShape, vertices, points);
}

/// Points as the k-d tree reads them.
struct Cloud {
    MFloatPointArray points;

    std::size_t kdtree_get_point_count() const { return points.length(); }
    float kdtree_get_pt(std::size_t index, std::size_t axis) const {
        return points[static_cast<unsigned int>(index)][static_cast<unsigned int>(axis)];
    }
    template <class Box>
    bool kdtree_get_bbox(Box&) const {
        return false;
    }
};

/// The same look-ups with the closest vertex in place of the closest face, without the host: for comparison.
void findPartnersByTree(benchmark::State& state, int size) {
    state.PauseTiming();
    const HeadScene scene(size);
    state.ResumeTiming();
    Cloud mirrored;
    MFnMesh(scene.original).getPoints(mirrored.points);
    const MFloatPointArray points(mirrored.points);
    for (MFloatPoint& point : mirrored.points)
        point.x = -point.x;
    const nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<float, Cloud>, Cloud, 3> tree(
        3, mirrored);
    std::vector<unsigned int> partners(points.length());
    float squaredDistance = 0.0F;
    for (unsigned int vertex = 0; vertex < points.length(); ++vertex)
        tree.knnSearch(&points[vertex].x, 1, &partners[vertex], &squaredDistance);
    benchmark::DoNotOptimize(partners.data());
}

void findPartnersFloor(benchmark::State& state, int size) {
    state.PauseTiming();
    const HeadScene scene(size);
    state.ResumeTiming();
    benchmark::DoNotOptimize(findPartnersBare(scene.original));
}

void splitFloor(benchmark::State& state, int size) {
    state.PauseTiming();
    const HeadScene scene(size);
    state.ResumeTiming();
    const MIntArray vertices = getTargetComponents(scene.blendShape, 0, kFullItem);
    MPlug weights = targetGroup(scene.blendShape).child(1);
    MObject empty = MFnDoubleArrayData().create(MDoubleArray());
    weights.setValue(empty);
    for (unsigned int k = 0; k < vertices.length(); ++k)
        weights.elementByLogicalIndex(static_cast<unsigned int>(vertices[k])).setFloat(0.5F);
}

}  // namespace

void addMirrorRows() {
    const auto command = [](const char* text) {
        return [text](benchmark::State& state, int size) { run(state, size, text); };
    };
    addModuleRow("mirror by position", command("dv_blendShapeMirrorTarget -om headShapeOrig headTargets"),
                 mirrorByPositionFloor, kLookUpLimit);
    addModuleRow("mirror by order",
                 command("dv_blendShapeMirrorTarget -om headShapeOrig -ob \"\" headTargets"),
                 mirrorByOrderFloor);
    addModuleRow("(k-d tree against faces)", findPartnersByTree, findPartnersFloor,
                 std::numeric_limits<double>::infinity());
    addModuleRow("split target",
                 command("dv_blendShapeSplitTarget -om headShapeOrig -iv 1 -b 0.5 headTargets"), splitFloor);
}
