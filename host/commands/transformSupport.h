#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "commands/commandSupport.h"
#include "geometry/math.h"

/// Arithmetic and checked writing for move, rotate, scale and xform.
namespace host::commands {

/// Numbers for some of the three axes.
using AxisValues = std::array<std::optional<double>, 3>;

/// The given numbers, with those of `fallback` on the other axes.
geometry::Vec3 completed(const AxisValues& values, const geometry::Vec3& fallback);

/// Why a number cannot be written: it is locked or connected. Empty if it can.
std::string writeObstacle(const graph::Graph& graph, const graph::Plug& plug);

/// Writes the changed numbers of "translate", "rotate" (radians), "scale" or another triple of a transform.
/// Fails, and writes nothing, if a changed number is locked or connected.
/// @return empty, or the error
std::string writeTriple(graph::Graph& graph, const graph::NodeRef& transform, const char* attribute,
                        const geometry::Vec3& value);

/// Moves a transform by a vector in world space.
std::string moveInWorld(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& offset);

/// Matrix from world space to the space of a transform's parent.
geometry::Matrix4 worldToParent(graph::Graph& graph, const graph::NodeRef& transform);

/// The rotation of a transform alone (rotate axis, rotation, joint orient), and that of its parent in world
/// space.
geometry::Matrix4 ownRotation(graph::Graph& graph, const graph::NodeRef& transform);
geometry::Matrix4 parentRotation(graph::Graph& graph, const graph::NodeRef& transform);

/// Sets the rotation so that rotate axis, rotation and joint orient together are `rotation`. Of equivalent
/// angles, those nearest to the current ones are used.
std::string setOwnRotation(graph::Graph& graph, const graph::NodeRef& transform,
                           const geometry::Matrix4& rotation);

/// Moves a node below another parent. A transform keeps its place in the world unless `isRelative`.
void moveBelow(graph::Graph& graph, const graph::NodeRef& node, graph::Node* parent, bool isRelative);

/// A transform's rotate pivot and scale pivot in world space.
geometry::Vec3 rotatePivotInWorld(graph::Graph& graph, const graph::NodeRef& transform);
geometry::Vec3 scalePivotInWorld(graph::Graph& graph, const graph::NodeRef& transform);

geometry::Vec3 toRadians(const geometry::Vec3& degrees);
geometry::Vec3 toDegrees(const geometry::Vec3& radians);

}  // namespace host::commands
