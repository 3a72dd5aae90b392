#pragma once

#include <functional>
#include <set>
#include <string>

#include "scene/sceneDocument.h"
#include "scene/textEdits.h"
#include "scene/uuids.h"

namespace host::scene {

/// What a save needs besides the scene.
struct SaveOptions {
    std::string path{};      ///< of the file to write
    bool isRenamed = false;  ///< the file that was read has another name
    /// The nodes to write; empty for all. Nodes that every scene has are named, but not written.
    std::set<const graph::Node*> only{};
    /// Brings a complete file safely to the disk; returns the system's error code.
    std::function<int(const std::string& path)> settle{};
};

/// The edits that bring the file that was read up to date with the scene.
///
/// Statements that nothing changed are copied byte for byte. New nodes follow the last node, new connections
/// the last connection.
TextEdits sceneEdits(graph::Graph& graph, const SceneDocument& document, UuidGiver& uuids,
                     const SaveOptions& options);

/// Writes the scene into a file, in place of the old one if there is one, which stays whole on any failure.
/// @return the error; empty on success
std::string writeScene(graph::Graph& graph, const SceneDocument& document, UuidGiver& uuids,
                       const SaveOptions& options);

}  // namespace host::scene
