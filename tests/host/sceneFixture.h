#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "geometry/textFile.h"
#include "host/commandsFixture.h"
#include "nodes/defaultCameras.h"
#include "scene/fileTypes.h"
#include "support/scratchFolder.h"

/// Scenes as files, for tests of reading and writing them.
namespace scenetest {

/// The lines of a text, without line ends.
inline std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        lines.push_back(text.substr(from, end - from));
        from = end + 1;
    }
    return lines;
}

/// The lines of one text that the other does not have, each as often as it is missing.
inline std::vector<std::string> missingLines(const std::string& from, const std::string& in) {
    std::vector<std::string> present = linesOf(in);
    std::vector<std::string> missing;
    for (const std::string& line : linesOf(from)) {
        const auto found = std::find(present.begin(), present.end(), line);
        if (found == present.end()) {
            missing.push_back(line);
        } else {
            present.erase(found);
        }
    }
    return missing;
}

/// A host with a folder for its scenes.
class SceneHost : public commandstest::Host {
  public:
    std::string path(const std::string& name) const { return (folder_.path() / name).generic_string(); }
    std::string write(const std::string& name, const std::string& text) const {
        EXPECT_EQ(host::geometry::writeTextFile(path(name), text), "");
        return path(name);
    }
    std::string read(const std::string& name) const { return host::geometry::readTextFile(path(name)).text; }

    void open(const std::string& text) { ok("file -open -force \"" + write("scene.ma", text) + "\""); }
    /// Saves the open scene under its name; what is then in the file.
    std::string saved() {
        ok("file -save");
        return read("scene.ma");
    }

    /// Makes everything count as changed, so that saving compares each statement with the scene.
    void touchEverything() {
        for (const host::graph::NodeRef& node : graph.nodes())
            touch(node);
    }
    /// The same without the nodes that every scene has: those that the file does not name would be written.
    void touchOwnNodes() {
        for (const host::graph::NodeRef& node : graph.nodes()) {
            if (!host::scene::isDefaultNode(*node)) touch(node);
        }
    }

  private:
    void touch(const host::graph::NodeRef& node) {
        // A camera that the file does not name would be written with all that makes it one.
        if (host::nodes::isDefaultCamera(*node)) return;
        for (const host::graph::Attribute* attribute : node->attributes()) {
            if (attribute == nullptr) continue;
            const host::graph::Plug plug(node, {attribute, {}, 0});
            graph.setState(plug, node->state(plug.key()));
        }
    }

    ScratchFolder folder_;
};

}  // namespace scenetest
