#pragma once

#include <hostPrivate/access.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// The path from the world down to one DAG node.
///
/// A path that comes from a name or an object is the node's first one. getAllPathsTo() gives those of its
/// other instances, up to 10,000. Moving nodes below other parents may change which path of a node this is.
class OPENMAYA_EXPORT MDagPath {
  public:
    MDagPath();
    MDagPath(const MDagPath& other);
    ~MDagPath();

    MDagPath& operator=(const MDagPath& other);
    bool operator==(const MDagPath& other) const;

    static MStatus getAPathTo(const MObject& node, MDagPath& path);
    static MStatus getAllPathsTo(const MObject& node, MDagPathArray& paths);

    bool isValid(MStatus* status = nullptr) const;
    bool hasFn(MFn::Type type, MStatus* status = nullptr) const;
    MFn::Type apiType(MStatus* status = nullptr) const;
    MObject node(MStatus* status = nullptr) const;
    /// The lowest transform of the path.
    MObject transform(MStatus* status = nullptr) const;
    unsigned int length(MStatus* status = nullptr) const;

    /// Moves to the shape below a transform that has exactly one. Intermediate shapes do not count. On a
    /// shape, does nothing and succeeds.
    MStatus extendToShape();
    MStatus extendToShapeDirectlyBelow(unsigned int index);
    /// Includes intermediate shapes.
    MStatus numberOfShapesDirectlyBelow(unsigned int& count) const;
    MStatus push(const MObject& child);
    MStatus pop(unsigned int count = 1);
    unsigned int childCount(MStatus* status = nullptr) const;
    MObject child(unsigned int index, MStatus* status = nullptr) const;

    /// Object to world, including this node's own transformation (exclusive: not including it).
    MMatrix inclusiveMatrix(MStatus* status = nullptr) const;
    MMatrix exclusiveMatrix(MStatus* status = nullptr) const;
    MMatrix inclusiveMatrixInverse(MStatus* status = nullptr) const;
    MMatrix exclusiveMatrixInverse(MStatus* status = nullptr) const;

    MString fullPathName(MStatus* status = nullptr) const;
    /// The shortest name that is unique in the scene.
    MString partialPathName(MStatus* status = nullptr) const;
    /// Whether the node has other paths too: by several parents, of its own or above it.
    bool isInstanced(MStatus* status = nullptr) const;
    unsigned int instanceNumber(MStatus* status = nullptr) const;
    MStatus set(const MDagPath& other);

  private:
    friend struct host::api::PathAccess;

    MObject node_;
    unsigned int instance_ = 0;  // the number of the path among those of the node
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
