#include "checkedMesh.h"

#include <maya/MFloatPoint.h>
#include <maya/MSelectionList.h>

#include <cmath>
#include <random>

#include "benchScene.h"
#include "sheets.h"

namespace {

/// A brush of a tenth of the area of the sheet over the plane, on one side of it.
void sculpt(SheetShape& shape) {
    constexpr float kRadius = 0.75F;
    constexpr float kHeight = 0.1F;
    for (MFloatPoint& point : shape.points) {
        const float distance = std::hypot(point.x - 1.0F, point.z - 2.0F) / kRadius;
        if (distance < 1.0F) point.y += kHeight * (0.5F + 0.5F * std::cos(distance * std::acos(-1.0F)));
    }
}

void roughen(SheetShape& shape, int vertices) {
    std::mt19937 random(1);
    const float half = 2.0F / std::sqrt(static_cast<float>(vertices));
    std::uniform_real_distribution<float> offset(-half, half);
    for (MFloatPoint& point : shape.points) {
        point.x += offset(random);
        point.y += offset(random);
        point.z += offset(random);
    }
}

}  // namespace

std::string CheckedForm::name() const {
    const char* const names[] = {"head", "sculpt", "scan"};
    return std::string(names[shape]) + (isShuffled ? ", shuffled" : "");
}

MDagPath checkedMesh(int vertices, const CheckedForm& form) {
    BenchScene& scene = BenchScene::of(vertices);
    const std::string name = std::string("checked") + "abc"[form.shape] + (form.isShuffled ? "s" : "o");
    if (scene.mel("objExists " + name) == "0") {
        // One at a time: the largest fill the memory.
        scene.mel("string $old[] = `ls \"checked??\"`; if (size($old) > 0) delete $old; flushUndo");
        SheetShape shape(headSheets(vertices));
        if (form.shape == CheckedForm::kSculpt) sculpt(shape);
        if (form.shape == CheckedForm::kScan) roughen(shape, vertices);
        if (form.isShuffled) shape.shuffle(1);
        shape.makeMesh(name);
    }
    MSelectionList list;
    list.add((name + "Shape").c_str());
    MDagPath path;
    list.getDagPath(0, path);
    return path;
}
