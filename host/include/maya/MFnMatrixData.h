#pragma once

#include <maya/MFnData.h>
#include <maya/MMatrix.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Data that is one matrix.
class OPENMAYA_EXPORT MFnMatrixData : public MFnData {
  public:
    MFnMatrixData();
    MFnMatrixData(MObject& object, MStatus* status = nullptr);
    MFnMatrixData(const MObject& object, MStatus* status = nullptr);
    ~MFnMatrixData() override;
    MFn::Type type() const override;

    /// Valid until the next call to this function set.
    const MMatrix& matrix(MStatus* status = nullptr) const;
    MStatus set(const MMatrix& matrix);

    MObject create(MStatus* status = nullptr);
    MObject create(const MMatrix& matrix, MStatus* status = nullptr);

  private:
    mutable MMatrix matrix_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
