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

/// Moves every vertex by up to a distance on each axis.
void roughen(SheetShape& shape, float distance) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> offset(-distance, distance);
    for (MFloatPoint& point : shape.points) {
        point.x += offset(random);
        point.y += offset(random);
        point.z += offset(random);
    }
}

}  // namespace

std::string CheckedForm::name() const {
    const char* const names[] = {"head", "exported", "sculpt", "scan"};
    return std::string(names[shape]) + (isShuffled ? ", shuffled" : "");
}

std::vector<CheckedForm> checkedForms() {
    std::vector<CheckedForm> forms;
    for (const CheckedForm::Shape shape :
         {CheckedForm::kHead, CheckedForm::kExported, CheckedForm::kSculpt, CheckedForm::kScan}) {
        for (const bool isShuffled : {false, true})
            forms.push_back({shape, isShuffled});
    }
    return forms;
}

MDagPath checkedMesh(int vertices, const CheckedForm& form) {
    BenchScene& scene = BenchScene::of(vertices);
    const std::string name = std::string("checked") + "abcd"[form.shape] + (form.isShuffled ? "s" : "o");
    if (scene.mel("objExists " + name) == "0") {
        // One at a time: the largest fill the memory.
        scene.mel("string $old[] = `ls \"checked??\"`; if (size($old) > 0) delete $old; flushUndo");
        SheetShape shape(headSheets(vertices));
        if (form.shape == CheckedForm::kSculpt) sculpt(shape);
        if (form.shape == CheckedForm::kExported) roughen(shape, 1e-6F);
        if (form.shape == CheckedForm::kScan) {
            roughen(shape, 2.0F / std::sqrt(static_cast<float>(vertices)));
        }
        if (form.isShuffled) shape.shuffle(1);
        shape.makeMesh(name);
    }
    MSelectionList list;
    list.add((name + "Shape").c_str());
    MDagPath path;
    list.getDagPath(0, path);
    return path;
}
