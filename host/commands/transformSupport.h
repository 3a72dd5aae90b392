#pragma once

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "commands/commandSupport.h"
#include "geometry/math.h"

/// Arithmetic and checked writing for move, rotate, scale and xform.
namespace host::commands {

/// A DAG node at the one of its places that a call names.
struct Placed {
    graph::NodeRef node;
    std::size_t path = 0;  ///< its number (graph::Instance)

    // A node alone is at its first place. Not explicit: most callers have one place for a node.
    Placed(graph::NodeRef only) : node(std::move(only)) {}
    Placed(const graph::SelectionItem& item) : node(item.node), path(item.path) {}
    /// For all that does not depend on the place.
    operator const graph::NodeRef&() const { return node; }
    graph::Node* operator->() const { return node.get(); }
    /// The node above it there; it must have one.
    Placed parent() const;
};

/// The matrices from object space, and from the space of the parent, to world space.
geometry::Matrix4 worldMatrix(graph::Graph& graph, const Placed& node);
geometry::Matrix4 parentMatrix(graph::Graph& graph, const Placed& node);

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

/// Sets translation, rotation, scale and shear so that a transform gets this local matrix. Fails if one that
/// has to change by more than rounding is locked or connected; some may be written then.
/// @return empty, or the error
std::string writeLocalMatrix(graph::Graph& graph, const graph::NodeRef& transform,
                             const geometry::Matrix4& matrix);

/// Moves a transform by a vector in world space. Fails below a scale of 0.
std::string moveInWorld(graph::Graph& graph, const Placed& transform, const geometry::Vec3& offset);

/// What is said of a node whose matrix has no inverse.
/// @param flat  what is said if the matrix is finite: a scale of 0 is a part of it
const char* inverseObstacle(const geometry::Matrix4& matrix, const char* flat = "is below a scale of 0");
/// The inverse of a matrix that takes a node to other nodes; an error where there is none.
Found<geometry::Matrix4> inverseFor(const graph::Graph& graph, const graph::NodeRef& node,
                                    const geometry::Matrix4& matrix,
                                    const char* flat = "is below a scale of 0");
/// Matrices from world space to the space of a transform's parent, and to object space.
Found<geometry::Matrix4> worldToParent(graph::Graph& graph, const Placed& transform);
Found<geometry::Matrix4> worldToObject(graph::Graph& graph, const Placed& node);

/// The rotation of a transform alone (rotate axis, rotation, joint orient), and that of its parent in world
/// space.
geometry::Matrix4 ownRotation(graph::Graph& graph, const graph::NodeRef& transform);
geometry::Matrix4 parentRotation(graph::Graph& graph, const Placed& transform);

/// Sets the rotation so that rotate axis, rotation and joint orient together are `rotation`. Of equivalent
/// angles, those nearest to the current ones are used.
std::string setOwnRotation(graph::Graph& graph, const graph::NodeRef& transform,
                           const geometry::Matrix4& rotation);
/// The same for both rotations together. Fails below a scale of 0.
std::string setWorldRotation(graph::Graph& graph, const Placed& transform, const geometry::Matrix4& rotation);

/// A place told by its nodes, from the node up to the top level: it means the same after other changes of the
/// hierarchy, where numbers of paths do not.
struct Chain {
    std::vector<graph::NodeRef> nodes{};

    Chain() = default;  ///< the top level
    explicit Chain(const graph::SelectionItem& item);
    /// The lowest node; null for the top level.
    graph::NodeRef node() const { return nodes.empty() ? nullptr : nodes.front(); }
    graph::Node* parent() const { return nodes.size() > 1 ? nodes[1].get() : nullptr; }
    /// The place as it is numbered now.
    Placed place() const;
    /// The place of a child there.
    Chain below(const graph::NodeRef& child) const;
};

/// Moves a node from its parent there below another. A transform keeps its place in the world unless
/// `isRelative`, or unless it has further instances: they share its own matrix.
/// @return empty, or why its numbers cannot follow
std::string moveBelow(graph::Graph& graph, const Chain& chain, const Chain& parent, bool isRelative);

/// The parent of an item at its place; null for the top level.
graph::Node* parentAt(const graph::SelectionItem& item);
/// Takes a node away from one of its parents; it must have another.
void takeInstance(graph::Graph& graph, const graph::NodeRef& node, graph::Node* parent);

/// A transform's rotate pivot and scale pivot in world space.
geometry::Vec3 rotatePivotInWorld(graph::Graph& graph, const Placed& transform);
geometry::Vec3 scalePivotInWorld(graph::Graph& graph, const Placed& transform);

geometry::Vec3 toRadians(const geometry::Vec3& degrees);
geometry::Vec3 toDegrees(const geometry::Vec3& radians);

}  // namespace host::commands
