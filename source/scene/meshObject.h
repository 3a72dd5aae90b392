#pragma once

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MObjectHandle.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <vector>

/// The error of commands that need the mesh of a blend shape if none is given.
constexpr const char* kMeshError = "The original mesh is not defined.";

/// The error of a redo after the user deleted the blend shape node or the mesh.
constexpr const char* kBlendShapeOrMeshGone =
    "The blend shape node or the original mesh is not in the scene any more.";

/// A mesh shape that a command keeps for undo and redo.
class MeshObject {
  public:
    MeshObject() = default;
    /// @param path  path of a mesh shape
    explicit MeshObject(const MDagPath& path);

    /// Whether a mesh was set and is still in the scene. Only then can the path be used.
    bool isAlive() const;
    const MDagPath& path() const { return path_; }

  private:
    MObjectHandle node_;
    MDagPath path_;
};

/// The object-space points of a mesh. A mesh without points is an error.
/// @param error  the mesh has no points; contains its name
bool readMeshPoints(const MeshObject& mesh, MFloatPointArray& points, MString& error);

/// The name of a list item, as the host shows it.
MString itemName(const MSelectionList& list, unsigned int index);

/// The mesh shape at an item of a list. A transform is not accepted.
/// @param path   set on success
/// @param error  set on failure: what is wrong with the item, with its name
bool readMeshShapeItem(const MSelectionList& list, unsigned int index, MDagPath& path, MString& error);

/// The mesh shape of a list item: the item itself, or the first child of a transform.
/// @param path   set on success
/// @param error  set on failure: what is wrong with the item, with its name
bool readMeshItem(const MSelectionList& list, unsigned int index, MDagPath& path, MString& error);

/// The mesh shapes of names, in the same order, found as in readMeshItem. Every name must match exactly one
/// object.
/// @param error  what is wrong with the first name that gives no mesh
bool readMeshNames(const MStringArray& names, std::vector<MeshObject>& meshes, MString& error);
