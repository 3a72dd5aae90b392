#pragma once

#include <maya/MFnData.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Data that is an array of points.
class OPENMAYA_EXPORT MFnPointArrayData : public MFnData {
  public:
    MFnPointArrayData();
    MFnPointArrayData(MObject& object, MStatus* status = nullptr);
    MFnPointArrayData(const MObject& object, MStatus* status = nullptr);
    ~MFnPointArrayData() override;
    MFn::Type type() const override;

    unsigned int length(MStatus* status = nullptr) const;
    /// Valid until the next call to this function set.
    const MPoint& operator[](unsigned int index) const;
    MStatus set(MPoint& element, unsigned int index);
    MStatus copyTo(MPointArray& destination) const;
    MStatus set(const MPointArray& source);
    MPointArray array(MStatus* status = nullptr);

    MObject create(MStatus* status = nullptr);
    MObject create(const MPointArray& values, MStatus* status = nullptr);

  private:
    mutable MPoint element_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
