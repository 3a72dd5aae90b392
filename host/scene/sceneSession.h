#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "scene/sceneDocument.h"
#include "scene/uuids.h"

namespace host::scene {

/// The scene as a file: which one is open, whether it was changed since, and how it is saved.
class SceneSession {
  public:
    /// @param settle  brings a file safely to the disk (SaveOptions)
    SceneSession(graph::Graph& graph, std::function<int(const std::string&)> settle);

    /// @param show  told now and then while a file is opened or imported: which part of the work is done (0
    /// to
    ///              1), and how many bytes the file has
    void setProgress(std::function<void(double part, std::uint64_t bytes)> show) {
        progress_ = std::move(show);
    }

    /// Full path of the scene's file, with slashes; empty for a scene without a name.
    const std::string& path() const { return path_; }
    void rename(const std::string& path);
    bool isModified() const { return hasUnsavedInfo_ || graph_.changes() != savedChanges_; }
    const SceneDocument& document() const { return document_; }

    /// The texts that the scene holds under keys, in the order of the file and then by key.
    std::vector<std::pair<std::string, std::string>> fileInfo() const;
    void setFileInfo(const std::string& key, const std::string& text);
    /// @return false if there is none of that key
    bool removeFileInfo(const std::string& key);

    /// Keeps a statement that means nothing to this host, to be saved with the scene. The change is recorded.
    void addMention(AddedMention mention);

    /// Starts an empty scene. Nothing before it can be undone.
    void startNew();
    /// Opens a file in place of the scene. On failure the scene stays as it was.
    /// @return the error; empty on success
    std::string open(const std::string& path);
    /// Adds the nodes of a file to the scene, as one step that can be undone.
    /// @param nameSpace  for all names, without a colon at its end; empty for the root
    std::string import(const std::string& path, const std::string& nameSpace,
                       std::vector<graph::NodeRef>& created);
    /// Saves the scene under its name.
    std::string save();
    /// Writes the scene to another file, without changing its name.
    std::string exportTo(const std::string& path);
    /// The same with only some nodes and what belongs to them (exportScope).
    std::string exportNodes(const std::string& path, const std::vector<graph::NodeRef>& nodes);

    /// The id of a node.
    const std::string& uuidOf(graph::Node& node) { return uuids_.obtain(node); }

    /// What the user should know after opening, a line each.
    std::vector<std::string> report() const;

  private:
    void begin(const std::string& path);
    bool canTake(const SceneText& text) const;
    /// A new scene is written in the unit of time that scripts have set since.
    void followTimeUnit();
    /// Tells of one half of the work on a file: cutting it, or making its nodes.
    Progress progressFrom(double start, std::uint64_t bytes) const;

    graph::Graph& graph_;
    std::function<int(const std::string&)> settle_;
    std::function<void(double, std::uint64_t)> progress_;
    SceneDocument document_;
    UuidGiver uuids_;
    std::string path_;
    std::string readName_;  // of the file that was read
    std::uint64_t savedChanges_ = 0;
    bool hasUnsavedInfo_ = false;
};

}  // namespace host::scene
