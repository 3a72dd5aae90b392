#pragma once

#include <maya/MFnData.h>
#include <maya/MIntArray.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Data that is an array of integers.
class OPENMAYA_EXPORT MFnIntArrayData : public MFnData {
  public:
    MFnIntArrayData();
    MFnIntArrayData(MObject& object, MStatus* status = nullptr);
    MFnIntArrayData(const MObject& object, MStatus* status = nullptr);
    ~MFnIntArrayData() override;
    MFn::Type type() const override;

    unsigned int length(MStatus* status = nullptr) const;
    int operator[](unsigned int index) const;
    MStatus set(int element, unsigned int index);
    MStatus copyTo(MIntArray& destination) const;
    MStatus set(const MIntArray& source);
    MIntArray array(MStatus* status = nullptr);

    MObject create(MStatus* status = nullptr);
    MObject create(const MIntArray& values, MStatus* status = nullptr);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
