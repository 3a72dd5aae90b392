#pragma once

#include <hostPrivate/access.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A list of changes to the dependency graph that can be done and undone as a whole.
///
/// Changes are collected until doIt(). undoIt() undoes everything that was done. A second doIt() does what
/// was added since the first one. After an undo it does everything again. If a change fails, doIt() does none
/// of the changes added since. Nothing is put on the undo queue.
class OPENMAYA_EXPORT MDGModifier {
  public:
    MDGModifier();
    MDGModifier(const MDGModifier&) = delete;
    MDGModifier& operator=(const MDGModifier&) = delete;
    virtual ~MDGModifier();

    /// The node joins the scene at once. undoIt() removes it again. Fails between undoIt() and doIt().
    MObject createNode(const MString& type, MStatus* status = nullptr);
    MStatus deleteNode(const MObject& node);
    /// @param includeParents  also delete the parents of a shape that have nothing else below them; the
    ///                        default
    MStatus deleteNode(const MObject& node, bool includeParents);
    MStatus renameNode(const MObject& node, const MString& newName);
    MStatus connect(const MPlug& source, const MPlug& destination);
    MStatus disconnect(const MPlug& source, const MPlug& destination);
    MStatus newPlugValue(const MPlug& plug, MObject& value);
    MStatus newPlugValueBool(const MPlug& plug, bool value);
    MStatus newPlugValueDouble(const MPlug& plug, double value);
    MStatus newPlugValueFloat(const MPlug& plug, float value);
    MStatus newPlugValueInt(const MPlug& plug, int value);
    MStatus newPlugValueShort(const MPlug& plug, short value);
    MStatus newPlugValueString(const MPlug& plug, const MString& value);

    MStatus doIt();
    MStatus undoIt();

  protected:
    friend struct host::api::ModifierAccess;

    struct Changes;
    std::unique_ptr<Changes> changes_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
