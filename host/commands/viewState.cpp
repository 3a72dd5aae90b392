#include "commands/viewState.h"

#include <cmath>
#include <utility>

#include "graph/names.h"

namespace host::commands {

Found<graph::NodeRef> findCamera(const graph::Graph& graph, const std::string& name) {
    const Found<graph::NodeRef> node = findOneNode(graph, name);
    if (!node.ok()) return node;
    if (node.value->isA("camera")) return node;
    for (graph::Node* child : node.value->children()) {
        if (child->isA("camera")) return {child->ref(), {}};
    }
    return {nullptr, graph.uniqueName(*node.value) + " is no camera."};
}

Found<graph::NodeRef> viewCamera(const graph::Graph& graph, const ViewState& view) {
    const graph::NodeRef camera = view.camera.lock();
    return camera != nullptr && camera->isAlive() ? Found<graph::NodeRef>{camera, {}}
                                                  : findCamera(graph, "persp");
}

Found<render::Lens> lensOf(graph::Graph& graph, const graph::NodeRef& camera) {
    const auto number = [&](const char* attribute) { return graph.number(camera->plug(attribute)); };
    render::Lens lens;
    lens.isOrthographic = number("orthographic") != 0.0;
    lens.orthographicWidth = number("orthographicWidth");
    lens.focalLength = number("focalLength");
    lens.filmWidth = number("horizontalFilmAperture");
    lens.filmHeight = number("verticalFilmAperture");
    lens.cameraScale = number("cameraScale");
    lens.filmFit = static_cast<render::FilmFit>(static_cast<int>(number("filmFit")));
    lens.nearClip = number("nearClipPlane");
    lens.farClip = number("farClipPlane");
    const auto isSize = [](double value) { return std::isfinite(value) && value > 0.0; };
    for (const auto& [attribute, value] :
         {std::pair("focalLength", lens.focalLength), std::pair("horizontalFilmAperture", lens.filmWidth),
          std::pair("verticalFilmAperture", lens.filmHeight), std::pair("cameraScale", lens.cameraScale),
          std::pair("orthographicWidth", lens.orthographicWidth), std::pair("farClipPlane", lens.farClip)}) {
        if (!isSize(value))
            return {lens, "Nothing can be seen through " + graph.uniqueName(*camera) + ": its " + attribute +
                              " must be above 0."};
    }
    return {lens, {}};
}

}  // namespace host::commands
