#include "scene/sceneSession.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include "nodes/defaultCameras.h"
#include "nodes/registerTypes.h"
#include "scene/fileTypes.h"
#include "scene/nodeStatements.h"
#include "scene/sceneReader.h"
#include "scene/sceneWriter.h"

namespace host::scene {

namespace {

std::string fullPath(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::path full = std::filesystem::absolute(std::filesystem::u8path(path), ignored);
    return full.lexically_normal().generic_u8string();
}

/// Takes the content out of the scene, and puts it back unless it is dropped: also if memory runs out.
class ContentKeeper {
  public:
    explicit ContentKeeper(graph::Graph& graph) : graph_(graph), content_(graph.takeContent()) {}
    ~ContentKeeper() {
        if (content_ != nullptr) graph_.putContent(std::move(content_));
    }
    ContentKeeper(const ContentKeeper&) = delete;
    ContentKeeper& operator=(const ContentKeeper&) = delete;

    void drop() { content_.reset(); }

  private:
    graph::Graph& graph_;
    std::unique_ptr<graph::SceneContent> content_;
};

SceneDocument emptyDocument(const graph::Graph& graph) {
    SceneDocument document =
        startDocument(graph, std::make_shared<const SceneText>(emptySceneText(graph.framesPerSecond())));
    document.isNew = true;
    return document;
}

/// Whether a node's value comes from one that is not evaluated.
bool isFedByKept(const graph::Node& node) {
    for (const auto& [key, link] : node.incoming()) {
        if (link.key.attribute->isKept() && key.attribute->kind() != graph::ValueKind::Message &&
            !key.attribute->isKept())
            return true;
    }
    return false;
}

/// Undo and redo of the connections of an import, which are made without a record. Undo breaks those into
/// nodes that stay; the others go with the nodes.
void recordLinks(graph::Graph& graph, std::vector<SavedLink> made,
                 const std::vector<graph::NodeRef>& created) {
    std::set<const graph::Node*> leaving;
    for (const graph::NodeRef& node : created)
        leaving.insert(node.get());
    const auto links = std::make_shared<const std::vector<SavedLink>>(std::move(made));
    graph.record(
        [links, leaving = std::move(leaving)](graph::Graph& in) {
            for (auto link = links->rbegin(); link != links->rend(); ++link) {
                const bool stays = leaving.count(link->destination.node().get()) == 0;
                if (stays && in.source(link->destination) == link->source) in.disconnect(link->destination);
            }
        },
        [links](graph::Graph& in) {
            for (const SavedLink& link : *links)
                in.connectSaved(link.source, link.destination);
        });
}

}  // namespace

SceneSession::SceneSession(graph::Graph& graph, std::function<int(const std::string&)> settle)
    : graph_(graph),
      settle_(std::move(settle)),
      document_(emptyDocument(graph)),
      uuids_(*document_.text, {}) {
    begin({});
}

/// Everything from here on is a change of the document.
void SceneSession::begin(const std::string& path) {
    graph_.forgetChanges();
    document_.changes = graph_.changes();
    document_.nameVersion = graph_.nameVersion();
    savedChanges_ = graph_.changes();
    hasUnsavedInfo_ = false;
    path_ = path;
    readName_ = fileNameOf(path);
    uuids_ = UuidGiver(*document_.text, readName_);
}

void SceneSession::rename(const std::string& path) {
    path_ = fullPath(path);
    if (!std::filesystem::u8path(path_).has_extension()) path_ += ".ma";
}

void SceneSession::startNew() {
    const graph::RecordingScope silent(graph_, nullptr);
    graph_.undoQueue().clear();
    graph_.takeContent();
    nodes::setUpScene(graph_);
    nodes::addDefaultCameras(graph_);
    document_ = emptyDocument(graph_);
    begin({});
}

std::string SceneSession::open(const std::string& path) {
    SceneTextResult read = readSceneText(path);
    if (!read.ok()) return read.error;
    const graph::RecordingScope silent(graph_, nullptr);
    ContentKeeper old(graph_);
    nodes::setUpScene(graph_);
    nodes::addDefaultCameras(graph_);
    ReadResult result = readScene(graph_, std::make_shared<const SceneText>(std::move(read.text)));
    if (!result.ok()) return result.error;
    graph_.undoQueue().clear();
    old.drop();
    document_ = std::move(result.document);
    graph_.setFramesPerSecond(document_.text->form.units.framesPerSecond);
    begin(fullPath(path));
    return {};
}

/// Statements of a file are copied into a scene word for word, so they must be the same in its code page.
bool SceneSession::canTake(const SceneText& text) const {
    const bool isDoubleByte = document_.text->form.isDoubleByte;
    if (text.form.isDoubleByte == isDoubleByte) return true;
    const CutText cut = cutStatements(text.bytes, isDoubleByte);
    return !cut.fault && cut.statements == text.statements;
}

std::string SceneSession::import(const std::string& path, const std::string& nameSpace,
                                 std::vector<graph::NodeRef>& created) {
    SceneTextResult read = readSceneText(path);
    if (!read.ok()) return read.error;
    if (!canTake(read.text))
        return read.text.fileName + ": Its strings would end elsewhere in the code page of this scene.";
    ReadOptions options;
    options.nameSpace = nameSpace.empty() ? nameSpace : nameSpace + ':';
    options.isImport = true;
    const graph::Namespaces before = graph_.allNamespaces();
    if (!nameSpace.empty()) graph_.addNamespace(nameSpace);
    ReadResult result = readScene(graph_, std::make_shared<const SceneText>(std::move(read.text)), options);
    if (!result.ok()) {
        const graph::RecordingScope silent(graph_, nullptr);
        graph_.deleteNodes(result.created);
        graph_.setNamespaces(before);
        return result.error;
    }
    created = std::move(result.created);
    recordLinks(graph_, std::move(result.document.links), created);
    document_.sources.insert(result.document.sources.begin(), result.document.sources.end());
    for (const graph::NodeRef& node : created) {
        if (!node->uuid().empty() && !uuids_.take(node->uuid())) graph_.setUuid(*node, uuids_.next());
    }
    return {};
}

void SceneSession::followTimeUnit() {
    const double rate = graph_.framesPerSecond();
    if (document_.isNew && document_.text->form.units.framesPerSecond != rate)
        document_.text = std::make_shared<const SceneText>(emptySceneText(rate));
}

std::string SceneSession::save() {
    followTimeUnit();
    SaveOptions options;
    options.path = path_;
    options.isRenamed = document_.isNew || fileNameOf(path_) != readName_;
    options.settle = settle_;
    std::string error = writeScene(graph_, document_, uuids_, options);
    if (error.empty()) {
        savedChanges_ = graph_.changes();
        hasUnsavedInfo_ = false;
    }
    return error;
}

std::string SceneSession::exportTo(const std::string& path) {
    followTimeUnit();
    SaveOptions options;
    options.path = fullPath(path);
    options.isRenamed = true;
    options.settle = settle_;
    return writeScene(graph_, document_, uuids_, options);
}

std::vector<std::pair<std::string, std::string>> SceneSession::fileInfo() const {
    std::vector<std::pair<std::string, std::string>> info;
    std::set<std::string> seen;
    const SceneText& text = *document_.text;
    for (std::uint32_t k = 0; k < text.statements.size(); ++k) {
        if (text.statements[k].kind != StatementKind::FileInfo) continue;
        const auto [key, value] = readFileInfo(text.statement(k), text.form.isDoubleByte);
        const auto changed = document_.changedInfo.find(key);
        const std::optional<std::string> now =
            changed != document_.changedInfo.end() ? changed->second : value;
        if (now && seen.insert(key).second) info.emplace_back(key, *now);
    }
    for (const auto& [key, value] : document_.changedInfo) {
        if (value && seen.insert(key).second) info.emplace_back(key, *value);
    }
    return info;
}

void SceneSession::setFileInfo(const std::string& key, const std::string& text) {
    document_.changedInfo[key] = text;
    hasUnsavedInfo_ = true;
}

bool SceneSession::removeFileInfo(const std::string& key) {
    const auto info = fileInfo();
    const bool exists =
        std::any_of(info.begin(), info.end(), [&](const auto& entry) { return entry.first == key; });
    if (exists) {
        document_.changedInfo[key] = std::nullopt;
        hasUnsavedInfo_ = true;
    }
    return exists;
}

std::vector<std::string> SceneSession::report() const {
    std::map<std::string, int> kept;
    int scripts = 0;
    int fed = 0;
    for (const graph::NodeRef& node : graph_.nodes()) {
        if (node->type().isKept() && !isDefaultNode(*node)) ++kept[node->type().name()];
        if (node->type().name() == "script") ++scripts;
        if (isFedByKept(*node)) ++fed;
    }
    std::vector<std::string> lines;
    if (!kept.empty()) {
        std::string line = "Kept, but not evaluated:";
        for (const auto& [type, count] : kept)
            line += (line.back() == ':' ? " " : ", ") + std::to_string(count) + ' ' + type;
        lines.push_back(line + '.');
    }
    if (!document_.references.empty()) {
        std::string line = "References not loaded:";
        for (const std::string& path : document_.references)
            line += (line.back() == ':' ? " " : ", ") + path;
        lines.push_back(line + '.');
    }
    if (scripts > 0) lines.push_back("Script nodes not run: " + std::to_string(scripts) + '.');
    if (fed > 0)
        lines.push_back("Nodes that keep old values, because what feeds them is not evaluated: " +
                        std::to_string(fed) + '.');
    return lines;
}

}  // namespace host::scene
