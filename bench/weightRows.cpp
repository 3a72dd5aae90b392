// The modes of the weight command, on a target that stores a weight for every vertex.

#include <maya/MDoubleArray.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MPointArray.h>

#include <functional>
#include <string>
#include <vector>

#include "common.h"
#include "headScene.h"
#include "partnerFloor.h"
#include "rows.h"
#include "table.h"
#include "targetFloors.h"

namespace {

/// What a floor does besides reading, clearing and writing the weights.
enum class Beside { kNothing, kMap, kPartners, kDeltas };

/// Stores a weight for every vertex, none of them near 1.
void storeWeights(const HeadScene& head) {
    const unsigned int count = MFnIntArrayData(head.map.asMObject()).length();
    MIntArray vertices;
    MDoubleArray weights;
    for (unsigned int vertex = 0; vertex < count; ++vertex) {
        vertices.append(static_cast<int>(vertex));
        weights.append((vertex % 999) / 1000.0);
    }
    setWeightValues(head.blendShape, 0, vertices, weights);
}

void edit(benchmark::State& state, int size, const char* arguments) {
    state.PauseTiming();
    HeadScene head(size);
    storeWeights(head);
    state.ResumeTiming();
    const std::string result = head.scene.mel(std::string("dv_blendShapeEditWeights -om headShapeOrig ") +
                                              arguments + " headTargets");
    state.PauseTiming();
    if (result != "1") state.SkipWithError("a wrong result");
    head.scene.mel("flushUndo");
    state.ResumeTiming();
}

void readWeightsBare(MPlug plug, MIntArray& vertices, std::vector<float>& weights) {
    plug.getExistingArrayAttributeIndices(vertices);
    weights.resize(vertices.length());
    for (unsigned int k = 0; k < vertices.length(); ++k)
        weights[k] = plug.elementByPhysicalIndex(k).asFloat();
}

void editFloor(benchmark::State& state, int size, Beside beside, bool writes) {
    state.PauseTiming();
    const HeadScene head(size);
    storeWeights(head);
    state.ResumeTiming();
    MPlug plug = targetGroup(head.blendShape).child(1);
    MIntArray vertices;
    std::vector<float> weights;
    readWeightsBare(plug, vertices, weights);
    if (beside == Beside::kMap) benchmark::DoNotOptimize(MFnIntArrayData(head.map.asMObject()).array());
    if (beside == Beside::kPartners) benchmark::DoNotOptimize(findPartnersBare(head.original));
    if (beside == Beside::kDeltas) {
        MIntArray moved;
        MPointArray deltas;
        readDeltasBare(head.blendShape, moved, deltas);
        writeDeltasBare(head.blendShape, moved, deltas);
    }
    MObject empty = MFnDoubleArrayData().create(MDoubleArray());
    plug.setValue(empty);
    if (!writes) return;
    for (unsigned int k = 0; k < vertices.length(); ++k)
        plug.elementByLogicalIndex(static_cast<unsigned int>(vertices[k])).setFloat(weights[k]);
}

/// A script that sets the weights one by one: what a rigger has without a command for it.
/// @param newWeight  an expression of $i, a vertex, and $map, the vertex order map
void editByScript(benchmark::State& state, int size, const char* newWeight) {
    state.PauseTiming();
    HeadScene head(size);
    storeWeights(head);
    state.ResumeTiming();
    head.scene.mel(std::string("{ int $map[] = `getAttr headShapeOrig.dvVertexOrderMap`;"
                               "  string $weights = \"headTargets.it[0].itg[0].tw[\";"
                               "  float $new[]; int $i;"
                               "  for ($i = 0; $i < size($map); ++$i) $new[$i] = ") +
                   newWeight +
                   ";"
                   "  for ($i = 0; $i < size($map); ++$i) setAttr ($weights + $i + \"]\") $new[$i]; }");
    state.PauseTiming();
    head.scene.mel("flushUndo");
    state.ResumeTiming();
}

}  // namespace

void addWeightRows() {
    const auto add = [](const char* name, const char* arguments, Beside beside, bool writes,
                        double limit = 1.5) {
        addModuleRow(
            name, [arguments](benchmark::State& state, int size) { edit(state, size, arguments); },
            [beside, writes](benchmark::State& state, int size) { editFloor(state, size, beside, writes); },
            limit);
    };
    add("invert weights", "-iv", Beside::kNothing, true);
    add("flush weights", "-fl 0.5", Beside::kNothing, true);
    add("delete weights", "-del", Beside::kNothing, false);
    add("flip weights by position", "-flp", Beside::kPartners, true, kLookUpLimit);
    add("flip weights by order", "-flp -ob \"\"", Beside::kMap, true);
    add("freeze weights", "-f", Beside::kDeltas, false);
    const auto addScript = [](const char* name, const char* arguments, const char* newWeight) {
        addModuleRow(
            name, [arguments](benchmark::State& state, int size) { edit(state, size, arguments); },
            [newWeight](benchmark::State& state, int size) { editByScript(state, size, newWeight); });
    };
    addScript("(script) invert weights", "-iv", "1.0 - `getAttr ($weights + $i + \"]\")`");
    addScript("(script) flip by order", "-flp -ob \"\"", "`getAttr ($weights + $map[$i] + \"]\")`");
}
