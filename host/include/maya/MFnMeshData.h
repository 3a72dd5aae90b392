#pragma once

#include <maya/MFnGeometryData.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Mesh data outside the DAG. MFnMesh reads it, and writes it if it is given as the owner of a new mesh.
class OPENMAYA_EXPORT MFnMeshData : public MFnGeometryData {
  public:
    MFnMeshData();
    MFnMeshData(MObject& object, MStatus* status = nullptr);
    MFnMeshData(const MObject& object, MStatus* status = nullptr);
    ~MFnMeshData() override;
    MFn::Type type() const override;

    MObject create(MStatus* status = nullptr);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
