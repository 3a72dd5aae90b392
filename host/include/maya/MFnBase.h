#pragma once

#include <hostPrivate/access.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// What all function sets share: the object that they work on.
///
/// Attaching to an object that lacks the function set fails with kInvalidParameter and leaves the set without
/// an object. Every call to a set without an object, or whose object no longer exists, fails.
class OPENMAYA_EXPORT MFnBase {
  public:
    MFnBase(const MFnBase&) = delete;
    MFnBase& operator=(const MFnBase&) = delete;
    virtual ~MFnBase();

    virtual MFn::Type type() const;
    bool hasObj(MFn::Type type) const;
    bool hasObj(const MObject& object) const;
    MObject object(MStatus* status = nullptr) const;
    virtual MStatus setObject(MObject& object);
    virtual MStatus setObject(const MObject& object);

  protected:
    friend struct host::api::FunctionSetAccess;

    MFnBase();

    MObject object_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
