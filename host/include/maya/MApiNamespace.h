#pragma once

/// The versioned namespace that contains every class of the API, and the macros that open and close it.
///
/// A plug-in uses the plain names: this header brings them into the global namespace. A plug-in must not
/// declare a class of the API itself: `class MString;` would declare another, unrelated class. The
/// declarations below are for that.

#define OPENMAYA_API_VERSION 20250000
#define OPENMAYA_MAJOR_NAMESPACE Autodesk::Maya::OpenMaya20250000
#define OPENMAYA_MAJOR_NAMESPACE_OPEN \
    namespace Autodesk {              \
    namespace Maya {                  \
    namespace OpenMaya20250000 {
#define OPENMAYA_MAJOR_NAMESPACE_CLOSE \
    }                                  \
    }                                  \
    }

OPENMAYA_MAJOR_NAMESPACE_OPEN

class M3dView;
class MAngle;
class MAnimControl;
class MArgDatabase;
class MArgList;
class MArgParser;
class MBoundingBox;
class MColor;
class MColorArray;
class MCommandResult;
class MCursor;
class MDGModifier;
class MDagModifier;
class MDagPath;
class MDagPathArray;
class MDistance;
class MDoubleArray;
class MEulerRotation;
class MEvent;
class MFloatArray;
class MFloatMatrix;
class MFloatPoint;
class MFloatPointArray;
class MFloatVector;
class MFloatVectorArray;
class MFn;
class MFnBase;
class MFnBlendShapeDeformer;
class MFnComponent;
class MFnComponentListData;
class MFnDagNode;
class MFnData;
class MFnDependencyNode;
class MFnDoubleArrayData;
class MFnGeometryData;
class MFnGeometryFilter;
class MFnIntArrayData;
class MFnMatrixData;
class MFnMesh;
class MFnMeshData;
class MFnPlugin;
class MFnPointArrayData;
class MFnSingleIndexedComponent;
class MFnSkinCluster;
class MFnStringArrayData;
class MFnStringData;
class MFnTransform;
class MGlobal;
class MIntArray;
class MItMeshEdge;
class MItMeshPolygon;
class MItMeshVertex;
class MMatrix;
class MMatrixArray;
class MMeshIntersector;
class MObject;
class MObjectArray;
class MObjectHandle;
class MPlug;
class MPlugArray;
class MPoint;
class MPointArray;
class MPointOnMesh;
class MPxCommand;
class MPxContext;
class MPxContextCommand;
class MQuaternion;
class MSelectionList;
class MSpace;
class MStatus;
class MString;
class MStringArray;
class MSyntax;
class MTime;
class MTransformationMatrix;
class MTypeId;
class MUint64Array;
class MUintArray;
class MUuid;
class MVector;
class MVectorArray;

namespace MHWRender {
class MFrameContext;
class MUIDrawManager;
}  // namespace MHWRender

OPENMAYA_MAJOR_NAMESPACE_CLOSE

using namespace OPENMAYA_MAJOR_NAMESPACE;
