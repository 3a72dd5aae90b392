#pragma once

#include <hostPrivate/access.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// The words of a command call in the given order, including flags and their arguments.
class OPENMAYA_EXPORT MArgList {
  public:
    static const unsigned int kInvalidArgIndex;

    MArgList();
    MArgList(const MArgList& other);
    ~MArgList();
    MArgList& operator=(const MArgList& other);

    unsigned int length(MStatus* status = nullptr) const;
    bool asBool(unsigned int index, MStatus* status = nullptr) const;
    int asInt(unsigned int index, MStatus* status = nullptr) const;
    double asDouble(unsigned int index, MStatus* status = nullptr) const;
    MString asString(unsigned int index, MStatus* status = nullptr) const;
    MStatus get(unsigned int index, bool& value) const;
    MStatus get(unsigned int index, int& value) const;
    MStatus get(unsigned int index, double& value) const;
    MStatus get(unsigned int index, MString& value) const;

    MStatus addArg(bool value);
    MStatus addArg(int value);
    MStatus addArg(double value);
    MStatus addArg(const MString& value);
    /// Position of a flag in its short or long form, given without the dash; kInvalidArgIndex if it does not
    /// occur.
    unsigned int flagIndex(const char* flag, const char* longFlag = nullptr) const;

  private:
    friend struct host::api::ArgumentAccess;

    struct Words;
    std::unique_ptr<Words> words_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
