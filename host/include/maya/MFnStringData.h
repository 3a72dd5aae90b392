#pragma once

#include <maya/MFnData.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Data that is one text.
class OPENMAYA_EXPORT MFnStringData : public MFnData {
  public:
    MFnStringData();
    MFnStringData(MObject& object, MStatus* status = nullptr);
    MFnStringData(const MObject& object, MStatus* status = nullptr);
    ~MFnStringData() override;
    MFn::Type type() const override;

    MString string(MStatus* status = nullptr) const;
    MStatus set(const MString& value);

    MObject create(MStatus* status = nullptr);
    MObject create(const MString& value, MStatus* status = nullptr);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
