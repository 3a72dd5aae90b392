// MMeshIntersector and MPointOnMesh.

#include <maya/MMeshIntersector.h>
#include <maya/MPoint.h>

#include "api/functionSets/meshAccess.h"
#include "api/functionSets/variantSupport.h"
#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "geometry/closestPoint.h"

using host::geometry::Vec3;

OPENMAYA_MAJOR_NAMESPACE_OPEN

struct MMeshIntersector::Tree {
    host::geometry::ClosestPointTree search;
};

MPointOnMesh::MPointOnMesh() = default;
MPointOnMesh::MPointOnMesh(const MPointOnMesh& other) = default;
MPointOnMesh::~MPointOnMesh() = default;
MPointOnMesh& MPointOnMesh::operator=(const MPointOnMesh& other) = default;

MFloatPoint& MPointOnMesh::getPoint() {
    return point_;
}

MFloatVector& MPointOnMesh::getNormal() {
    return normal_;
}

void MPointOnMesh::getBarycentricCoords(float& u, float& v) const {
    u = barycentric_[0];
    v = barycentric_[1];
}

int MPointOnMesh::faceIndex() const {
    return face_;
}

int MPointOnMesh::triangleIndex() const {
    return triangle_;
}

MMeshIntersector::MMeshIntersector() = default;
MMeshIntersector::~MMeshIntersector() = default;

MStatus MMeshIntersector::create(MObject& meshObject, const MMatrix& matrix) {
    tree_.reset();
    const host::nodes::MeshPtr mesh = host::api::meshOf(meshObject);
    if (mesh == nullptr) return meshObject.isNull() ? host::api::missingObject() : host::api::incompatible();
    tree_ = std::make_unique<Tree>(Tree{host::geometry::ClosestPointTree(
        mesh->mesh, host::api::fromMatrix(matrix), host::api::faceTieRule())});
    return MStatus::kSuccess;
}

bool MMeshIntersector::isCreated() const {
    return tree_ != nullptr;
}

MStatus MMeshIntersector::getClosestPoint(const MPoint& point, MPointOnMesh& meshPoint,
                                          double maxDistance) const {
    if (tree_ == nullptr) return host::api::failure();
    const auto found = tree_->search.query(host::api::fromPoint(point), maxDistance);
    if (!found) return host::api::failure();
    const Vec3& place = found->point;
    const Vec3& normal = found->normal;
    meshPoint.point_ =
        MFloatPoint(static_cast<float>(place.x), static_cast<float>(place.y), static_cast<float>(place.z));
    meshPoint.normal_ = MFloatVector(static_cast<float>(normal.x), static_cast<float>(normal.y),
                                     static_cast<float>(normal.z));
    meshPoint.barycentric_[0] = static_cast<float>(found->barycentric[0]);
    meshPoint.barycentric_[1] = static_cast<float>(found->barycentric[1]);
    meshPoint.face_ = found->face;
    meshPoint.triangle_ = found->triangle;
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
