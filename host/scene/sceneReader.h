#pragma once

#include <string>
#include <vector>

#include "scene/sceneDocument.h"

namespace host::scene {

/// How a file's nodes join the scene.
struct ReadOptions {
    /// Before each name of a node of the file: "a:b:". Empty for the root namespace.
    std::string nameSpace{};
    /// Whether the scene has nodes of its own. Then the file's statements about default nodes are left out.
    bool isImport = false;
    /// Told now and then how many bytes of the file are done; may be empty.
    Progress progress{};
};

struct ReadResult {
    SceneDocument document{};
    std::vector<graph::NodeRef> created{};  ///< in the order of the file
    std::string error{};                    ///< names file, line and column; empty on success

    bool ok() const { return error.empty(); }
};

/// The document of a text, for a scene in which nothing of the text was made yet.
SceneDocument startDocument(const graph::Graph& graph, std::shared_ptr<const SceneText> text);

/// Makes the nodes and connections of a file in the scene. Values stay in the file until they are asked for.
///
/// On an error, what was made before it is still there: the caller takes it out again.
ReadResult readScene(graph::Graph& graph, std::shared_ptr<const SceneText> text,
                     const ReadOptions& options = {});

}  // namespace host::scene
