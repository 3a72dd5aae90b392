#pragma once

#include <maya/MFnDagNode.h>
#include <maya/MTypes.h>

#include <memory>

/// Means any instance of a mesh.
#define kMFnMeshInstanceUnspecified -1

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A polygon mesh: a shape of the scene, or mesh data.
///
/// Object space works on any mesh. World space needs a set that was attached to a DAG path. Reading evaluates
/// everything upstream of the shape. Writing changes the shape's own points, or the tweaks of a shape with
/// history. Reading is safe from several threads while the scene does not change, if each thread has a
/// function set of its own.
///
/// Only shapes of the scene have colours, with or without history. A modifier that is passed to a function
/// that changes colours can undo the change. The change is already made when the function returns.
class OPENMAYA_EXPORT MFnMesh : public MFnDagNode {
  public:
    MFnMesh();
    MFnMesh(MObject& object, MStatus* status = nullptr);
    MFnMesh(const MObject& object, MStatus* status = nullptr);
    MFnMesh(const MDagPath& object, MStatus* status = nullptr);
    ~MFnMesh() override;
    MFn::Type type() const override;

    /// Makes a mesh from a list of faces. Edges are numbered in the order of their first use.
    /// @param parentOrOwner  a transform, mesh data to fill, or null for a new transform
    /// @return the new transform if one was made, otherwise the shape or the data; the set is attached to the
    /// shape
    MObject create(int numVertices, int numPolygons, const MPointArray& vertexArray,
                   const MIntArray& polygonCounts, const MIntArray& polygonConnects,
                   MObject parentOrOwner = MObject::kNullObj, MStatus* status = nullptr);
    MObject create(int numVertices, int numPolygons, const MFloatPointArray& vertexArray,
                   const MIntArray& polygonCounts, const MIntArray& polygonConnects,
                   MObject parentOrOwner = MObject::kNullObj, MStatus* status = nullptr);
    /// Copies a mesh with its evaluated points, without history and without shading group. parentOrOwner and
    /// result are as in create().
    MObject copy(const MObject& source, MObject parentOrOwner = MObject::kNullObj, MStatus* status = nullptr);

    int numVertices(MStatus* status = nullptr) const;
    int numEdges(MStatus* status = nullptr) const;
    int numPolygons(MStatus* status = nullptr) const;
    int numFaceVertices(MStatus* status = nullptr) const;
    int polygonVertexCount(int polygonId, MStatus* status = nullptr) const;
    /// Corner counts of all faces, and the corners of all faces one after the other.
    MStatus getVertices(MIntArray& vertexCount, MIntArray& vertexList) const;
    MStatus getPolygonVertices(int polygonId, MIntArray& vertexList) const;
    MStatus getEdgeVertices(int edgeId, int2& vertexList) const;
    MStatus getTriangles(MIntArray& triangleCounts, MIntArray& triangleVertices) const;

    MStatus getPoints(MPointArray& vertexArray, MSpace::Space space = MSpace::kObject) const;
    MStatus getPoints(MFloatPointArray& vertexArray, MSpace::Space space = MSpace::kObject) const;
    MStatus setPoints(MPointArray& vertexArray, MSpace::Space space = MSpace::kObject);
    MStatus setPoints(MFloatPointArray& vertexArray, MSpace::Space space = MSpace::kObject);
    MStatus getPoint(int vertexId, MPoint& position, MSpace::Space space = MSpace::kObject) const;
    /// x y z of every vertex in object space. Valid until the mesh changes or the set is attached to another
    /// mesh.
    const float* getRawPoints(MStatus* status) const;
    MStatus updateSurface();

    /// The first call of a set builds a search tree, O(n log n). It is used until the mesh changes.
    MStatus getClosestPoint(const MPoint& toThisPoint, MPoint& closestPoint,
                            MSpace::Space space = MSpace::kObject, int* closestPolygon = nullptr) const;
    MStatus getPolygonNormal(int polygonId, MVector& normal, MSpace::Space space = MSpace::kObject) const;

    int numColorSets(MStatus* status = nullptr) const;
    MStatus getColorSetNames(MStringArray& setNames) const;
    /// Empty if there is no set.
    /// @param instance  has no effect: all instances share their sets
    MString currentColorSetName(int instance = kMFnMeshInstanceUnspecified, MStatus* status = nullptr) const;
    MStatus setCurrentColorSetName(const MString& setName, MDGModifier* modifier = nullptr,
                                   MSelectionList* currentSelection = nullptr);
    /// The first set becomes the current one.
    /// @return the name of the set: made unique
    MString createColorSetWithName(const MString& colorSetName, MDGModifier* modifier = nullptr,
                                   const MUintArray* instances = nullptr, MStatus* status = nullptr);
    MStatus deleteColorSet(const MString& colorSetName, MDGModifier* modifier = nullptr,
                           MSelectionList* currentSelection = nullptr);
    /// Removes the colours from a set; null means the current one.
    MStatus clearColors(const MString* colorSet = nullptr);

    /// One colour per vertex. A vertex without colour gets four times -1, or the default. Fails if there is
    /// no set.
    /// @param colorSet  null means the current one
    MStatus getVertexColors(MColorArray& colors, const MString* colorSet = nullptr,
                            const MColor* defaultUnsetColor = nullptr);
    /// Sets the colours of vertices in the current set. If there is no set, makes colorSet1.
    MStatus setVertexColor(MColor& color, int vertexId, MDGModifier* modifier = nullptr);
    MStatus setVertexColors(MColorArray& colors, MIntArray& vertexList, MDGModifier* modifier = nullptr);
    MStatus removeVertexColors(MIntArray& vertexList);
    bool displayColors(MStatus* status = nullptr) const;
    MStatus setDisplayColors(bool enable);

  private:
    struct Held;
    mutable std::shared_ptr<Held> held_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
