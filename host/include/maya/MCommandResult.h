#pragma once

#include <hostPrivate/access.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Result of a script command, of any type.
class OPENMAYA_EXPORT MCommandResult {
  public:
    enum Type {
        kInvalid = 0,
        kInt,
        kInt64,
        kIntArray,
        kInt64Array,
        kDouble,
        kDoubleArray,
        kString,
        kStringArray,
        kVector,
        kVectorArray,
        kMatrix,
        kMatrixArray
    };

    MCommandResult(MStatus* status = nullptr);
    ~MCommandResult();

    Type resultType() const;
    /// A result of another type is a failure.
    MStatus getResult(int& result) const;
    MStatus getResult(MIntArray& result) const;
    MStatus getResult(double& result) const;
    MStatus getResult(MDoubleArray& result) const;
    MStatus getResult(MString& result) const;
    MStatus getResult(MStringArray& result) const;
    MString stringResult(MStatus* status = nullptr) const;

  private:
    friend struct host::api::CommandAccess;

    struct Content;
    std::unique_ptr<Content> content_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
