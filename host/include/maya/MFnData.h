#pragma once

#include <maya/MFnBase.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Base of the function sets for attribute data.
///
/// The copies of a handle share their data object. Data read from a plug is a copy of the plug's data, so a
/// change reaches the scene only through MPlug::setValue.
class OPENMAYA_EXPORT MFnData : public MFnBase {
  public:
    enum Type {
        kInvalid = 0,
        kNumeric,
        kPlugin,
        kPluginGeometry,
        kString,
        kMatrix,
        kStringArray,
        kDoubleArray,
        kFloatArray,
        kIntArray,
        kPointArray,
        kVectorArray,
        kMatrixArray,
        kComponentList,
        kMesh,
        kLattice,
        kNurbsCurve,
        kNurbsSurface,
        kSphere,
        kDynArrayAttrs,
        kDynSweptGeometry,
        kSubdSurface,
        kNObject,
        kNId,
        kAny,
        kLast
    };

    MFnData();
    ~MFnData() override;
    MFn::Type type() const override;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
