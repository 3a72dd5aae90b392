// Registers the node types, and makes the default nodes of a scene.

#include "nodes/registerTypes.h"

#include "nodes/meshNode.h"
#include "nodes/sceneTime.h"
#include "nodes/schema.h"
#include "nodes/sets.h"

namespace host::nodes {

namespace {

int componentCount(graph::Graph& graph, const graph::NodeRef& shape, graph::ComponentKind kind) {
    if (!shape->isA("mesh")) return 0;
    const MeshPtr data = meshOf(graph, shape);
    if (data == nullptr) return 0;
    switch (kind) {
        case graph::ComponentKind::Vertex:
            return data->mesh.vertexCount();
        case graph::ComponentKind::Edge:
            return data->mesh.edgeCount();
        case graph::ComponentKind::Face:
            return data->mesh.faceCount();
        case graph::ComponentKind::ControlVertex:
            break;
    }
    return 0;
}

graph::NodeRef create(graph::Graph& graph, const char* type, const char* name) {
    return graph.createNode(*graph.types().find(type), name);
}

}  // namespace

void registerTypes(graph::NodeTypes& types) {
    addDagTypes(types);
    addConstraintTypes(types);
    addMeshTypes(types);
    addDeformerTypes(types);
    addBlendShapeTypes(types);
    addSkinClusterTypes(types);
    addSetTypes(types);
    addCreatorTypes(types);
    addSceneTypes(types);
    addAnimCurveTypes(types);
    addDriverTypes(types);
    addArithmeticTypes(types);
    addRemapTypes(types);
    addCameraTypes(types);
    addLayerTypes(types);
    addSavedTypes(types);
}

void setUpScene(graph::Graph& graph) {
    graph.setComponentSupport({shapeOf, componentCount});
    const graph::RecordingScope silent(graph, nullptr);
    create(graph, "time", "time1");
    constexpr double kFrame = 1.0 / 24.0;
    setCurrentTime(graph, kFrame);
    const graph::NodeRef partition = create(graph, "partition", "renderPartition");
    const graph::NodeRef shading = create(graph, "shadingEngine", "initialShadingGroup");
    const graph::NodeRef lambert = create(graph, "lambert", "lambert1");
    graph.connect(lambert->plug("outColor"), shading->plug("surfaceShader"));
    addToPartition(graph, partition, shading);
}

}  // namespace host::nodes
