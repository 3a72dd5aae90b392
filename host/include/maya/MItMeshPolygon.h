#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Visits the faces of a mesh, or those of a face component, in ascending order.
///
/// Works on the mesh at the time when the iterator was made or reset. Each step is O(1).
class OPENMAYA_EXPORT MItMeshPolygon {
  public:
    MItMeshPolygon(const MObject& polyObject, MStatus* status = nullptr);
    MItMeshPolygon(const MDagPath& polyObject, MObject& component = MObject::kNullObj,
                   MStatus* status = nullptr);
    virtual ~MItMeshPolygon();

    bool isDone(MStatus* status = nullptr);
    MStatus next();
    MStatus reset();
    MStatus reset(const MObject& polyObject);
    MStatus reset(const MDagPath& polyObject, MObject& component = MObject::kNullObj);
    unsigned int count(MStatus* status = nullptr);
    MObject currentItem(MStatus* status = nullptr);
    unsigned int index(MStatus* status = nullptr);
    MStatus setIndex(int index, int& previousIndex);

    MPoint center(MSpace::Space space = MSpace::kObject, MStatus* status = nullptr);
    unsigned int polygonVertexCount(MStatus* status = nullptr);
    /// The number in the mesh of the vertex at a corner.
    unsigned int vertexIndex(int index, MStatus* status = nullptr);
    /// Corners in face order.
    MStatus getVertices(MIntArray& vertices);
    /// Edge k joins the corners k and k + 1.
    MStatus getEdges(MIntArray& edges);
    void getPoints(MPointArray& points, MSpace::Space space = MSpace::kObject, MStatus* status = nullptr);
    MStatus getNormal(MVector& normal, MSpace::Space space = MSpace::kObject) const;
    /// Faces that share an edge with this one, in the order of its edges.
    MStatus getConnectedFaces(MIntArray& faces);
    /// Edges of other faces that touch a corner of this one, ascending.
    MStatus getConnectedEdges(MIntArray& edges);
    /// Vertices that an edge joins to a corner of this face, ascending, without the face's own corners.
    MStatus getConnectedVertices(MIntArray& vertices);
    MStatus numConnectedFaces(int& faceCount) const;
    bool onBoundary(MStatus* status = nullptr);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
