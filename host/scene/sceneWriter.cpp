#include "scene/sceneWriter.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <set>
#include <tuple>
#include <unordered_set>
#include <utility>

#include "geometry/textFile.h"
#include "graph/names.h"
#include "graph/namespaces.h"
#include "scene/fileTypes.h"
#include "scene/instanceStatements.h"
#include "scene/nodeStatements.h"
#include "scene/nodeWriter.h"
#include "scene/plugText.h"
#include "scene/words.h"

namespace host::scene {

namespace {

using graph::Node;
using graph::NodeRef;

using LinkKey = std::tuple<const Node*, graph::PlugKey, const Node*, graph::PlugKey>;

LinkKey keyOf(const graph::Plug& source, const graph::Plug& destination) {
    return {source.node().get(), source.key(), destination.node().get(), destination.key()};
}

/// Multis whose elements have no meaning by their index: the host connects to the next free one.
bool isUnordered(const graph::Plug& destination) {
    if (!destination.isElement()) return false;
    const std::string& name = destination.attribute().shortName();
    for (const char* unordered : {"dsm", "dnsm", "gn", "st", "s", "r", "u", "p"}) {
        if (name == unordered) return true;
    }
    return false;
}

const std::string kLock = "\tlockNode -l 1 ;";

/// What a name in a statement means.
struct NamedNode {
    NodeRef node{};                       // null: leave the name
    std::optional<std::size_t> number{};  // of the path, if it has to be that one
};

std::vector<NamedNode> named(const std::vector<NodeRef>& nodes) {
    std::vector<NamedNode> result;
    result.reserve(nodes.size());
    for (const NodeRef& node : nodes)
        result.push_back({node, {}});
    return result;
}

/// Tells whether the names in a file's statements still mean what they did, and replaces those that do not.
class SavedNames {
  public:
    SavedNames(const graph::Graph& graph, const std::vector<SavedInstance>& instances) : graph_(graph) {
        for (const SavedInstance& instance : instances)
            instanced_.insert(instance.node.get());
    }

    graph::InstanceNumbers& numbers() { return numbers_; }

    bool stillMeans(std::string_view name, const NamedNode& meant) {
        if (meant.node == nullptr) return true;
        if (findFromRoot(graph_, name) != meant.node) return false;
        if (!graph_.hasInstances() || !graph::isInstanced(*meant.node)) return true;
        // A name without a path was enough for the file if the node had several places there already.
        if (name.front() != '|' && !wasInstanced(*meant.node)) return false;
        return !meant.number || instanceFromRoot(graph_, *meant.node, name, numbers_).number == *meant.number;
    }

    /// Replaces the names of nodes in a statement by their present names.
    /// @param nodes  what the names of the statement mean, in their order
    /// @return nothing if every name still means its node
    std::optional<std::string> renamed(std::string_view statement, const std::vector<NamedNode>& nodes) {
        std::string text;
        std::size_t copied = 0;
        std::size_t at = 0;
        WordScanner words(statement);
        words.next();
        for (Word word = words.next(); !word.isEnd() && at < nodes.size(); word = words.next()) {
            if (!word.isText()) continue;
            const NamedNode& meant = nodes[at++];
            const std::string name = word.text();
            const std::size_t dot = std::min(name.find('.'), name.size());
            if (stillMeans(std::string_view(name).substr(0, dot), meant)) continue;
            const auto begin = static_cast<std::size_t>(word.raw.data() - statement.data());
            text += statement.substr(copied, begin - copied);
            text +=
                inQuotes((meant.number.value_or(0) > 0 ? numbers_.fullPath({meant.node.get(), *meant.number})
                                                       : nodeText(graph_, *meant.node)) +
                         name.substr(dot));
            copied = begin + word.raw.size();
        }
        if (copied == 0) return std::nullopt;
        return text + std::string(statement.substr(copied));
    }

  private:
    bool wasInstanced(const graph::Node& node) const {
        for (const graph::Node* at = &node; at != nullptr; at = at->parent()) {
            if (instanced_.count(at) != 0) return true;
        }
        return false;
    }

    const graph::Graph& graph_;
    std::unordered_set<const graph::Node*> instanced_;  // in the file
    graph::InstanceNumbers numbers_;
};

/// The name of a file as a comment can hold it, which ends with its line.
std::string inComment(std::string name) {
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return name;
}

class Writer {
  public:
    Writer(graph::Graph& graph, const SceneDocument& document, UuidGiver& uuids, const SaveOptions& options)
        : graph_(graph),
          document_(document),
          text_(*document.text),
          uuids_(uuids),
          options_(options),
          edits_(text_),
          names_(graph, document.instances) {}

    TextEdits run() {
        if (options_.isRenamed) renameFile();
        if (graph_.changes() == document_.changes && !document_.isNew && document_.changedInfo.empty() &&
            document_.addedMentions.empty())
            return std::move(edits_);
        editInfo();
        for (const auto& [node, source] : document_.sources) {
            if (source->mesh() != nullptr) meshes_.emplace(source->mesh()->mesh.topologyPtr().get(), source);
        }
        areNamesChanged_ = graph_.nameVersion() != document_.nameVersion;
        findMoved();
        for (const SavedBlock& block : document_.blocks)
            editBlock(block);
        warnOfOldNames();
        editInstances();
        addNodes();
        editLinks();
        editMentions();
        addLinks();
        return std::move(edits_);
    }

  private:
    /// The comments that name the file.
    void renameFile() {
        const std::string name = inComment(fileNameOf(options_.path));
        const auto replaceAfter = [&](std::string_view mark, std::size_t from, std::size_t end) {
            const std::string_view bytes = text_.bytes;
            const std::size_t at = bytes.find(mark, from);
            if (at == std::string_view::npos || at + mark.size() > end) return;
            const std::size_t begin = at + mark.size();
            const std::size_t stop = std::min(bytes.find_first_of("\r\n", begin), bytes.size());
            edits_.replaceComment(begin, stop, name);
        };
        const bool isEmpty = text_.statements.empty();
        replaceAfter("//Name: ", 0, isEmpty ? text_.bytes.size() : text_.statements.front().begin);
        replaceAfter("// End of ", isEmpty ? 0 : text_.statements.back().end, text_.bytes.size());
    }

    /// The texts that the scene holds under keys.
    void editInfo() {
        if (document_.changedInfo.empty()) return;
        std::map<std::string, std::optional<std::string>> left = document_.changedInfo;
        std::int64_t last = headerEnd();
        const auto textOf = [this](const std::string& key, const std::string& value) {
            const bool isDoubleByte = text_.form.isDoubleByte;
            return "fileInfo " + inQuotes(key, isDoubleByte) + ' ' + inQuotes(value, isDoubleByte) + ';';
        };
        for (std::uint32_t k = 0; k < text_.statements.size(); ++k) {
            if (text_.statements[k].kind != StatementKind::FileInfo) continue;
            last = k;
            const auto [key, value] = readFileInfo(text_.statement(k), text_.form.isDoubleByte);
            const auto changed = document_.changedInfo.find(key);
            if (changed == document_.changedInfo.end()) continue;
            if (left.erase(key) == 0 || !changed->second) {
                edits_.removeStatement(k);
            } else if (*changed->second != value) {
                edits_.replaceStatement(k, textOf(key, *changed->second));
            }
        }
        std::string lines;
        for (const auto& [key, value] : left) {
            if (value) lines += textOf(key, *value) + text_.form.lineEnd;
        }
        edits_.insertAfter(last, lines);
    }

    /// A node cannot stand before its parent. Nodes that were moved below a later one follow it.
    void findMoved() {
        std::set<const Node*> known;
        for (const NodeRef& node : document_.givenNodes)
            known.insert(node.get());
        for (const SavedBlock& block : document_.blocks) {
            if (block.node == nullptr || !block.node->isAlive()) continue;
            const Node* parent = block.node->parent();
            if (known.count(block.node.get()) != 0) continue;
            if (parent == nullptr || known.count(parent) != 0) {
                known.insert(block.node.get());
            } else {
                moved_.insert(block.node.get());
            }
        }
    }

    /// Whether the words of a createNode statement still make its node.
    bool isHeadTrue(const SavedBlock& block, const NodeWords& words) const {
        // A name that the file has twice cannot be told from others any more.
        if (!block.name.empty() || graph::withoutRoot(words.name) != block.node->name()) return false;
        const Node* above = block.node->parent();
        if (words.parent.empty() || above == nullptr) return words.parent.empty() && above == nullptr;
        return findFromRoot(graph_, words.parent).get() == above;
    }

    void editHead(const SavedBlock& block) {
        if (text_.statements[block.first].kind != StatementKind::CreateNode) return;
        const std::optional<NodeWords> words = readCreateNode(text_.statement(block.first));
        if (!words || isHeadTrue(block, *words)) return;
        edits_.replaceStatement(block.first, createNodeText(graph_, *block.node, words->isShared));
        const std::string_view name = graph::withoutRoot(words->name);
        if (!name.empty() && graph_.nodesNamed(name).empty()) oldNames_.emplace(name);
    }

    /// Names of nodes in scripts and expressions are not replaced: only who wrote them knows which are meant.
    void warnOfOldNames() const {
        for (const SavedBlock& block : document_.blocks) {
            if (oldNames_.empty() || block.node == nullptr || !block.node->isAlive()) continue;
            const std::string& type = block.node->type().name();
            if (type != "expression" && type != "script" && type != "reference") continue;
            const std::string name = oldNameIn(block);
            if (name.empty()) continue;
            graph_.messages().warning(oldNameText(*block.node, name));
        }
    }

    std::string oldNameText(const Node& node, const std::string& name) const {
        return "The text of " + graph_.uniqueName(node) + " (" + node.type().name() + ") has the old name '" +
               name + "'. It was saved as it is.";
    }

    /// The first word of a node's statements that was the name of another node.
    std::string oldNameIn(const SavedBlock& block) const {
        const auto isPart = [](char c) {
            return c == '_' || c == ':' || std::isalnum(static_cast<unsigned char>(c)) != 0;
        };
        for (std::uint32_t k = block.first + 1; k < block.last; ++k) {
            const std::string_view text = text_.statement(k);
            for (std::size_t at = 0; at < text.size();) {
                std::size_t end = at;
                while (end < text.size() && isPart(text[end]))
                    ++end;
                if (end > at && oldNames_.count(text.substr(at, end - at)) != 0)
                    return std::string(text.substr(at, end - at));
                at = end + 1;
            }
        }
        return {};
    }

    void editBlock(const SavedBlock& block) {
        if (block.node == nullptr) return;
        lastBlock_ = std::max(lastBlock_, static_cast<std::int64_t>(block.last) - 1);
        Node& node = *block.node;
        const bool isFirst = written_.insert(&node).second;
        const bool isMoved = moved_.count(&node) != 0;
        if (!node.isAlive() || isMoved) {
            for (std::uint32_t k = block.first; k < block.last; ++k)
                edits_.removeStatement(k);
            return;
        }
        if (areNamesChanged_) editHead(block);
        if (!isFirst) return;
        BlockEdits edits = editsOf(node);
        for (auto& [index, by] : edits.replaced) {
            if (by.empty()) {
                edits_.removeStatement(index);
            } else {
                edits_.replaceStatement(index, std::move(by));
            }
        }
        edits_.insertAfter(static_cast<std::int64_t>(block.last) - 1, edits.added);
        if (isLockChanged(node)) editLock(block);
    }

    bool isLockChanged(const Node& node) const {
        const auto then = document_.locks.find(&node);
        return node.isLocked() != (then != document_.locks.end() && then->second);
    }

    /// Statements with the node's name are mentions.
    void editLock(const SavedBlock& block) {
        for (std::uint32_t k = block.first; k < block.last; ++k) {
            if (text_.statements[k].kind == StatementKind::LockNode) edits_.removeStatement(k);
        }
        if (block.node->isLocked())
            edits_.insertAfter(static_cast<std::int64_t>(block.last) - 1, kLock + text_.form.lineEnd);
    }

    BlockEdits editsOf(Node& node) {
        const auto found = document_.sources.find(&node);
        if (found != document_.sources.end()) return blockEdits(graph_, node, *found->second, meshes_);
        if (!node.hasChanges()) return {};
        SavedNode empty(document_.text, graph_);
        return blockEdits(graph_, node, empty, meshes_);
    }

    /// New nodes and moved ones, parents first, and then what changed in nodes that every scene has.
    void addNodes() {
        std::string lines;
        std::string given;
        std::set<const Node*> done;
        for (const NodeRef& node : graph_.nodes()) {
            if (!options_.only.empty() && options_.only.count(node.get()) == 0) continue;
            std::vector<Node*> ahead;
            for (Node* at = node.get(); at != nullptr && isToAdd(*at) && done.insert(at).second;
                 at = at->parent())
                ahead.push_back(at);
            for (; !ahead.empty(); ahead.pop_back())
                (isOwn(*ahead.back()) ? lines : given) += addedText(*ahead.back());
        }
        edits_.insertAfter(nodesEnd(), lines + given);
        // Numbers of instances are those of the order in which the file makes them.
        edits_.insertAfter(std::max(nodesEnd(), lastInstance_), newInstances());
    }

    /// Where new nodes go.
    std::int64_t nodesEnd() const { return lastBlock_ >= 0 ? lastBlock_ : headerEnd(); }

    /// Statements stay if they are all true, and stand behind their nodes.
    void editInstances() {
        const auto& instances = document_.instances;
        if (!instances.empty()) lastInstance_ = instances.back().statement;
        for (auto next = instances.begin(); next != instances.end();) {
            const std::uint32_t statement = next->statement;
            std::vector<NodeRef> nodes;
            bool areTrue = true;
            auto at = next;
            for (; at != instances.end() && at->statement == statement; ++at) {
                nodes.push_back(at->node);
                areTrue = areTrue && isInstance(*at->node, *at->parent) &&
                          moved_.count(at->node.get()) == 0 && moved_.count(at->parent.get()) == 0;
            }
            nodes.push_back(next->parent);
            if (areTrue) {
                for (; next != at; ++next)
                    presentInstances_.emplace(next->node.get(), next->parent.get());
                rewriteNames(statement, named(nodes));
            } else {
                edits_.removeStatement(statement);
                next = at;
            }
        }
    }

    bool isInstance(const Node& node, const Node& parent) const {
        return node.isAlive() && node.parent() != &parent && graph_.hasParent(node, &parent);
    }

    /// The instances that no statement of the file makes.
    std::string newInstances() const {
        std::string lines;
        if (!graph_.hasInstances()) return lines;
        const auto& only = options_.only;
        for (const NodeRef& node : graph_.nodes()) {
            for (const Node* parent : node->otherParents()) {
                const bool isWanted =
                    only.empty() || (only.count(node.get()) != 0 && only.count(parent) != 0);
                if (isWanted && presentInstances_.count({node.get(), parent}) == 0)
                    lines += addedParentText(graph_, *node, *parent) + text_.form.lineEnd;
            }
        }
        return lines;
    }

    /// Whether the node was there before the file was read. Such a node is written only if it was changed.
    bool isGiven(const Node& node) const {
        const auto& given = document_.givenNodes;
        return std::any_of(given.begin(), given.end(),
                           [&](const NodeRef& other) { return other.get() == &node; });
    }

    /// Of what was there before, a new scene names its cameras.
    bool isOwn(const Node& node) const { return !isGiven(node) || (document_.isNew && node.type().isDag()); }

    bool isToAdd(const Node& node) const {
        if (moved_.count(&node) != 0) return true;
        if (written_.count(&node) != 0) return false;
        return isOwn(node) || node.hasChanges() || node.isLocked();
    }

    std::string addedText(Node& node) {
        std::string text = addedStatements(node);
        if (!text.empty() && node.isLocked()) text += kLock + text_.form.lineEnd;
        return text;
    }

    std::string addedStatements(Node& node) {
        const auto source = document_.sources.find(&node);
        // What was imported keeps its statements, unless their numbers have other units than this file.
        const bool hasStatements =
            source != document_.sources.end() && source->second->text()->form.units == text_.form.units;
        if (hasStatements) return movedNodeText(graph_, node, *source->second, meshes_);
        if (!isOwn(node)) {
            const std::string statements = editsOf(node).added;
            if (statements.empty() && !node.isLocked()) return {};
            return "select -ne :" + node.name() + ';' + text_.form.lineEnd + statements;
        }
        return newNodeText(graph_, node, uuids_.obtain(node), text_.form, meshes_);
    }

    /// The last statement before the nodes; -1 if there is none.
    std::int64_t headerEnd() const {
        std::int64_t end = -1;
        for (const Statement& statement : text_.statements) {
            const StatementKind kind = statement.kind;
            if (kind != StatementKind::Requires && kind != StatementKind::CurrentUnit &&
                kind != StatementKind::FileInfo && kind != StatementKind::File)
                break;
            ++end;
        }
        return end;
    }

    void editLinks() {
        for (const SavedLink& link : document_.links) {
            lastLink_ = link.statement;
            const bool holds = link.destination.node()->isAlive() && link.source.node()->isAlive() &&
                               graph_.source(link.destination) == link.source;
            if (!holds) {
                edits_.removeStatement(link.statement);
                continue;
            }
            const std::optional<std::size_t> number = instanceOf(link);
            if (number && isLost(link, *number)) {
                edits_.removeStatement(link.statement);
                continue;
            }
            present_.insert(keyOf(link.source, link.destination));
            rewriteNames(link.statement, {{link.source.node(), number}, {link.destination.node(), {}}});
        }
    }

    /// The text in a connection's statement that names its source.
    std::string sourceName(const SavedLink& link) const {
        WordScanner words(text_.statement(link.statement));
        Word word = words.next();
        while (!word.isText())
            word = words.next();
        return word.text();
    }

    /// The number of the path of a connection's source, where the statement tells it by the path alone.
    std::optional<std::size_t> instanceOf(const SavedLink& link) const {
        const graph::Plug& source = link.source;
        if (!areNamesChanged_ || !isPerInstance(source) || sourceName(link).back() == ']')
            return std::nullopt;
        return static_cast<std::size_t>(source.logicalIndex());
    }

    /// Whether no path can tell a connection's source any more. Then a new statement gives its number.
    bool isLost(const SavedLink& link, std::size_t number) {
        if (number == 0) return false;
        const std::string name = sourceName(link);
        const NodeRef& node = link.source.node();
        return !names_.stillMeans(std::string_view(name).substr(0, name.find('.')), {node, number}) &&
               names_.numbers().fullPath({node.get(), number}).empty();
    }

    void rewriteNames(std::uint32_t statement, const std::vector<NamedNode>& nodes) {
        if (!areNamesChanged_) return;
        if (auto by = names_.renamed(text_.statement(statement), nodes))
            edits_.replaceStatement(statement, std::move(*by));
    }

    void editMentions() {
        for (const SavedMention& mention : document_.mentions) {
            const bool isGone =
                std::any_of(mention.nodes.begin(), mention.nodes.end(),
                            [](const NodeRef& node) { return node != nullptr && !node->isAlive(); });
            const bool isLock = text_.statements[mention.statement].kind == StatementKind::LockNode;
            if (isLock && std::any_of(mention.nodes.begin(), mention.nodes.end(),
                                      [&](const NodeRef& node) { return isOutdated(node); })) {
                editLocks(mention);
            } else if (isGone) {
                edits_.removeStatement(mention.statement);
            } else {
                rewriteNames(mention.statement, named(mention.nodes));
            }
        }
    }

    /// Whether what a file says of a node's lock does not hold any more. The node's block says it instead.
    bool isOutdated(const NodeRef& node) const {
        return node != nullptr && (!node->isAlive() || isLockChanged(*node));
    }

    /// Leaves out of a statement about locks the nodes that it is wrong about.
    void editLocks(const SavedMention& mention) {
        std::string names;
        for (const NodeRef& node : mention.nodes) {
            if (node != nullptr && !isOutdated(node)) names += ' ' + inQuotes(nodeText(graph_, *node));
        }
        if (names.empty()) return edits_.removeStatement(mention.statement);
        const bool locks = readLock(text_.statement(mention.statement)).value_or(true);
        edits_.replaceStatement(mention.statement,
                                std::string("lockNode -l ") + (locks ? '1' : '0') + names + ';');
    }

    /// Whether a connection belongs into the file.
    bool isWanted(const Node& source, const Node& destination) const {
        const auto& only = options_.only;
        if (only.empty()) return true;
        const bool hasSource = only.count(&source) != 0;
        const bool hasDestination = only.count(&destination) != 0;
        return (hasSource || hasDestination) && (hasSource || isDefaultNode(source)) &&
               (hasDestination || isDefaultNode(destination));
    }

    static bool isPerInstance(const graph::Plug& source) {
        return source.isElement() && (source.attribute().isOutput() || isInstanceGroups(source.attribute()));
    }

    /// The source of a new connection; nothing if what is saved has no such source. A part of a scene counts
    /// its instances anew, so there the path says which one is meant.
    std::optional<std::string> newSourceText(const graph::Plug& source) {
        const auto& only = options_.only;
        if (only.empty() || !isPerInstance(source) || !graph::isInstanced(*source.node()))
            return plugText(graph_, source);
        const graph::Instance instance{source.node().get(), static_cast<std::size_t>(source.logicalIndex())};
        const std::vector<graph::Instance> path = names_.numbers().upwards(instance);
        const bool isSaved = std::all_of(path.begin(), path.end(),
                                         [&](const graph::Instance& at) { return only.count(at.node) != 0; });
        if (path.empty() || !isSaved) return std::nullopt;
        return names_.numbers().fullPath(instance) + '.' + plugPath(source.array().key());
    }

    void addLinks() {
        for (const graph::Connection& given : document_.givenLinks)
            present_.insert(keyOf(given.source, given.destination));
        std::string lines;
        for (const NodeRef& node : graph_.nodes()) {
            for (const auto& [key, link] : node->incoming()) {
                const graph::Plug source(link.node->ref(), link.key);
                const graph::Plug destination(node, key);
                if (present_.count(keyOf(source, destination)) != 0 || !isWanted(*link.node, *node)) continue;
                const std::optional<std::string> from = newSourceText(source);
                if (!from) continue;
                const bool isNext = isUnordered(destination);
                lines += "connectAttr " + inQuotes(*from) + ' ' +
                         inQuotes(plugText(graph_, isNext ? destination.array() : destination)) +
                         (isNext ? " -na;" : ";") + text_.form.lineEnd;
            }
        }
        for (const AddedMention& mention : document_.addedMentions) {
            const auto& nodes = mention.nodes;
            const bool isGone = std::any_of(nodes.begin(), nodes.end(), [](const NodeRef& node) {
                return node != nullptr && !node->isAlive();
            });
            if (!isGone)
                lines +=
                    names_.renamed(mention.text, named(nodes)).value_or(mention.text) + text_.form.lineEnd;
        }
        edits_.insertAfter(std::max({lastLink_, lastInstance_, nodesEnd()}), lines);
    }

    graph::Graph& graph_;
    const SceneDocument& document_;
    const SceneText& text_;
    UuidGiver& uuids_;
    const SaveOptions& options_;
    TextEdits edits_;
    MeshSources meshes_;
    bool areNamesChanged_ = false;
    std::set<const Node*> moved_;
    std::set<const Node*> written_;
    std::set<std::string, std::less<>> oldNames_;  // that no node has any more
    std::set<LinkKey> present_;
    SavedNames names_;
    std::set<std::pair<const Node*, const Node*>> presentInstances_;  // nodes with their parents
    std::int64_t lastBlock_ = -1;
    std::int64_t lastInstance_ = -1;
    std::int64_t lastLink_ = -1;
};

}  // namespace

TextEdits sceneEdits(graph::Graph& graph, const SceneDocument& document, UuidGiver& uuids,
                     const SaveOptions& options) {
    return Writer(graph, document, uuids, options).run();
}

std::string writeScene(graph::Graph& graph, const SceneDocument& document, UuidGiver& uuids,
                       const SaveOptions& options) {
    TextEdits edits = sceneEdits(graph, document, uuids, options);
    const std::string page = "The scene is in code page " + std::to_string(document.text->form.codePage);
    if (const std::string line = edits.foreignLine(); !line.empty()) {
        return page + ", and new text with other letters than ASCII would not fit it: " + line +
               " Nothing was saved. Use plain letters, or save the scene in UTF-8 in Maya first.";
    }
    if (!edits.fit())
        return page + ", and a new text has bytes that are no letters in it. Nothing was saved.";
    return geometry::writeFile(
        options.path, [&](std::ostream& stream) { edits.write(stream); }, options.settle);
}

}  // namespace host::scene
