#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "commands/commandSupport.h"
#include "geometry/math.h"

/// Turning and moving joints below which everything stays in place.
namespace host::commands {

/// What stays where it is in the world while a transform changes: the transforms right below it. Joints keep
/// their rotation values too, and take a change in their orientation.
class KeptChildren {
  public:
    KeptChildren(graph::Graph& graph, const graph::NodeRef& parent);

    /// Moves and turns the children back.
    /// @return empty, or the error
    std::string restore(graph::Graph& graph) const;

  private:
    struct Child {
        graph::NodeRef node;
        geometry::Matrix4 world;
        geometry::Matrix4 parentRotation;
    };
    std::vector<Child> children_;
};

/// How a joint is to be oriented.
struct JointOrienting {
    /// The axes in the order of their importance: {0, 1, 2} is "xyz". Nothing means no orientation at all.
    std::optional<std::array<int, 3>> axes{};
    /// The direction in the world for the second axis. Nothing means that the third axis is to be
    /// perpendicular to the first two bones or, without a second bone, to stay near to where it is.
    std::optional<geometry::Vec3> up{};
};

/// From the arguments of -orientJoint and -secondaryAxisOrient.
Found<JointOrienting> jointOrienting(const std::string& axes, const std::string& secondary);

/// Points the first axis of a joint to its first child joint. A joint without one keeps its orientation,
/// unless it is to have none.
/// @param zeroesScaleOrient  the axes of its scale (rotateAxis) turn with the joint; otherwise they stay
std::string orientJoint(graph::Graph& graph, const graph::NodeRef& joint, const JointOrienting& orienting,
                        bool zeroesScaleOrient);

}  // namespace host::commands
