#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "nodes/defaultCameras.h"
#include "nodes/registerTypes.h"
#include "scene/sceneReader.h"
#include "scene/sceneWriter.h"

using namespace host;

namespace {

/// A scene with the nodes that every scene has. Registering the node types takes longer than most inputs, so
/// they serve many. New types of the inputs stay, hence not all of them.
graph::Graph& emptyScene() {
    constexpr int kInputsOfAGraph = 500;
    static std::unique_ptr<host::graph::Graph> graph;
    static int inputs = 0;
    if (graph == nullptr || ++inputs % kInputsOfAGraph == 0) {
        graph = std::make_unique<host::graph::Graph>();
        nodes::registerTypes(graph->types());
    }
    graph->takeContent();
    nodes::setUpScene(*graph);
    nodes::addDefaultCameras(*graph);
    return *graph;
}

/// Reads everything that waits, and makes it count as changed. Nodes that were there before the file was read
/// would be written where the file does not name them.
void touchEverything(graph::Graph& graph, const scene::SceneDocument& document) {
    const std::vector<graph::NodeRef>& given = document.givenNodes;
    for (const graph::NodeRef& node : graph.nodes()) {
        if (std::find(given.begin(), given.end(), node) != given.end()) continue;
        for (const graph::Attribute* attribute : node->attributes()) {
            if (attribute == nullptr) continue;
            const graph::Plug plug(node, {attribute, {}, 0});
            graph.setState(plug, node->state(plug.key()));
        }
        node->slots();
    }
}

std::string savedText(graph::Graph& graph, const scene::SceneDocument& document) {
    scene::UuidGiver uuids(*document.text, "fuzz");
    std::ostringstream stream;
    scene::sceneEdits(graph, document, uuids, {}).write(stream);
    return stream.str();
}

}  // namespace

/// Any text is read or refused. What was read is saved byte for byte, also after each statement was compared
/// with the scene.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    scene::SceneTextResult cut = scene::makeSceneText(text, "fuzz.ma");
    if (!cut.ok()) return 0;
    graph::Graph& graph = emptyScene();
    scene::ReadResult read =
        scene::readScene(graph, std::make_shared<const scene::SceneText>(std::move(cut.text)));
    if (!read.ok()) return 0;
    graph.forgetChanges();
    read.document.changes = graph.changes();
    read.document.nameVersion = graph.nameVersion();
    touchEverything(graph, read.document);
    const std::string saved = savedText(graph, read.document);
    if (saved != text) {
        std::fprintf(stderr, "saved as something else:\n%s\n---- in place of:\n%s\n", saved.c_str(),
                     text.c_str());
        std::abort();
    }
    return 0;
}
