#pragma once

#include <maya/MFnData.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Data that is an array of texts.
class OPENMAYA_EXPORT MFnStringArrayData : public MFnData {
  public:
    MFnStringArrayData();
    MFnStringArrayData(MObject& object, MStatus* status = nullptr);
    MFnStringArrayData(const MObject& object, MStatus* status = nullptr);
    ~MFnStringArrayData() override;
    MFn::Type type() const override;

    unsigned int length(MStatus* status = nullptr) const;
    /// Valid until the next call to this function set.
    const MString& operator[](unsigned int index) const;
    MStatus set(const MString& element, unsigned int index);
    MStatus copyTo(MStringArray& destination) const;
    MStatus set(const MStringArray& source);
    MStringArray array(MStatus* status = nullptr);

    MObject create(MStatus* status = nullptr);
    MObject create(const MStringArray& values, MStatus* status = nullptr);

  private:
    mutable MString element_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
