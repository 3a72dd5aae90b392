#pragma once

#include <hostPrivate/access.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// An ordered list of nodes, DAG paths, components and plugs. It is a copy of a selection, not the selection
/// itself.
class OPENMAYA_EXPORT MSelectionList {
  public:
    enum MergeStrategy { kMergeNormal = 0, kXORWithList, kRemoveFromList };

    MSelectionList();
    MSelectionList(const MSelectionList& other);
    ~MSelectionList();

    MSelectionList& operator=(const MSelectionList& other);

    MStatus clear();
    bool isEmpty(MStatus* status = nullptr) const;
    unsigned int length(MStatus* status = nullptr) const;

    /// The node of any item: of a plug its node, of a component its shape.
    MStatus getDependNode(unsigned int index, MObject& node) const;
    MStatus getDagPath(unsigned int index, MDagPath& path) const;
    /// `component` is null for a whole object.
    MStatus getDagPath(unsigned int index, MDagPath& path, MObject& component) const;
    MStatus getPlug(unsigned int index, MPlug& plug) const;
    /// Names as a script would write them. Neighbouring components are one range.
    MStatus getSelectionStrings(MStringArray& strings) const;
    MStatus getSelectionStrings(unsigned int index, MStringArray& strings) const;

    /// Adds what the name matches. Wildcards, components ("mesh.vtx[3:5]") and plugs ("node.attribute[2]")
    /// are allowed. Fails and changes nothing if nothing matches, or if several things match a name without a
    /// wildcard.
    MStatus add(const MString& matchString, bool searchChildNamespacesToo = false);
    MStatus add(const MObject& object, bool mergeWithExisting = false);
    MStatus add(const MDagPath& object, const MObject& component = MObject::kNullObj,
                bool mergeWithExisting = false);
    MStatus add(const MPlug& plug, bool mergeWithExisting = false);
    MStatus remove(unsigned int index);
    MStatus replace(unsigned int index, const MObject& object);
    MStatus replace(unsigned int index, const MDagPath& object, const MObject& component = MObject::kNullObj);
    MStatus replace(unsigned int index, const MPlug& plug);
    bool hasItem(const MObject& object, MStatus* status = nullptr) const;
    bool hasItem(const MDagPath& object, const MObject& component = MObject::kNullObj,
                 MStatus* status = nullptr) const;
    MStatus merge(const MSelectionList& other, MergeStrategy strategy = kMergeNormal);
    MStatus merge(const MDagPath& object, const MObject& component = MObject::kNullObj,
                  MergeStrategy strategy = kMergeNormal);

  private:
    friend struct host::api::SelectionAccess;

    struct Items;
    std::unique_ptr<Items> items_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
