#include "api/handles/functionSetTable.h"

#include <utility>

namespace host::api {

namespace {

struct NamedType {
    MFn::Type type;
    const char* nodeType;  // or data type
};

// Derived types come before their bases: the first that fits is the most derived one.
constexpr NamedType kNodeTypes[] = {
    {MFn::kJoint, "joint"},
    {MFn::kTransform, "transform"},
    {MFn::kMesh, "mesh"},
    {MFn::kSurface, "surfaceShape"},
    {MFn::kGeometric, "geometryShape"},
    {MFn::kShape, "shape"},
    {MFn::kDagNode, "dagNode"},
    {MFn::kBlendShape, "blendShape"},
    {MFn::kTweak, "tweak"},
    {MFn::kSkinClusterFilter, "skinCluster"},
    {MFn::kWeightGeometryFilt, "weightGeometryFilter"},
    {MFn::kGeometryFilt, "geometryFilter"},
    {MFn::kGroupId, "groupId"},
    {MFn::kGroupParts, "groupParts"},
    {MFn::kShadingEngine, "shadingEngine"},
    {MFn::kSet, "objectSet"},
    {MFn::kPartition, "partition"},
    {MFn::kLambert, "lambert"},
    {MFn::kDagPose, "dagPose"},
    {MFn::kTime, "time"},
    {MFn::kDependencyNode, ""},
};

constexpr NamedType kDataTypes[] = {
    {MFn::kStringData, "string"},
    {MFn::kStringArrayData, "stringArray"},
    {MFn::kDoubleArrayData, "doubleArray"},
    {MFn::kIntArrayData, "Int32Array"},
    {MFn::kPointArrayData, "pointArray"},
    {MFn::kVectorArrayData, "vectorArray"},
    {MFn::kMatrixData, "matrix"},
    {MFn::kComponentListData, "componentList"},
    {MFn::kMeshData, "mesh"},
};

bool isA(const graph::NodeType& type, const NamedType& named) {
    return *named.nodeType == '\0' || type.isA(named.nodeType);
}

bool isTriple(const graph::Attribute& attribute, graph::ValueKind kind) {
    if (!attribute.isCompound() || attribute.children().size() != 3) return false;
    for (const auto& child : attribute.children()) {
        if (child->kind() != kind || child->isArray()) return false;
    }
    return true;
}

}  // namespace

bool hasFunctionSet(const graph::NodeType& type, MFn::Type functionSet) {
    if (functionSet == MFn::kBase || functionSet == MFn::kNamedObject) return true;
    // Every mesh is also a shape of all general kinds, even if its type does not name them.
    if (type.isA("mesh") &&
        (functionSet == MFn::kShape || functionSet == MFn::kGeometric || functionSet == MFn::kSurface))
        return true;
    for (const NamedType& named : kNodeTypes) {
        if (named.type == functionSet) return isA(type, named);
    }
    return false;
}

MFn::Type functionSetOf(const graph::NodeType& type) {
    for (const NamedType& named : kNodeTypes) {
        if (isA(type, named)) return named.type;
    }
    return MFn::kDependencyNode;
}

MFn::Type functionSetOf(const graph::Attribute& attribute) {
    using graph::ValueKind;
    switch (attribute.kind()) {
        case ValueKind::Bool:
        case ValueKind::Int:
        case ValueKind::Float:
        case ValueKind::Double:
            return MFn::kNumericAttribute;
        case ValueKind::Enum:
            return MFn::kEnumAttribute;
        case ValueKind::Distance:
            return MFn::kDoubleLinearAttribute;
        case ValueKind::Angle:
            return MFn::kDoubleAngleAttribute;
        case ValueKind::Time:
            return MFn::kTimeAttribute;
        case ValueKind::Typed:
            return MFn::kTypedAttribute;
        case ValueKind::Message:
            return MFn::kMessageAttribute;
        case ValueKind::Compound:
            break;
    }
    if (isTriple(attribute, ValueKind::Double)) return MFn::kAttribute3Double;
    if (isTriple(attribute, ValueKind::Float)) return MFn::kAttribute3Float;
    return MFn::kCompoundAttribute;
}

bool hasFunctionSet(const graph::Attribute& attribute, MFn::Type functionSet) {
    if (functionSet == MFn::kBase || functionSet == MFn::kAttribute) return true;
    const MFn::Type own = functionSetOf(attribute);
    if (functionSet == own) return true;
    if (functionSet == MFn::kUnitAttribute)
        return own == MFn::kDoubleLinearAttribute || own == MFn::kDoubleAngleAttribute ||
               own == MFn::kTimeAttribute;
    if (functionSet == MFn::kNumericAttribute)
        return own == MFn::kAttribute3Double || own == MFn::kAttribute3Float;
    return functionSet == MFn::kCompoundAttribute && attribute.isCompound();
}

MFn::Type functionSetOfData(std::string_view typeName) {
    for (const NamedType& named : kDataTypes) {
        if (typeName == named.nodeType) return named.type;
    }
    return MFn::kData;
}

MFn::Type functionSetOf(graph::ComponentKind kind) {
    switch (kind) {
        case graph::ComponentKind::Vertex:
            return MFn::kMeshVertComponent;
        case graph::ComponentKind::Edge:
            return MFn::kMeshEdgeComponent;
        case graph::ComponentKind::Face:
            return MFn::kMeshPolygonComponent;
        case graph::ComponentKind::ControlVertex:
            break;
    }
    return MFn::kCurveCVComponent;
}

std::optional<graph::ComponentKind> componentKindOf(MFn::Type type) {
    switch (type) {
        case MFn::kMeshVertComponent:
            return graph::ComponentKind::Vertex;
        case MFn::kMeshEdgeComponent:
            return graph::ComponentKind::Edge;
        case MFn::kMeshPolygonComponent:
            return graph::ComponentKind::Face;
        case MFn::kCurveCVComponent:
            return graph::ComponentKind::ControlVertex;
        default:
            return std::nullopt;
    }
}

const char* enumeratorName(MFn::Type type) {
#define DELVEN_ENUMERATOR(name) \
    case MFn::name:             \
        return #name
    switch (type) {
        DELVEN_ENUMERATOR(kDependencyNode);
        DELVEN_ENUMERATOR(kDagNode);
        DELVEN_ENUMERATOR(kWorld);
        DELVEN_ENUMERATOR(kTransform);
        DELVEN_ENUMERATOR(kJoint);
        DELVEN_ENUMERATOR(kShape);
        DELVEN_ENUMERATOR(kGeometric);
        DELVEN_ENUMERATOR(kSurface);
        DELVEN_ENUMERATOR(kMesh);
        DELVEN_ENUMERATOR(kGeometryFilt);
        DELVEN_ENUMERATOR(kWeightGeometryFilt);
        DELVEN_ENUMERATOR(kBlendShape);
        DELVEN_ENUMERATOR(kTweak);
        DELVEN_ENUMERATOR(kSkinClusterFilter);
        DELVEN_ENUMERATOR(kGroupId);
        DELVEN_ENUMERATOR(kGroupParts);
        DELVEN_ENUMERATOR(kSet);
        DELVEN_ENUMERATOR(kShadingEngine);
        DELVEN_ENUMERATOR(kPartition);
        DELVEN_ENUMERATOR(kLambert);
        DELVEN_ENUMERATOR(kDagPose);
        DELVEN_ENUMERATOR(kTime);
        DELVEN_ENUMERATOR(kMeshVertComponent);
        DELVEN_ENUMERATOR(kMeshEdgeComponent);
        DELVEN_ENUMERATOR(kMeshPolygonComponent);
        DELVEN_ENUMERATOR(kData);
        DELVEN_ENUMERATOR(kStringData);
        DELVEN_ENUMERATOR(kStringArrayData);
        DELVEN_ENUMERATOR(kDoubleArrayData);
        DELVEN_ENUMERATOR(kIntArrayData);
        DELVEN_ENUMERATOR(kPointArrayData);
        DELVEN_ENUMERATOR(kVectorArrayData);
        DELVEN_ENUMERATOR(kMatrixData);
        DELVEN_ENUMERATOR(kComponentListData);
        DELVEN_ENUMERATOR(kMeshData);
        DELVEN_ENUMERATOR(kNumericAttribute);
        DELVEN_ENUMERATOR(kEnumAttribute);
        DELVEN_ENUMERATOR(kDoubleLinearAttribute);
        DELVEN_ENUMERATOR(kDoubleAngleAttribute);
        DELVEN_ENUMERATOR(kTimeAttribute);
        DELVEN_ENUMERATOR(kTypedAttribute);
        DELVEN_ENUMERATOR(kMessageAttribute);
        DELVEN_ENUMERATOR(kAttribute3Double);
        DELVEN_ENUMERATOR(kAttribute3Float);
        DELVEN_ENUMERATOR(kCompoundAttribute);
        DELVEN_ENUMERATOR(kPlugin);
        default:
            return "kInvalid";
    }
#undef DELVEN_ENUMERATOR
}

}  // namespace host::api
