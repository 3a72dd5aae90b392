// The check for symmetry by position: of a head-like mesh, of one with a tenth of its vertices sculpted on
// one side, and of one like a scan, in which no vertex has an exact mirror image. In order and randomly
// numbered.

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

#include "benchScene.h"
#include "checkedMesh.h"
#include "partnerFloor.h"
#include "rows.h"
#include "symmetry/partnerLookup.h"
#include "symmetry/symmetryMesh.h"
#include "table.h"

namespace {

void checkSymmetry(benchmark::State& state, int size, const CheckedForm& form) {
    state.PauseTiming();
    BenchScene& scene = BenchScene::of(size);
    const std::string mesh = checkedMesh(size, form).fullPathName().asChar();
    state.ResumeTiming();
    const std::string result = scene.mel("dv_polySymmetry " + mesh);
    state.PauseTiming();
    if ((result == "1") != (form.shape <= CheckedForm::kExported)) state.SkipWithError("a wrong result");
    scene.mel("select -clear; flushUndo");
    state.ResumeTiming();
}

void checkSymmetryFloor(benchmark::State& state, int size, const CheckedForm& form) {
    state.PauseTiming();
    const MDagPath path = checkedMesh(size, form);
    state.ResumeTiming();
    const std::vector<int> partners = findPartnersBare(path);
    benchmark::DoNotOptimize(partners.data());
}

std::vector<PlainPoint> pointsOf(const MDagPath& mesh) {
    MFloatPointArray points;
    MFnMesh(mesh).getPoints(points);
    std::vector<PlainPoint> result;
    result.reserve(points.length());
    for (const MFloatPoint& point : points)
        result.push_back({point.x, point.y, point.z, point.w});
    return result;
}

/// What the look-up takes. Kept between rounds, so that it does not count as memory of the tables.
struct LookUpInput {
    explicit LookUpInput(const MDagPath& mesh) : points(pointsOf(mesh)), faces(gatherCorners(mesh)) {
        all.resize(points.size());
        std::iota(all.begin(), all.end(), 0);
    }

    std::vector<PlainPoint> points;
    IndexLists faces;
    std::vector<int> all;
};

/// The tables alone.
void lookUp(benchmark::State& state, int size, const CheckedForm& form) {
    static std::optional<LookUpInput> input;
    static std::string name;
    state.PauseTiming();
    const std::string wanted = form.name() + std::to_string(size);
    if (name != wanted) {
        input.reset();  // before the next one takes its memory
        input.emplace(checkedMesh(size, form));
        name = wanted;
    }
    state.ResumeTiming();
    const PartnerSpace space{{input->points, input->faces}, 0, kPartnerTolerance};
    benchmark::DoNotOptimize(lookUpPartners(space, input->all));
}

/// One pass that sorts the positions.
void sortPositions(benchmark::State& state, int size, const CheckedForm& form) {
    state.PauseTiming();
    std::vector<PlainPoint> points = pointsOf(checkedMesh(size, form));
    state.ResumeTiming();
    std::sort(points.begin(), points.end());
    benchmark::DoNotOptimize(points.data());
}

}  // namespace

void addSymmetryRows() {
    using Step = void (*)(benchmark::State&, int, const CheckedForm&);
    const auto work = [](Step step, const CheckedForm& form) {
        return [step, form](benchmark::State& state, int size) { step(state, size, form); };
    };
    for (const CheckedForm& form : checkedForms()) {
        constexpr double kLimits[] = {0.12, 1.0, 0.35, 1.05};  // per shape
        const double limit = kLimits[form.shape];
        addModuleRow("check " + form.name(), work(checkSymmetry, form), work(checkSymmetryFloor, form),
                     limit);
        addModuleRow("(sort) look up " + form.name(), work(lookUp, form), work(sortPositions, form),
                     std::numeric_limits<double>::infinity());
    }
}
