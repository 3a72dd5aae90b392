#pragma once

#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cfloat>
#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A point on a mesh, in the mesh's object space.
class OPENMAYA_EXPORT MPointOnMesh {
  public:
    MPointOnMesh();
    MPointOnMesh(const MPointOnMesh& other);
    ~MPointOnMesh();
    MPointOnMesh& operator=(const MPointOnMesh& other);

    MFloatPoint& getPoint();
    /// Normal of the triangle on which the point is, of length 1.
    MFloatVector& getNormal();
    /// Weights of the triangle's first and second corner.
    void getBarycentricCoords(float& u, float& v) const;
    int faceIndex() const;
    /// The triangle's position among those of its face.
    int triangleIndex() const;

  private:
    friend class MMeshIntersector;

    MFloatPoint point_;
    MFloatVector normal_;
    float barycentric_[2] = {0.0F, 0.0F};
    int face_ = -1;
    int triangle_ = -1;
};

/// Finds the closest point of a mesh. Queries may come from several threads at once.
///
/// Works on a snapshot of the mesh: after a change, call create() again. Building costs O(n log n), a query
/// O(log n).
class OPENMAYA_EXPORT MMeshIntersector {
  public:
    MMeshIntersector();
    virtual ~MMeshIntersector();

    /// @param matrix  transforms a query point into the mesh's object space
    MStatus create(MObject& meshObject, const MMatrix& matrix = MMatrix::identity);
    bool isCreated() const;
    /// If several faces are equally close, the result is on the lowest one. If nothing is within maxDistance,
    /// fails and does not change `meshPoint`.
    MStatus getClosestPoint(const MPoint& point, MPointOnMesh& meshPoint, double maxDistance = DBL_MAX) const;

  private:
    struct Tree;
    std::unique_ptr<Tree> tree_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
