#include "symmetry/mirroredMesh.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFnTransform.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPoint.h>

#include <cstddef>

#include "scene/aliveObject.h"
#include "scene/guardEntry.h"

namespace {

double meanScale(const MDagPath& mesh) {
    double scale[3] = {1.0, 1.0, 1.0};
    MFnTransform(mesh.transform()).getScale(scale);
    return (scale[0] + scale[1] + scale[2]) / 3.0;
}

}  // namespace

MirroredMesh::MirroredMesh(const MDagPath& mesh, int axis, double tolerance)
    : mesh_(mesh), axis_(axis), tolerance_(tolerance / meanScale(mesh)) {
    MFnMesh(mesh_).getPoints(points_, MSpace::kObject);
    mirroredPoints_ = points_;
    for (unsigned int k = 0; k < mirroredPoints_.length(); ++k) {
        float& coordinate = mirroredPoints_[k][static_cast<unsigned int>(axis_)];
        coordinate = -coordinate;
    }
}

MirroredMesh::~MirroredMesh() {
    guardEntry("The mirrored copy of a mesh", [this] {
        MObject image = aliveObject(image_);
        return image.isNull() ? MStatus(MS::kSuccess) : MGlobal::deleteNode(image);
    });
}

MStatus MirroredMesh::create() {
    MFnMesh copier;
    MObject image = copier.copy(mesh_.node(), mesh_.transform());
    image_ = image;
    MFnDependencyNode(image).findPlug("intermediateObject", false).setBool(true);
    MFnMesh imageMesh(image);
    imageMesh.setPoints(mirroredPoints_, MSpace::kObject);
    MIntArray counts;
    imageMesh.getVertices(counts, corners_);
    firstCorners_.assign(1, 0);
    firstCorners_.reserve(counts.length() + 1);
    for (unsigned int face = 0; face < counts.length(); ++face)
        firstCorners_.push_back(firstCorners_.back() + counts[face]);
    return intersector_.create(image, MMatrix::identity);
}

void MirroredMesh::leaveInScene() {
    image_ = MObjectHandle();
}

MStatus MirroredMesh::findPartner(int vertex, int& partner) const {
    if (vertex < 0 || static_cast<unsigned int>(vertex) >= points_.length()) return MS::kInvalidParameter;
    const MPoint point(points_[static_cast<unsigned int>(vertex)]);
    MPointOnMesh closest;
    const MStatus status = intersector_.getClosestPoint(point, closest);
    if (!status) return status;
    const auto face = static_cast<std::size_t>(closest.faceIndex());
    partner = kNoPartner;
    for (int corner = firstCorners_[face]; corner < firstCorners_[face + 1]; ++corner) {
        const int candidate = corners_[static_cast<unsigned int>(corner)];
        if (!point.isEquivalent(MPoint(mirroredPoints_[static_cast<unsigned int>(candidate)]), tolerance_)) {
            continue;
        }
        partner = candidate;
        break;
    }
    return status;
}
