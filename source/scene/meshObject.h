#pragma once

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MObjectHandle.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <vector>

/// The error of commands that need the mesh that a blend shape deforms, where none is given.
constexpr const char* kMeshError = "The original mesh is not defined.";

/// The error of a redo whose blend-shape node or mesh was deleted by hand.
constexpr const char* kBlendShapeOrMeshGone =
    "The blend shape node or the original mesh is not in the scene any more.";

/// A mesh shape that a command keeps from do to undo and redo.
class MeshObject {
  public:
    MeshObject() = default;
    /// @param path  path of a mesh shape
    explicit MeshObject(const MDagPath& path);

    /// Whether it was set and the node is still in the scene; only then is the path of use.
    bool isAlive() const;
    const MDagPath& path() const { return path_; }

  private:
    MObjectHandle node_;
    MDagPath path_;
};

/// The object-space points of a mesh.
/// @param error  that there are none, with the name of the mesh
bool readMeshPoints(const MeshObject& mesh, MFloatPointArray& points, MString& error);

/// An item of a list as the host shows it.
MString itemName(const MSelectionList& list, unsigned int index);

/// The mesh shape that an item of a list is; a transform is none.
/// @param path   set on success
/// @param error  otherwise what is wrong with the item, with its name
bool readMeshShapeItem(const MSelectionList& list, unsigned int index, MDagPath& path, MString& error);

/// The mesh shape that an item of a list stands for: the item itself, or the first child of a
/// transform.
/// @param path   set on success
/// @param error  otherwise what is wrong with the item, with its name
bool readMeshItem(const MSelectionList& list, unsigned int index, MDagPath& path, MString& error);

/// The mesh shapes that names stand for, in their order. Every name must stand for one object.
/// @param error  what is wrong with the first name that stands for no mesh
bool readMeshNames(const MStringArray& names, std::vector<MeshObject>& meshes, MString& error);
