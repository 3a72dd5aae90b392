#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Visits the edges of a mesh, or those of an edge component, in ascending order.
///
/// Works on the mesh at the time when the iterator was made or reset. Each step is O(1).
class OPENMAYA_EXPORT MItMeshEdge {
  public:
    MItMeshEdge(MObject& polyObject, MStatus* status = nullptr);
    MItMeshEdge(const MDagPath& polyObject, MObject& component = MObject::kNullObj,
                MStatus* status = nullptr);
    virtual ~MItMeshEdge();

    bool isDone(MStatus* status = nullptr);
    MStatus next();
    MStatus reset();
    MStatus reset(MObject& polyObject);
    MStatus reset(const MDagPath& polyObject, MObject& component = MObject::kNullObj);
    int count(MStatus* status = nullptr);
    MObject currentItem(MStatus* status = nullptr);
    /// The number of the edge in the mesh.
    int index(MStatus* status = nullptr) const;
    /// The vertex at end 0 or 1.
    int index(int vertexId, MStatus* status = nullptr);
    MStatus setIndex(int index, int& previousIndex);

    MPoint center(MSpace::Space space = MSpace::kObject, MStatus* status = nullptr);
    MPoint point(int index, MSpace::Space space = MSpace::kObject, MStatus* status = nullptr);
    MStatus getLength(double& length, MSpace::Space space = MSpace::kObject);
    bool onBoundary(MStatus* status = nullptr);
    MStatus numConnectedFaces(int& faceCount);
    MStatus numConnectedEdges(int& edgeCount);
    /// In the order in which the faces use the edge.
    /// @return their number
    int getConnectedFaces(MIntArray& faces, MStatus* status = nullptr) const;
    /// Edges that share an end with this one; those at end 0 come first.
    /// @return their number
    int getConnectedEdges(MIntArray& edges, MStatus* status = nullptr) const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
