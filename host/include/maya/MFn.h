#pragma once

#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// The types of objects: node types, component types, data types and attribute types.
///
/// Use only the names: the numbers change from one version to the next.
class OPENMAYA_EXPORT MFn {
  public:
    enum Type {
        kInvalid = 0,
        kBase,
        kNamedObject,
        kModel,
        kDependencyNode,
        kAddDoubleLinear,
        kAnimCurve,
        kUnitConversion,
        kPlugin,
        kPluginDependNode,
        kTime,
        kWorld,
        kReference,

        kDagNode,
        kTransform = 110,
        kJoint,
        kShape,
        kGeometric,
        kSurface,
        kMesh = 296,
        kCurve,
        kNurbsCurve,
        kNurbsSurface,
        kSubdiv,
        kLattice,
        kLocator,
        kCamera,
        kLight,

        kGeometryFilt,
        kWeightGeometryFilt,
        kBlendShape = 336,
        kTweak,
        kSkinClusterFilter,
        kClusterFilter,
        kFFD,
        kWire,
        kSculpt,
        kNonLinear,
        kDeltaMush,
        kGroupId,
        kGroupParts,
        kMidModifier,

        kSet,
        kShadingEngine,
        kPartition,
        kLambert,
        kMaterialInfo,
        kDisplayLayer,
        kDagPose,

        kComponent,
        kSingleIndexedComponent,
        kCurveCVComponent,
        kMeshComponent,
        kMeshVertComponent,
        kMeshEdgeComponent,
        kMeshPolygonComponent,
        kMeshFaceVertComponent,
        kMeshMapComponent,
        kDoubleIndexedComponent,
        kTripleIndexedComponent,

        kData,
        kComponentListData,
        kDoubleArrayData,
        kIntArrayData,
        kMatrixData,
        kMatrixArrayData,
        kMeshData,
        kNumericData,
        kPluginData,
        kPointArrayData,
        kStringData,
        kStringArrayData,
        kVectorArrayData,

        kAttribute,
        kNumericAttribute,
        kCompoundAttribute,
        kEnumAttribute,
        kGenericAttribute,
        kMatrixAttribute,
        kMessageAttribute,
        kTypedAttribute,
        kUnitAttribute,
        kDoubleLinearAttribute,
        kDoubleAngleAttribute,
        kTimeAttribute,
        kAttribute2Double,
        kAttribute2Float,
        kAttribute2Int,
        kAttribute2Short,
        kAttribute3Double,
        kAttribute3Float,
        kAttribute3Int,
        kAttribute3Short,
        kAttribute4Double,
        kFloatMatrixAttribute,

        kLast
    };
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
