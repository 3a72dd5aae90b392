#pragma once

#include <maya/MFnBase.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Base of the function sets on attribute data.
///
/// A data object is shared by the copies of its handle; data read from a plug is a copy of what the plug
/// holds, so that a change reaches the scene through MPlug::setValue only.
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
