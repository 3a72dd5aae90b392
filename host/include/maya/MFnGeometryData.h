#pragma once

#include <maya/MFnData.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Base of the function sets for geometry that is passed through connections.
class OPENMAYA_EXPORT MFnGeometryData : public MFnData {
  public:
    MFnGeometryData();
    MFnGeometryData(MObject& object, MStatus* status = nullptr);
    MFnGeometryData(const MObject& object, MStatus* status = nullptr);
    ~MFnGeometryData() override;
    MFn::Type type() const override;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
