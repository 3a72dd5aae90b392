#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Visits the vertices of a mesh, or those of a vertex component, in ascending order.
///
/// Works on the mesh at the time when the iterator was made or reset. Each step is O(1). The connectivity is
/// computed once per topology.
class OPENMAYA_EXPORT MItMeshVertex {
  public:
    MItMeshVertex(MObject& polyObject, MStatus* status = nullptr);
    MItMeshVertex(const MDagPath& polyObject, MObject& component = MObject::kNullObj,
                  MStatus* status = nullptr);
    virtual ~MItMeshVertex();

    bool isDone(MStatus* status = nullptr);
    MStatus next();
    MStatus reset();
    MStatus reset(MObject& polyObject);
    MStatus reset(const MDagPath& polyObject, MObject& component = MObject::kNullObj);
    int count(MStatus* status = nullptr);
    MObject currentItem(MStatus* status = nullptr);
    int index(MStatus* status = nullptr);
    MStatus setIndex(int index, int& previousIndex);

    MPoint position(MSpace::Space space = MSpace::kObject, MStatus* status = nullptr);
    bool onBoundary(MStatus* status = nullptr);
    MStatus numConnectedFaces(int& faceCount) const;
    MStatus numConnectedEdges(int& edgeCount) const;
    /// By ascending edge number. Connected vertices are the other ends of the connected edges.
    MStatus getConnectedEdges(MIntArray& edges);
    MStatus getConnectedVertices(MIntArray& vertices);
    MStatus getConnectedFaces(MIntArray& faces);
    bool connectedToEdge(int index, MStatus* status = nullptr);
    bool connectedToFace(int index, MStatus* status = nullptr);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
