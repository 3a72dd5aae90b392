#include "scene/sceneReader.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

#include "graph/instances.h"
#include "graph/names.h"
#include "graph/namespaces.h"
#include "nodes/defaultCameras.h"
#include "scene/fileTypes.h"
#include "scene/instanceStatements.h"
#include "scene/nodeStatements.h"
#include "scene/plugText.h"
#include "scene/words.h"

namespace host::scene {

namespace {

using graph::NodeRef;

/// A legal name of a node in a file: with namespaces, and perhaps a colon in front.
bool isNodeName(std::string_view name) {
    name = graph::withoutRoot(name);
    for (std::size_t from = 0;;) {
        const std::size_t colon = std::min(name.find(':', from), name.size());
        if (!graph::isLegalName(name.substr(from, colon - from))) return false;
        if (colon == name.size()) return true;
        from = colon + 1;
    }
}

class Reader {
  public:
    Reader(graph::Graph& graph, std::shared_ptr<const SceneText> text, const ReadOptions& options)
        : graph_(graph), text_(std::move(text)), options_(options) {
        result_.document = startDocument(graph, text_);
    }

    ReadResult run() {
        types_ = fileTypes(*text_, graph_.types());
        const auto count = static_cast<std::uint32_t>(text_->statements.size());
        std::uint64_t reported = 0;
        for (std::uint32_t k = 0; k < count && result_.ok(); ++k) {
            read(k);
            const std::uint64_t done = text_->statements[k].end;
            if (!options_.progress || done - reported < kProgressStep) continue;
            reported = done;
            options_.progress(done);
        }
        closeBlock(count);
        makeInstances();
        return std::move(result_);
    }

  private:
    void fail(std::uint32_t statement, const std::string& why) {
        result_.error = text_->place(statement) + ": " + why;
    }

    void read(std::uint32_t index) {
        switch (text_->statements[index].kind) {
            case StatementKind::CreateNode:
                return create(index);
            case StatementKind::Select:
                return select(index);
            case StatementKind::SetAttr:
            case StatementKind::AddAttr:
            case StatementKind::Rename:
                if (!isOpen_)
                    fail(index,
                         "This statement belongs to no node: no createNode or select comes before it.");
                return;
            case StatementKind::ConnectAttr:
                closeBlock(index);
                return connect(index);
            case StatementKind::LockNode:
                return lock(index);
            case StatementKind::Parent:
                closeBlock(index);
                return addParent(index);
            case StatementKind::Instanceable:
            case StatementKind::Relationship:
                closeBlock(index);
                return mention(index);
            case StatementKind::File:
                return reference(index);
            default:
                return;
        }
    }

    void openBlock(std::uint32_t index, NodeRef node) {
        closeBlock(index);
        result_.document.blocks.push_back({index, index + 1, std::move(node), {}});
        isOpen_ = true;
        isBlockOpen_ = true;
    }

    /// Gives the node its statements.
    void closeBlock(std::uint32_t end) {
        if (!isBlockOpen_) return;
        isBlockOpen_ = false;
        SavedBlock& block = result_.document.blocks.back();
        block.last = end;
        if (block.node == nullptr || end == block.first + 1) return;
        SavedNode*& source = result_.document.sources[block.node.get()];
        if (source == nullptr) {
            auto fresh = std::make_unique<SavedNode>(text_, graph_);
            source = fresh.get();
            block.node->setSource(std::move(fresh));
        }
        source->addStatements(block.first + 1, end);
    }

    /// The node that a name or path of the file means: one that the file has made or shares, or else one that
    /// every scene has. Names of other nodes of the scene mean nothing to a file. Null if there is none, or
    /// if there are several.
    NodeRef find(std::string_view name) const {
        const std::size_t bar = name.rfind('|');
        const std::string_view leaf =
            graph::withoutRoot(bar == std::string_view::npos ? name : name.substr(bar + 1));
        const auto found = byFileName_.find(std::string(leaf));
        if (found == byFileName_.end()) {
            const NodeRef given = findFromRoot(graph_, leaf);
            const bool isShared =
                given != nullptr && (isDefaultNode(*given) || nodes::isDefaultCamera(*given));
            return isShared ? given : nullptr;
        }
        NodeRef match;
        for (const NodeRef& node : found->second) {
            if (bar != std::string_view::npos && chainOf(*node, name.substr(0, bar)).empty()) continue;
            if (match != nullptr) return nullptr;
            match = node;
        }
        return match;
    }

    /// The node and those above it that the names of a path mean. Empty if they mean others.
    std::vector<graph::Node*> chainOf(graph::Node& node, std::string_view path) const {
        return graph::chainAbove(
            node, path,
            [&](const graph::Node& at, std::string_view part, std::vector<graph::Node*>& parents) {
                appendParents(at, graph::withoutRoot(part), parents);
            });
    }

    static constexpr std::size_t kFewParents = 16;

    /// Appends the parents with a name. A node may have as many as there are statements: many are not
    /// searched, but found by the name.
    void appendParents(const graph::Node& node, std::string_view name,
                       std::vector<graph::Node*>& parents) const {
        const std::vector<graph::Node*>& added = pending_.parentsOf(node);
        if (node.otherParents().size() + added.size() < kFewParents) {
            const auto add = [&](graph::Node* parent) {
                const auto own = fileNames_.find(parent);
                if (own != fileNames_.end() && own->second == name) parents.push_back(parent);
            };
            graph::visitParents(node, add);
            std::for_each(added.begin(), added.end(), add);
            return;
        }
        const auto found = byFileName_.find(std::string(name));
        if (found == byFileName_.end()) return;
        for (const NodeRef& parent : found->second) {
            if (isBelow(node, *parent)) parents.push_back(parent.get());
        }
    }

    /// Whether a node has a parent, or is going to have it.
    bool isBelow(const graph::Node& node, const graph::Node& parent) const {
        return graph_.hasParent(node, &parent) || pending_.has(node, parent);
    }

    /// From here on the file's name means this node.
    void know(const std::string& name, const NodeRef& node) {
        fileNames_[node.get()] = name;
        byFileName_[name].push_back(node);
    }

    void create(std::uint32_t index) {
        const std::optional<NodeWords> words = readCreateNode(text_->statement(index));
        if (!words || (!words->name.empty() && !isNodeName(words->name)))
            return fail(index, "This is not a createNode statement of a scene file.");
        NodeRef parent;
        if (!words->parent.empty()) {
            parent = find(words->parent);
            if (parent == nullptr || !parent->type().isDag())
                return fail(index,
                            "The parent '" + words->parent + "' is not in the scene, or there are several.");
        }
        const std::string name(graph::withoutRoot(words->name));
        if (parent == nullptr && !options_.isImport) replaceCamera(name);
        if (words->isShared) {
            if (const NodeRef present = findFromRoot(graph_, name)) {
                know(name, present);
                return openBlock(index, options_.isImport ? nullptr : present);
            }
        }
        const graph::NodeType* type = nodeTypeFor(graph_.types(), words->type, types_);
        if (type == nullptr) return fail(index, "Nodes of type '" + words->type + "' cannot be created.");
        if (parent != nullptr && !type->isDag())
            return fail(index, "A node of type '" + words->type + "' cannot have a parent.");
        // Nodes that are shared are so across namespaces.
        const std::string wanted = words->isShared || name.empty() ? name : options_.nameSpace + name;
        const NodeRef node = graph_.createNode(*type, wanted, parent.get());
        know(name.empty() ? node->name() : name, node);
        result_.created.push_back(node);
        openBlock(index, node);
        if (node->name() != wanted) result_.document.blocks.back().name = node->name();
    }

    /// The cameras of a scene are those of its file, with no value that the file does not give. Those that it
    /// does not name stay as they were made.
    void replaceCamera(const std::string& name) {
        const NodeRef camera = findFromRoot(graph_, '|' + name);
        const auto& given = result_.document.givenNodes;
        if (camera != nullptr && nodes::isDefaultCamera(*camera) &&
            std::find(given.begin(), given.end(), camera) != given.end())
            graph_.deleteNodes({camera});
    }

    void select(std::uint32_t index) {
        const std::optional<NodeWords> words = readSelect(text_->statement(index));
        if (!words) return fail(index, "This is not a select statement of a scene file.");
        NodeRef node = find(words->name);
        if (node == nullptr && !options_.isImport) {
            const std::string name(graph::withoutRoot(words->name));
            const auto type = defaultTypeOf(name);
            // What a reference holds is not loaded.
            if (type && isNodeName(name)) {
                node = graph_.createNode(*nodeTypeFor(graph_.types(), *type, types_), name);
                know(name, node);
            }
        }
        openBlock(index, options_.isImport ? nullptr : node);
    }

    /// The plug of a connection; an empty one if its node is not in the scene.
    graph::Plug plugOf(const std::string& name) {
        const std::size_t dot = name.find('.');
        if (dot == std::string::npos) return {};
        const NodeRef node = find(std::string_view(name).substr(0, dot));
        if (node == nullptr) return {};
        const std::string_view path = std::string_view(name).substr(dot + 1);
        const graph::PlugMatch match = graph::findOwnPlug(node, path);
        const bool isOne = match.ok && match.plug.isFullyIndexed() && match.last == match.plug.logicalIndex();
        if (isOne) return match.plug;
        graph::NodeLoader loader(*node);
        return {node, {&keptAttribute(loader, path), {}, 0}};
    }

    void connect(std::uint32_t index) {
        // A path of a connection may tell which instance is meant. Files say all instances before.
        if (!std::exchange(isConnecting_, true)) makeInstances();
        WordScanner words(text_->statement(index));
        words.next();
        std::vector<std::string> names;
        bool isNext = false;
        for (Word word = words.next(); !word.isEnd(); word = words.next()) {
            if (word.isText()) {
                names.push_back(word.text());
            } else if (word.isBare("-na") || word.isBare("-nextAvailable")) {
                isNext = true;
            } else if (word.isBare("-l") || word.isBare("-lock")) {
                words.next();
            } else if (!word.isBare("-f") && !word.isBare("-force")) {
                return fail(index, "This is not a connectAttr statement of a scene file.");
            }
        }
        if (names.size() != 2) return fail(index, "A connection needs two plugs.");
        const graph::Plug source = onInstance(plugOf(names[0]), names[0]);
        graph::Plug destination = source ? plugOf(names[1]) : graph::Plug();
        if (!destination) return;
        if (isNext && destination.attribute().isKept()) {
            destination = nextKept(destination);
        } else {
            destination = isNext && destination.isArray() ? nextElement(destination) : onElement(destination);
        }
        if (destination.attribute().isOutput()) return;
        graph_.connectSaved(source, destination);
        result_.document.links.push_back({index, source, destination});
    }

    /// A multi output without an index is its first element.
    static graph::Plug onElement(const graph::Plug& plug) {
        return plug && plug.isArray() && plug.attribute().isOutput() ? plug.element(0) : plug;
    }

    /// A multi with an element per instance, without an index: the instance that the path means.
    graph::Plug onInstance(const graph::Plug& plug, std::string_view name) {
        const bool isPerInstance =
            plug && plug.isArray() && (plug.attribute().isOutput() || isInstanceGroups(plug.attribute()));
        if (!isPerInstance || !graph_.hasInstances() || !graph::isInstanced(*plug.node()))
            return onElement(plug);
        const std::size_t bar = name.substr(0, name.find('.')).rfind('|');
        if (bar == std::string_view::npos) return plug.element(0);
        const std::size_t number = numbers_.at(chainOf(*plug.node(), name.substr(0, bar))).number;
        return plug.element(static_cast<int>(number));
    }

    /// The element after the last connected one.
    graph::Plug nextElement(const graph::Plug& array) {
        const auto& incoming = array.node()->incoming();
        const graph::PlugKey largest = array.element(std::numeric_limits<int>::max()).key();
        const auto behind = incoming.upper_bound(largest);
        if (behind == incoming.begin()) return array.element(0);
        const graph::PlugKey& last = std::prev(behind)->first;
        graph::PlugKey same = largest;
        const auto depth = static_cast<std::size_t>(array.key().depth);
        same.indices[depth] = last.indices[depth];
        if (!(last == same)) return array.element(0);
        if (last == largest) return array.element(graph_.nextIndex(array));
        return array.element(last.indices[depth] + 1);
    }

    /// An element of a multi of which only the name is known: "s[3]" after "s[2]".
    graph::Plug nextKept(const graph::Plug& array) {
        graph::NodeLoader loader(*array.node());
        for (int& index = nextOfKept_[&array.attribute()];; ++index) {
            const std::string path = array.attribute().longName() + '[' + std::to_string(index) + ']';
            const graph::Plug element(array.node(), {&keptAttribute(loader, path), {}, 0});
            if (!graph_.source(element)) return element;
        }
    }

    /// The nodes that the names of a statement mean, in their order.
    std::vector<NodeRef> namedNodes(std::uint32_t index) const {
        WordScanner words(text_->statement(index));
        words.next();
        // The kind of a relationship is a string like the names, but names nothing.
        bool isKind = text_->statements[index].kind == StatementKind::Relationship;
        std::vector<NodeRef> nodes;
        for (Word word = words.next(); !word.isEnd(); word = words.next()) {
            if (!word.isText()) continue;
            const std::string name = word.text();
            nodes.push_back(isKind ? nullptr : find(std::string_view(name).substr(0, name.find('.'))));
            isKind = false;
        }
        return nodes;
    }

    /// What gives no node another parent is kept as it is.
    void addParent(std::uint32_t index) {
        const auto names = readAddedParent(text_->statement(index));
        std::vector<NodeRef> nodes;
        for (const std::string& name : names.value_or(std::vector<std::string>()))
            nodes.push_back(find(name));
        if (nodes.empty() || nodes.back() == nullptr || !nodes.back()->isA("transform"))
            return mention(index);
        const NodeRef parent = nodes.back();
        nodes.pop_back();
        std::set<const graph::Node*> fresh;
        const bool areNew = std::all_of(nodes.begin(), nodes.end(), [&](const NodeRef& node) {
            return node != nullptr && node->type().isDag() && !isBelow(*node, *parent) &&
                   fresh.insert(node.get()).second;
        });
        if (!areNew) return mention(index);
        for (const NodeRef& node : nodes)
            pending_.add({index, node, parent});
    }

    /// Statements that would put nodes below themselves are kept as they are.
    void makeInstances() {
        numbers_ = {};
        std::set<std::uint32_t> circles;
        for (SavedInstance& instance : pending_.take(circles)) {
            graph_.addInstance(*instance.node, instance.parent.get());
            result_.document.instances.push_back(std::move(instance));
        }
        if (circles.empty()) return;
        for (const std::uint32_t statement : circles)
            mention(statement);
        auto& mentions = result_.document.mentions;
        std::sort(mentions.begin(), mentions.end(),
                  [](const auto& a, const auto& b) { return a.statement < b.statement; });
    }

    /// Keeps which nodes a statement names.
    void mention(std::uint32_t index) { result_.document.mentions.push_back({index, namedNodes(index)}); }

    /// A statement without a name is about the node of its block, and belongs to it.
    void lock(std::uint32_t index) {
        std::vector<NodeRef> nodes = namedNodes(index);
        if (!nodes.empty()) {
            closeBlock(index);
            mention(index);
        } else if (isBlockOpen_) {
            nodes.push_back(result_.document.blocks.back().node);
        }
        const std::optional<bool> locks = readLock(text_->statement(index));
        for (const NodeRef& node : nodes) {
            if (node == nullptr || !locks) continue;
            graph_.setLocked(*node, *locks);
            result_.document.locks[node.get()] = *locks;
        }
    }

    void reference(std::uint32_t index) {
        WordScanner words(text_->statement(index), text_->form.isDoubleByte);
        Word path;
        bool isReference = false;
        for (Word word = words.next(); !word.isEnd(); word = words.next()) {
            isReference = isReference || word.isBare("-r") || word.isBare("-reference");
            if (word.isText()) path = word;
        }
        if (isReference) result_.document.references.push_back(path.text());
    }

    graph::Graph& graph_;
    std::shared_ptr<const SceneText> text_;
    const ReadOptions& options_;
    FileTypes types_{};
    std::unordered_map<std::string, std::vector<NodeRef>> byFileName_;  // without the root's colon
    std::unordered_map<const graph::Node*, std::string> fileNames_;     // the reverse
    ReadResult result_{};
    std::unordered_map<const graph::Attribute*, int> nextOfKept_;
    PendingInstances pending_;
    graph::InstanceNumbers numbers_;  // of the instances before the connections
    bool isConnecting_ = false;
    bool isOpen_ = false;       // a node is current
    bool isBlockOpen_ = false;  // statements go to the last block
};

}  // namespace

SceneDocument startDocument(const graph::Graph& graph, std::shared_ptr<const SceneText> text) {
    SceneDocument document;
    document.text = std::move(text);
    document.givenNodes = graph.nodes();
    for (const NodeRef& node : document.givenNodes) {
        for (const auto& [key, link] : node->incoming())
            document.givenLinks.push_back({graph::Plug(link.node->ref(), link.key), graph::Plug(node, key)});
    }
    return document;
}

ReadResult readScene(graph::Graph& graph, std::shared_ptr<const SceneText> text, const ReadOptions& options) {
    return Reader(graph, std::move(text), options).run();
}

}  // namespace host::scene
