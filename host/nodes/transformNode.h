#pragma once

#include "geometry/math.h"
#include "graph/graph.h"

namespace host::nodes {

/// The transform's own attributes, including a joint's orient and scale compensation. Angles in radians.
/// Translation, rotation and scale are within the limits that are enabled, also where an attribute is not.
geometry::TransformParts transformParts(graph::Graph& graph, const graph::NodeRef& transform);

/// Matrix of the node alone, without its offsetParentMatrix. For a shape, the identity.
geometry::Matrix4 localMatrix(graph::Graph& graph, const graph::NodeRef& node);
/// Matrix from the node's object space to world space. For a shape, that of its transform.
/// @param instance  the number of the node's path (graph::Instance)
geometry::Matrix4 worldMatrix(graph::Graph& graph, const graph::NodeRef& node, std::size_t instance = 0);
/// The node's offsetParentMatrix, times the world matrix of the parent if it has one.
geometry::Matrix4 parentMatrix(graph::Graph& graph, const graph::NodeRef& node, std::size_t instance = 0);

void setTranslation(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& value);
/// @param radians  one angle per axis, applied in the node's rotateOrder
void setRotation(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& radians);
void setScale(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& value);
/// @param value  xy, xz, yz
void setShear(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& value);
void setRotateOrder(graph::Graph& graph, const graph::NodeRef& transform, geometry::RotateOrder order);

/// The transform's attributes with the translation, rotation (in the node's rotate order), scale and shear
/// that give it this local matrix. Pivots and joint orient stay.
geometry::TransformParts partsWithMatrix(graph::Graph& graph, const graph::NodeRef& transform,
                                         const geometry::Matrix4& matrix);
/// Sets these attributes.
void setLocalMatrix(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Matrix4& matrix);

/// Connects a joint's inverseScale to the scale of its parent if the parent is a joint, and disconnects it
/// otherwise. Other nodes do not change.
void compensateParentScale(graph::Graph& graph, const graph::NodeRef& joint);

}  // namespace host::nodes
