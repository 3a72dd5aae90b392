#pragma once

#include "geometry/math.h"
#include "graph/graph.h"

namespace host::nodes {

/// The transform's own attributes, a joint's orient and scale compensation among them; angles in radians.
geometry::TransformParts transformParts(graph::Graph& graph, const graph::NodeRef& transform);

/// Matrix of the node alone: the identity for a shape.
geometry::Matrix4 localMatrix(graph::Graph& graph, const graph::NodeRef& node);
/// Matrix from the node's object space to world space; a shape's is that of its transform.
geometry::Matrix4 worldMatrix(graph::Graph& graph, const graph::NodeRef& node);
/// World matrix of the parent, the identity at the top level.
geometry::Matrix4 parentMatrix(graph::Graph& graph, const graph::NodeRef& node);

void setTranslation(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& value);
/// @param radians  one angle an axis, turned in the order of the node's rotateOrder
void setRotation(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& radians);
void setScale(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& value);
/// @param value  xy, xz, yz
void setShear(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& value);
void setRotateOrder(graph::Graph& graph, const graph::NodeRef& transform, geometry::RotateOrder order);

/// Sets translation, rotation (in the node's rotate order), scale and shear so that the local matrix becomes
/// this one. Pivots and joint orient stay.
void setLocalMatrix(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Matrix4& matrix);

/// Feeds a joint's inverseScale from the scale of its parent when that is a joint, and from nothing
/// otherwise. Other nodes are left alone.
void compensateParentScale(graph::Graph& graph, const graph::NodeRef& joint);

}  // namespace host::nodes
