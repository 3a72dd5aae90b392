#pragma once

#include <hostPrivate/access.h>
#include <maya/MFn.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// An opaque handle to something in the host: a node, an attribute, a component or attribute data.
///
/// Copies refer to the same thing. The handle of a deleted node is not null, but it has no function set until
/// an undo restores the node. MObjectHandle can tell.
class OPENMAYA_EXPORT MObject {
  public:
    MObject();
    MObject(const MObject& other);
    ~MObject();

    MObject& operator=(const MObject& other);
    bool operator==(const MObject& other) const;
    bool operator!=(const MObject& other) const;

    bool isNull() const;
    bool hasFn(MFn::Type fs) const;
    MFn::Type apiType() const;
    /// Name of the apiType() enumerator, for example "kMesh".
    const char* apiTypeStr() const;

    static MObject kNullObj;

  private:
    friend struct host::api::ObjectAccess;

    enum class Kind : unsigned char { Null, Node, World, Attribute, Component, Data, Plugin };

    MObject(Kind kind, std::shared_ptr<void> body);

    std::shared_ptr<void> body_;
    Kind kind_ = Kind::Null;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
