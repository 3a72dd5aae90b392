#pragma once

#include <hostPrivate/access.h>
#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A node of the DAG: parents, children, path names.
class OPENMAYA_EXPORT MFnDagNode : public MFnDependencyNode {
  public:
    enum { kNextPos = 0xff };

    MFnDagNode();
    MFnDagNode(MObject& object, MStatus* status = nullptr);
    MFnDagNode(const MObject& object, MStatus* status = nullptr);
    MFnDagNode(const MDagPath& object, MStatus* status = nullptr);
    ~MFnDagNode() override;
    MFn::Type type() const override;

    MStatus setObject(MObject& object) override;
    MStatus setObject(const MObject& object) override;
    virtual MStatus setObject(const MDagPath& path);

    /// A shape type without a parent gets a new transform, which is then the result.
    MObject create(const MString& typeName, MObject& parent = MObject::kNullObj, MStatus* status = nullptr);
    MObject create(const MString& typeName, const MString& name, MObject& parent = MObject::kNullObj,
                   MStatus* status = nullptr);

    unsigned int parentCount(MStatus* status = nullptr) const;
    /// The parent; for a node at the top, the world.
    MObject parent(unsigned int index, MStatus* status = nullptr) const;
    unsigned int childCount(MStatus* status = nullptr) const;
    MObject child(unsigned int index, MStatus* status = nullptr) const;
    bool hasParent(const MObject& node, MStatus* status = nullptr) const;
    bool hasChild(const MObject& node, MStatus* status = nullptr) const;
    bool isChildOf(const MObject& node, MStatus* status = nullptr) const;
    bool isParentOf(const MObject& node, MStatus* status = nullptr) const;

    MStatus getPath(MDagPath& path) const;
    /// The first 10,000 paths.
    MStatus getAllPaths(MDagPathArray& paths) const;
    /// @param indirect  whether several parents of a node above count as well
    bool isInstanced(bool indirect = true, MStatus* status = nullptr) const;
    /// @param total  the number of paths, at most 10,001; otherwise that of parents
    unsigned int instanceCount(bool total, MStatus* status = nullptr) const;
    MDagPath dagPath(MStatus* status = nullptr) const;
    MString fullPathName(MStatus* status = nullptr) const;
    MString partialPathName(MStatus* status = nullptr) const;
    MMatrix transformationMatrix(MStatus* status = nullptr) const;
    bool isIntermediateObject(MStatus* status = nullptr) const;
    MStatus setIntermediateObject(bool state);
    /// Box of the node and everything below it, in the space of the node's parent.
    MBoundingBox boundingBox(MStatus* status = nullptr) const;

  protected:
    friend struct host::api::FunctionSetAccess;

    bool hasPath_ = false;  // attached to a DAG path, so that world space is known
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
