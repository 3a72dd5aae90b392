#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "commands/commandSupport.h"
#include "graph/component.h"
#include "render/view.h"

/// The view that pictures are made of, in place of a window.
namespace host::commands {

/// It is no part of the scene: no file keeps it, and undo does not change it.
struct ViewState {
    std::weak_ptr<graph::Node> camera{};  ///< a camera's shape; persp's if there is none
    /// Faces of shapes of which only these are drawn.
    std::vector<std::pair<std::weak_ptr<graph::Node>, graph::Component>> isolated{};
};

/// The shape of a camera that is named itself or by its transform.
Found<graph::NodeRef> findCamera(const graph::Graph& graph, const std::string& name);

/// The camera that the view looks through.
Found<graph::NodeRef> viewCamera(const graph::Graph& graph, const ViewState& view);

/// What a camera's attributes say; an error if nothing can be seen through it.
Found<render::Lens> lensOf(graph::Graph& graph, const graph::NodeRef& camera);

}  // namespace host::commands
