#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "commands/commandSupport.h"
#include "geometry/math.h"

/// Arithmetic and checked writing that move, rotate, scale and xform share.
namespace host::commands {

/// Numbers for some of the three axes.
using AxisValues = std::array<std::optional<double>, 3>;

/// The given numbers, with those of `fallback` on the other axes.
geometry::Vec3 completed(const AxisValues& values, const geometry::Vec3& fallback);

/// Why a number cannot be written: it is locked or connected. Empty when it can.
std::string writeObstacle(const graph::Graph& graph, const graph::Plug& plug);

/// Writes "translate", "rotate" (radians), "scale" or another triple of a transform, as far as it changes.
/// Fails without writing when a changed number is locked or connected.
/// @return empty, or the error
std::string writeTriple(graph::Graph& graph, const graph::NodeRef& transform, const char* attribute,
                        const geometry::Vec3& value);

/// Shifts a transform by a vector of world space.
std::string moveInWorld(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& offset);

/// Matrix from world space to the space that a transform stands in.
geometry::Matrix4 worldToParent(graph::Graph& graph, const graph::NodeRef& transform);

/// Rotation part of a transform alone (rotate axis, rotation, joint orient), and of its parent in the world.
geometry::Matrix4 ownRotation(graph::Graph& graph, const graph::NodeRef& transform);
geometry::Matrix4 parentRotation(graph::Graph& graph, const graph::NodeRef& transform);

/// Sets the rotation so that rotate axis, rotation and joint orient together are `rotation`. Of the angles
/// that mean the same, those nearest to the present ones are taken.
std::string setOwnRotation(graph::Graph& graph, const graph::NodeRef& transform,
                           const geometry::Matrix4& rotation);

/// A transform's rotate and scale pivot in the world.
geometry::Vec3 rotatePivotInWorld(graph::Graph& graph, const graph::NodeRef& transform);
geometry::Vec3 scalePivotInWorld(graph::Graph& graph, const graph::NodeRef& transform);

geometry::Vec3 toRadians(const geometry::Vec3& degrees);
geometry::Vec3 toDegrees(const geometry::Vec3& radians);

}  // namespace host::commands
