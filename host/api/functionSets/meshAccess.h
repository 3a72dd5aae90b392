#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <algorithm>
#include <vector>

#include "geometry/mesh.h"
#include "graph/component.h"
#include "nodes/meshData.h"

namespace host::api {

/// The evaluated mesh of a mesh shape or of mesh data; null if the object is neither or has no geometry.
nodes::MeshPtr meshOf(const MObject& object);

/// Fills an array without freeing its memory.
inline void fill(MIntArray& array, geometry::IntSpan values) {
    array.setLength(static_cast<unsigned int>(values.size()));
    std::copy(values.begin(), values.end(), array.begin());
}

/// Unit normal of a face; in world space if a matrix from object to world is given.
MVector faceNormal(const geometry::Mesh& mesh, int face, const geometry::Matrix4* toWorld);

/// A walk over the vertices, edges or faces of a mesh, or over some of them, in ascending order.
struct MeshWalk {
    explicit MeshWalk(graph::ComponentKind elementKind) : kind(elementKind) {}

    /// Attaches to a mesh and goes to the first element. After a failure the walk has no mesh.
    MStatus attach(const MObject& object, const MObject& component);
    MStatus attach(const MDagPath& path, const MObject& component);

    bool isValid() const { return mesh != nullptr && at < count; }
    int current() const { return isAll ? at : listed[static_cast<std::size_t>(at)]; }
    const geometry::Topology& topology() const { return mesh->mesh.topology(); }
    MStatus checkSpace(MSpace::Space space) const;
    MStatus next();
    MStatus setIndex(int index, int& previous);

    /// Converts a point of the mesh's object space to the given space.
    MPoint point(const geometry::Vec3& point, MSpace::Space space) const;
    geometry::Vec3 vertex(int index) const { return mesh->mesh.point(index); }

    const graph::ComponentKind kind;
    nodes::MeshPtr mesh;
    bool hasWorld = false;  // attached to a path
    geometry::Matrix4 toWorld;
    bool isAll = true;
    std::vector<int> listed;  // the elements, if they are not all
    int count = 0;
    int at = 0;
};

}  // namespace host::api
