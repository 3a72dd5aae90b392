// The check of a head-like mesh for symmetry by position, as it is and sculpted on one side.

#include <maya/MDagPath.h>
#include <maya/MFloatPoint.h>
#include <maya/MSelectionList.h>

#include <cmath>
#include <string>
#include <vector>

#include "benchScene.h"
#include "partnerFloor.h"
#include "rows.h"
#include "sheets.h"
#include "table.h"

namespace {

enum class Form { kSymmetric, kSculpted };

/// The shape in the scene of a size.
MDagPath checkedMesh(int vertices, Form form) {
    BenchScene& scene = BenchScene::of(vertices);
    const std::string name = "checked" + std::to_string(static_cast<int>(form));
    if (scene.mel("objExists " + name) == "0") {
        // One at a time: the largest fill the memory.
        scene.mel("string $old[] = `ls \"checked?\"`; if (size($old) > 0) delete $old; flushUndo");
        SheetShape shape(headSheets(vertices));
        if (form == Form::kSculpted) {
            for (MFloatPoint& point : shape.points) {
                if (point.x > 0.0F) point.y += 0.02F * (1.5F + std::sin(7.0F * point.x));
            }
        }
        shape.makeMesh(name);
    }
    MSelectionList list;
    list.add((name + "Shape").c_str());
    MDagPath path;
    list.getDagPath(0, path);
    return path;
}

void checkSymmetry(benchmark::State& state, int size, Form form) {
    state.PauseTiming();
    BenchScene& scene = BenchScene::of(size);
    const std::string mesh = checkedMesh(size, form).fullPathName().asChar();
    state.ResumeTiming();
    const std::string result = scene.mel("dv_polySymmetry " + mesh);
    state.PauseTiming();
    if ((result == "1") != (form == Form::kSymmetric)) state.SkipWithError("a wrong result");
    scene.mel("select -clear; flushUndo");
    state.ResumeTiming();
}

void checkSymmetryFloor(benchmark::State& state, int size, Form form) {
    state.PauseTiming();
    const MDagPath path = checkedMesh(size, form);
    state.ResumeTiming();
    const std::vector<int> partners = findPartnersBare(path);
    benchmark::DoNotOptimize(partners.data());
}

}  // namespace

void addSymmetryRows() {
    const auto add = [](const char* name, Form form) {
        addModuleRow(
            name, [form](benchmark::State& state, int size) { checkSymmetry(state, size, form); },
            [form](benchmark::State& state, int size) { checkSymmetryFloor(state, size, form); });
    };
    add("check symmetry", Form::kSymmetric);
    add("check sculpted symmetry", Form::kSculpted);
}
