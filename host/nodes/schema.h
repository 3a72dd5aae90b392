#pragma once

#include "graph/graph.h"

/// The parts of registerTypes, in the order in which they must run.
namespace host::nodes {

void addDagTypes(graph::NodeTypes& types);          // node, dagNode, transform, joint
void addConstraintTypes(graph::NodeTypes& types);   // pointConstraint, parentConstraint, aimConstraint, ...
void addMeshTypes(graph::NodeTypes& types);         // shape ... mesh
void addDeformerTypes(graph::NodeTypes& types);     // geometryFilter, tweak, groupParts, groupId
void addBlendShapeTypes(graph::NodeTypes& types);   // blendShape
void addSkinClusterTypes(graph::NodeTypes& types);  // skinCluster
void addSetTypes(graph::NodeTypes& types);          // objectSet, shadingEngine, partition
void addCreatorTypes(graph::NodeTypes& types);      // polyCube, ..., polyUnite
void addSceneTypes(graph::NodeTypes& types);        // time, lambert, network
void addAnimCurveTypes(graph::NodeTypes& types);    // animCurveTL, ..., animCurveUU
void addDriverTypes(graph::NodeTypes& types);       // unitConversion, blendWeighted, pairBlend
void addArithmeticTypes(graph::NodeTypes& types);   // multiplyDivide, plusMinusAverage, reverse, ...
void addRemapTypes(graph::NodeTypes& types);        // remapValue
void addCameraTypes(graph::NodeTypes& types);       // camera
void addLayerTypes(graph::NodeTypes& types);        // displayLayer, renderLayer, their managers
void addSavedTypes(graph::NodeTypes& types);        // dagPose, script, reference, lightLinker, ...

/// Computes the outputs that every DAG node has (matrices).
graph::ComputedValue computeDagOutput(graph::Graph& graph, const graph::Plug& output);

}  // namespace host::nodes
