#include "scene/sceneSession.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include "nodes/defaultCameras.h"
#include "nodes/registerTypes.h"
#include "scene/exportScope.h"
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

/// At least 1, also for what cannot be read.
std::uint64_t sizeOf(const std::string& path) {
    std::error_code failure;
    const std::uintmax_t size = std::filesystem::file_size(std::filesystem::u8path(path), failure);
    return failure ? 1 : std::max<std::uint64_t>(size, 1);
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

/// What a file says of nodes besides their values and connections, as statements for another file. The locks
/// of nodes are theirs.
std::vector<AddedMention> mentionsOf(const SceneDocument& document) {
    std::vector<AddedMention> mentions;
    for (const SavedMention& mention : document.mentions) {
        if (document.text->statements[mention.statement].kind != StatementKind::LockNode)
            mentions.push_back({std::string(document.text->statement(mention.statement)), mention.nodes});
    }
    return mentions;
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

Progress SceneSession::progressFrom(double start, std::uint64_t bytes) const {
    if (!progress_) return {};
    return [this, start, bytes](std::uint64_t done) {
        progress_(start + 0.5 * static_cast<double>(done) / static_cast<double>(bytes), bytes);
    };
}

std::string SceneSession::open(const std::string& path) {
    const std::uint64_t bytes = sizeOf(path);
    SceneTextResult read = readSceneText(path, progressFrom(0.0, bytes));
    if (!read.ok()) return read.error;
    const graph::RecordingScope silent(graph_, nullptr);
    ContentKeeper old(graph_);
    nodes::setUpScene(graph_);
    nodes::addDefaultCameras(graph_);
    ReadOptions options;
    options.progress = progressFrom(0.5, bytes);
    ReadResult result = readScene(graph_, std::make_shared<const SceneText>(std::move(read.text)), options);
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
    const std::uint64_t bytes = sizeOf(path);
    SceneTextResult read = readSceneText(path, progressFrom(0.0, bytes));
    if (!read.ok()) return read.error;
    if (!canTake(read.text))
        return read.text.fileName + ": Its strings would end elsewhere in the code page of this scene.";
    ReadOptions options;
    options.nameSpace = nameSpace.empty() ? nameSpace : nameSpace + ':';
    options.isImport = true;
    options.progress = progressFrom(0.5, bytes);
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
    for (AddedMention& mention : mentionsOf(result.document))
        addMention(std::move(mention));
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
    const bool isRenamed = document_.isNew || fileNameOf(path_) != readName_;
    std::string error = writeScene(graph_, document_, uuids_, {path_, isRenamed, {}, settle_});
    if (error.empty()) {
        savedChanges_ = graph_.changes();
        hasUnsavedInfo_ = false;
    }
    return error;
}

std::string SceneSession::exportTo(const std::string& path) {
    followTimeUnit();
    return writeScene(graph_, document_, uuids_, {fullPath(path), true, {}, settle_});
}

void SceneSession::addMention(AddedMention mention) {
    document_.addedMentions.push_back(mention);
    hasUnsavedInfo_ = true;
    // Steps are taken in turn, so the last one is always the one to take away.
    graph_.record(
        [this](graph::Graph&) {
            document_.addedMentions.pop_back();
            hasUnsavedInfo_ = true;
        },
        [this, mention](graph::Graph&) {
            document_.addedMentions.push_back(mention);
            hasUnsavedInfo_ = true;
        });
}

std::string SceneSession::exportNodes(const std::string& path, const std::vector<graph::NodeRef>& nodes) {
    followTimeUnit();
    const SaveOptions options{fullPath(path), true, exportScope(nodes), settle_};
    if (options.only.empty()) return "There is nothing to export: every scene has these nodes.";
    SceneDocument part;
    part.text = std::make_shared<const SceneText>(headerText(*document_.text));
    part.isNew = true;
    part.sources = document_.sources;
    part.changedInfo = document_.changedInfo;
    const auto isIn = [&](const graph::NodeRef& node) {
        return node != nullptr && options.only.count(node.get()) != 0;
    };
    const auto addMentions = [&](const std::vector<AddedMention>& mentions) {
        for (const AddedMention& mention : mentions) {
            const auto& named = mention.nodes;
            const bool isWhole = std::all_of(named.begin(), named.end(), [&](const graph::NodeRef& node) {
                return node == nullptr || isIn(node) || isDefaultNode(*node);
            });
            if (isWhole && std::any_of(named.begin(), named.end(), isIn))
                part.addedMentions.push_back(mention);
        }
    };
    addMentions(mentionsOf(document_));
    addMentions(document_.addedMentions);
    return writeScene(graph_, part, uuids_, options);
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
    const SceneUnits& units = document_.text->form.units;
    if (units.centimetres != 1.0 || units.radians != 0.0)
        lines.emplace_back(
            "The file has other units: scripts give lengths in centimetres and angles in degrees.");
    if (fed > 0)
        lines.push_back("Nodes that keep old values, because what feeds them is not evaluated: " +
                        std::to_string(fed) + '.');
    return lines;
}

}  // namespace host::scene
