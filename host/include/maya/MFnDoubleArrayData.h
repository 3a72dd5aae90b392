#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MFnData.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Data that is an array of doubles.
class OPENMAYA_EXPORT MFnDoubleArrayData : public MFnData {
  public:
    MFnDoubleArrayData();
    MFnDoubleArrayData(MObject& object, MStatus* status = nullptr);
    MFnDoubleArrayData(const MObject& object, MStatus* status = nullptr);
    ~MFnDoubleArrayData() override;
    MFn::Type type() const override;

    unsigned int length(MStatus* status = nullptr) const;
    double operator[](unsigned int index) const;
    MStatus set(double element, unsigned int index);
    MStatus copyTo(MDoubleArray& destination) const;
    MStatus set(const MDoubleArray& source);
    MDoubleArray array(MStatus* status = nullptr);

    MObject create(MStatus* status = nullptr);
    MObject create(const MDoubleArray& values, MStatus* status = nullptr);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
