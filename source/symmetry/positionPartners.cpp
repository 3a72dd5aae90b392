#include "symmetry/positionPartners.h"

#include <maya/MFnMesh.h>
#include <maya/MFnTransform.h>

#include <algorithm>
#include <cstddef>

#include "symmetry/symmetryMesh.h"

namespace {

double meanScale(const MDagPath& mesh) {
    double scale[3] = {1.0, 1.0, 1.0};
    MFnTransform(mesh.transform()).getScale(scale);
    return (scale[0] + scale[1] + scale[2]) / 3.0;
}

}  // namespace

PositionPartners::PositionPartners(const MDagPath& mesh, int axis, double tolerance)
    : mesh_(mesh), axis_(axis), tolerance_(tolerance / meanScale(mesh)), faces_(gatherCorners(mesh)) {
    MFnMesh(mesh_).getPoints(points_, MSpace::kObject);
}

MStatus PositionPartners::find(const std::vector<int>& vertices, std::vector<int>& partners) {
    std::vector<int> found = lookUp(vertices);
    const bool isComplete = std::find(found.begin(), found.end(), kUndecided) == found.end();
    // A mesh without faces is an error to the host, whatever is asked.
    if (!isComplete || faces_.size() == 0) {
        image_.emplace(mesh_, axis_, tolerance_, points_, faces_);
        const MStatus status = image_->create();
        if (!status) return status;
        for (std::size_t k = 0; k < vertices.size(); ++k) {
            if (found[k] == kUndecided) image_->findPartner(vertices[k], found[k]);
        }
    }
    partners = std::move(found);
    return MS::kSuccess;
}

std::vector<int> PositionPartners::lookUp(const std::vector<int>& vertices) const {
    std::vector<PlainPoint> points(points_.length());
    for (unsigned int vertex = 0; vertex < points_.length(); ++vertex) {
        const MFloatPoint& point = points_[vertex];
        points[vertex] = {point.x, point.y, point.z, 0.0F};
    }
    return lookUpPartners({points, faces_, static_cast<std::size_t>(axis_), tolerance_}, vertices);
}

void PositionPartners::leaveCopyInScene() {
    if (image_) image_->leaveInScene();
}
