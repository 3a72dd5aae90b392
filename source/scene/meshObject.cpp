#include "scene/meshObject.h"

#include <maya/MFn.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MObject.h>

#include "scene/aliveObject.h"

MeshObject::MeshObject(const MDagPath& path) : path_(path) {
    MObject node = path.node();
    node_ = node;
}

bool MeshObject::isAlive() const {
    return !aliveObject(node_).isNull();
}

bool readMeshPoints(const MeshObject& mesh, MFloatPointArray& points, MString& error) {
    points.clear();
    if (MFnMesh(mesh.path()).getPoints(points, MSpace::kObject) && points.length() > 0) return true;
    error = mesh.path().partialPathName() + " has no points.";
    return false;
}

MString itemName(const MSelectionList& list, unsigned int index) {
    MStringArray names;
    list.getSelectionStrings(index, names);
    return names.length() > 0 ? names[0] : MString();
}

bool readMeshShapeItem(const MSelectionList& list, unsigned int index, MDagPath& path, MString& error) {
    MObject node;
    list.getDependNode(index, node);
    if (node.hasFn(MFn::kMesh) && list.getDagPath(index, path)) return true;
    error = itemName(list, index) + " is not a mesh object.";
    return false;
}

bool readMeshItem(const MSelectionList& list, unsigned int index, MDagPath& path, MString& error) {
    const MString name = itemName(list, index);
    MObject node;
    list.getDependNode(index, node);
    if (node.hasFn(MFn::kTransform)) {
        const MFnDagNode transform(node);
        if (transform.childCount() == 0) {
            error = name + " has no shape node.";
            return false;
        }
        node = transform.child(0);
    }
    if (!node.hasFn(MFn::kMesh)) {
        error = name + " is not a mesh object.";
        return false;
    }
    list.getDagPath(index, path);
    // extendToShape fails for a transform with several shapes: take the one that was found.
    if (!path.extendToShape()) path.push(node);
    return true;
}

bool readMeshNames(const MStringArray& names, std::vector<MeshObject>& meshes, MString& error) {
    MSelectionList list;
    for (unsigned int k = 0; k < names.length(); ++k) {
        list.add(names[k]);
        if (list.length() == k + 1) continue;
        error = names[k] + " is not a mesh object.";
        return false;
    }
    meshes.reserve(names.length());
    for (unsigned int k = 0; k < names.length(); ++k) {
        MDagPath path;
        if (!readMeshItem(list, k, path, error)) return false;
        meshes.emplace_back(path);
    }
    return true;
}
