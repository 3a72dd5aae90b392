#include "scene/nodeWriter.h"

#include <algorithm>
#include <optional>
#include <set>
#include <vector>

#include "graph/names.h"
#include "nodes/defaultCameras.h"
#include "scene/addStatements.h"
#include "scene/changedColors.h"
#include "scene/dataText.h"
#include "scene/meshText.h"
#include "scene/nodeStatements.h"
#include "scene/plugText.h"
#include "scene/words.h"

namespace host::scene {

namespace {

/// The aliases of a node as one statement; empty if it has none.
std::string aliasText(graph::Node& node) {
    std::string text;
    for (const auto& [alias, key] : node.aliases()) {
        text += text.empty() ? "{" : ",";
        text += inQuotes(alias) + ',' + inQuotes(graph::Plug(node.ref(), key).attributePath());
    }
    return text.empty() ? text : "setAttr \".aal\" -type \"attributeAlias\" " + text + "} ;";
}

/// Several statements in place of one: each but the first on a line of its own.
std::string joined(const std::vector<std::string>& statements, const std::string& lineEnd) {
    std::string text;
    for (const std::string& statement : statements) {
        if (!text.empty()) text += lineEnd + '\t';
        text += statement;
    }
    return text;
}

/// The statements of a whole mesh.
std::string meshText(const geometry::Mesh& mesh, const CornerColors& corners, const MeshSources& meshes,
                     const std::string& lineEnd) {
    const auto found = meshes.find(mesh.topologyPtr().get());
    return pointsText(mesh, lineEnd) +
           (found != meshes.end() ? found->second->facesText(corners) : facesText(mesh, corners, lineEnd));
}

/// The mesh that a shape holds itself; null if a connection gives it one, and for any other node.
nodes::MeshPtr ownMesh(const graph::Node& node) {
    const graph::PlugKey key{node.isA("mesh") ? node.findAttribute("inMesh") : nullptr, {}, 0};
    if (key.attribute == nullptr || node.incoming().count(key) != 0) return nullptr;
    return graph::dataAs<nodes::MeshData>(node.storedData(key));
}

/// Works out the edits of one node.
class BlockEditor {
  public:
    BlockEditor(graph::Graph& graph, graph::Node& node, const SavedNode& source, const MeshSources& meshes)
        : graph_(graph),
          meshes_(meshes),
          node_(node),
          source_(source),
          text_(*source.text()),
          fresh_(graph, node, text_.form) {}

    BlockEdits run() {
        if (!node_.hasChanges()) return {};
        editDeclarations();
        if (node_.isChanged(meshOrdinal()) || node_.isChanged(colorOrdinal())) prepareColors();
        // Backwards: of several statements about a plug, the last one is the one that counts.
        const std::vector<AssignedStatement>& assigned = source_.assigned();
        for (auto entry = assigned.rbegin(); entry != assigned.rend(); ++entry) {
            if (node_.isChanged(entry->ordinal) || (colors_ && entry->ordinal == meshOrdinal()))
                editStatement(*entry);
        }
        for (const graph::Attribute* attribute : node_.attributes()) {
            if (attribute == nullptr || !node_.isChanged(attribute->ordinal())) continue;
            if (attribute->ordinal() == meshOrdinal()) {
                if (hasOtherFaces_) addMesh();
            } else {
                edits_.added += fresh_.text(*attribute);
            }
        }
        if (colors_) edits_.added += colors_->addedText(text_.form.lineEnd);
        if (node_.hasChangedAliases() && !hasAliasStatement_) {
            if (const std::string text = aliasText(node_); !text.empty())
                edits_.added += '\t' + text + text_.form.lineEnd;
        }
        return std::move(edits_);
    }

  private:
    int meshOrdinal() const { return node_.isA("mesh") ? node_.findAttribute("inMesh")->ordinal() : -1; }
    int colorOrdinal() const { return node_.isA("mesh") ? node_.findAttribute("colorSet")->ordinal() : -1; }

    /// With other faces, all statements of the old mesh go, with its colours.
    void prepareColors() {
        const nodes::MeshPtr now = ownMesh(node_);
        const nodes::MeshPtr& then = source_.mesh();
        const bool isSameTopology =
            now != nullptr && then != nullptr && now->mesh.topologyPtr() == then->mesh.topologyPtr();
        hasOtherFaces_ = node_.isChanged(meshOrdinal()) && now != then && !isSameTopology;
        // A shape that has a history now still has the statements of its mesh.
        colors_.emplace(graph_, node_, now != nullptr || hasOtherFaces_ ? now : then,
                        hasOtherFaces_ ? nullptr : &source_);
        colors_->cover(fresh_);
    }

    /// Declarations of attributes that are gone go too. Attributes that are new are declared.
    void editDeclarations() {
        std::set<std::string> declared;
        source_.visitStatements([&](std::uint32_t index) {
            const std::string_view statement = text_.statement(index);
            if (text_.statements[index].kind == StatementKind::AddAttr) {
                const auto added = readAddAttr(statement, text_.form.units);
                if (!added) return;
                declared.insert(added->spec.longName);
                const bool isAliasList = added->spec.shortName == "aal";
                if (!isAliasList && node_.findAttribute(added->spec.longName) == nullptr)
                    edits_.replaced[index] = {};
            } else if (text_.statements[index].kind == StatementKind::Rename) {
                if (readUuid(statement) != node_.uuid())
                    edits_.replaced[index] = "rename -uid " + inQuotes(node_.uuid()) + ';';
            } else if (text_.statements[index].kind == StatementKind::SetAttr) {
                const auto head = readSetHead(statement, text_.form.isDoubleByte);
                if (!head || (head->root() != "aal" && head->root() != "attributeAliasList")) return;
                hasAliasStatement_ = true;
                if (node_.hasChangedAliases()) edits_.replaced[index] = aliasText(node_);
            }
        });
        for (const graph::Attribute* attribute : node_.attributes()) {
            if (attribute != nullptr && attribute->isDynamic() && declared.count(attribute->longName()) == 0)
                edits_.added += addAttrText(*attribute, text_.form.units, text_.form.lineEnd);
        }
    }

    void editStatement(const AssignedStatement& entry) {
        const auto head = readSetHead(text_.statement(entry.statement), text_.form.isDoubleByte);
        if (entry.ordinal == meshOrdinal()) return editMeshStatement(entry.statement, *head);
        if (entry.ordinal == colorOrdinal() && isPalette(head->path)) {
            if (hasOtherFaces_ || !colors_->keepsPalette(paletteSet(head->path)))
                edits_.replaced[entry.statement] = {};
            return;
        }
        const auto target = findTarget(node_, head->path);
        if (!target) {
            // The attribute was deleted.
            edits_.replaced[entry.statement] = {};
            return;
        }
        if (head->hasStates()) fresh_.coverState(target->key);
        const bool isStateSame = !head->hasStates() || holdsStates(*head, target->key);
        if (!head->hasValues()) {
            if (!isStateSame) replace(entry.statement, *target, {head->path.begin(), head->path.end()}, {});
            return;
        }
        const auto values = readValues(*head, *target, text_.form);
        const auto isSetLater = [this](const graph::PlugKey& key) { return fresh_.isCovered(key); };
        const bool isValueSame = values ? holdsValues(node_, *target, *values, isSetLater)
                                        : isSetLater(target->key) || holdsKept(*head, *target);
        fresh_.cover(*target);
        if (isValueSame && isStateSame) return;
        replace(entry.statement, *target, std::string(head->path),
                valueTexts(node_, *target, head->path, text_.form));
    }

    bool holdsStates(const SetHead& head, const graph::PlugKey& key) const {
        const graph::PlugState state = node_.state(key);
        return head.isLocked.value_or(state.isLocked) == state.isLocked &&
               head.isKeyable.value_or(state.isKeyable) == state.isKeyable &&
               head.isInChannelBox.value_or(state.isInChannelBox) == state.isInChannelBox;
    }

    /// A value that was not read is there as long as nobody wrote another.
    bool holdsKept(const SetHead& head, const SetTarget& target) const {
        const graph::DataPtr data = node_.storedData(target.key);
        const auto* kept = dynamic_cast<const KeptData*>(data.get());
        return data == nullptr || (kept != nullptr && kept->text == head.values);
    }

    void replace(std::uint32_t statement, const SetTarget& target, const std::string& path,
                 const std::vector<std::string>& values) {
        const std::string flags = stateFlags(*target.key.attribute, node_.state(target.key));
        std::vector<std::string> statements;
        statements.reserve(values.size() + 1);
        for (const std::string& value : values)
            statements.emplace_back("setAttr ").append(flags).append(value).append(";");
        if (statements.empty() && !flags.empty())
            statements.push_back("setAttr " + flags + "\"." + path + "\";");
        edits_.replaced[statement] = joined(statements, text_.form.lineEnd);
    }

    /// Statements of points that did not move stay, and those of faces whose colours are the same.
    void editMeshStatement(std::uint32_t statement, const SetHead& head) {
        if (hasOtherFaces_) {
            edits_.replaced[statement] = {};
            return;
        }
        const nodes::MeshPtr& then = source_.mesh();
        if (then == nullptr) return;
        if (isMeshFaces(head.root()) && head.hasValues()) {
            const std::string_view old = text_.statement(statement);
            std::string text =
                recolored(old, head, then->mesh.topology(), colors_->corners(), true, text_.form.lineEnd);
            if (text != old) edits_.replaced[statement] = std::move(text);
            return;
        }
        const nodes::MeshPtr now = ownMesh(node_);
        if (now == nullptr) return;
        if (auto text = movedPointsText(now->mesh, then->mesh, head.path)) edits_.replaced[statement] = *text;
    }

    void addMesh() {
        if (const nodes::MeshPtr now = ownMesh(node_))
            edits_.added += meshText(now->mesh, colors_->corners(), meshes_, text_.form.lineEnd);
    }

    graph::Graph& graph_;
    const MeshSources& meshes_;
    graph::Node& node_;
    const SavedNode& source_;
    const SceneText& text_;
    NewValues fresh_;
    BlockEdits edits_{};
    bool hasAliasStatement_ = false;
    bool hasOtherFaces_ = false;
    std::optional<ChangedColors> colors_{};  // of a mesh that was changed
};

}  // namespace

BlockEdits blockEdits(graph::Graph& graph, graph::Node& node, const SavedNode& source,
                      const MeshSources& meshes) {
    return BlockEditor(graph, node, source, meshes).run();
}

std::string movedNodeText(graph::Graph& graph, graph::Node& node, const SavedNode& source,
                          const MeshSources& meshes) {
    const SceneText& from = *source.text();
    std::string text = createNodeText(graph, node, nodes::isDefaultCamera(node)) + from.form.lineEnd;
    const BlockEdits edits = blockEdits(graph, node, source, meshes);
    source.visitStatements([&](std::uint32_t index) {
        // The writer says whether the node is locked.
        if (from.statements[index].kind == StatementKind::LockNode) return;
        const auto found = edits.replaced.find(index);
        const std::string statement =
            found != edits.replaced.end() ? found->second : std::string(from.statement(index));
        if (!statement.empty()) text += '\t' + statement + from.form.lineEnd;
    });
    return text + edits.added;
}

std::string createNodeText(const graph::Graph& graph, const graph::Node& node, bool isShared) {
    std::string text = "createNode " + node.type().name();
    if (isShared) text += " -s";
    text += " -n " + inQuotes(node.name());
    if (node.parent() != nullptr) text += " -p " + inQuotes(nodeText(graph, *node.parent()));
    return text + ';';
}

std::string newNodeText(graph::Graph& graph, graph::Node& node, const std::string& uuid, const TextForm& form,
                        const MeshSources& meshes) {
    std::string text = createNodeText(graph, node, nodes::isDefaultCamera(node)) + form.lineEnd;
    text += "\trename -uid " + inQuotes(uuid) + ';' + form.lineEnd;
    if (node.aliases().size() > 0)
        text += "\taddAttr -ci true -h true -sn \"aal\" -ln \"attributeAliasList\" -dt \"attributeAlias\";" +
                form.lineEnd;
    for (const graph::Attribute* attribute : node.attributes()) {
        if (attribute != nullptr && attribute->isDynamic())
            text += addAttrText(*attribute, form.units, form.lineEnd);
    }
    NewValues values(graph, node, form);
    const nodes::MeshPtr mesh = ownMesh(node);
    const ChangedColors colors(graph, node, mesh, nullptr);
    colors.cover(values);
    for (const graph::Attribute* attribute : node.attributes()) {
        if (attribute != nullptr && attribute->longName() != "inMesh") text += values.text(*attribute);
    }
    text += colors.addedText(form.lineEnd);
    if (mesh != nullptr) text += meshText(mesh->mesh, colors.corners(), meshes, form.lineEnd);
    if (const std::string aliases = aliasText(node); !aliases.empty()) text += '\t' + aliases + form.lineEnd;
    return text;
}

}  // namespace host::scene
