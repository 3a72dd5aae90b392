#include "symmetry/positionPartners.h"

#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <maya/MFnTransform.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "symmetry/symmetryMesh.h"

namespace {

double meanScale(const MDagPath& mesh) {
    double scale[3] = {1.0, 1.0, 1.0};
    MFnTransform(mesh.transform()).getScale(scale);
    return (scale[0] + scale[1] + scale[2]) / 3.0;
}

std::vector<PlainPoint> plainPoints(const MDagPath& mesh) {
    MFloatPointArray points;
    MFnMesh(mesh).getPoints(points, MSpace::kObject);
    std::vector<PlainPoint> result(points.length());
    for (unsigned int vertex = 0; vertex < points.length(); ++vertex) {
        const MFloatPoint& point = points[vertex];
        result[vertex] = {point.x, point.y, point.z, point.w};
    }
    return result;
}

}  // namespace

PositionPartners::PositionPartners(const MDagPath& mesh, int axis, double tolerance)
    : mesh_(mesh),
      axis_(axis),
      tolerance_(tolerance / meanScale(mesh)),
      points_(plainPoints(mesh)),
      faces_(gatherCorners(mesh)) {}

MStatus PositionPartners::find(const std::vector<int>& vertices, std::vector<int>& partners) {
    std::vector<int> found =
        lookUpPartners({{points_, faces_}, static_cast<std::size_t>(axis_), tolerance_}, vertices);
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

void PositionPartners::leaveCopyInScene() {
    if (image_) image_->leaveInScene();
}
