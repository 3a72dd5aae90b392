#include "scene/savedNode.h"

#include <algorithm>

#include "graph/names.h"
#include "scene/addStatements.h"
#include "scene/dataText.h"
#include "scene/meshText.h"
#include "scene/nodeStatements.h"
#include "scene/words.h"

namespace host::scene {

namespace {

bool isAliasList(const SetHead& head) {
    return head.root() == "aal" || head.root() == "attributeAliasList";
}

/// The kind of a value whose attribute is not known, from the value itself.
graph::AttributeSpec keptSpec(const SetHead& head) {
    const std::string name(head.path);
    const auto spec = [&](graph::ValueKind kind) { return graph::number(name, name, kind).kept(); };
    if (head.type == "string") return graph::typed(name, name, "string").kept();
    WordScanner words(head.values);
    const Word word = words.next();
    if (head.type.empty() && word.kind == Word::Kind::Bare && words.next().isEnd()) {
        if (word.raw == "yes" || word.raw == "no") return spec(graph::ValueKind::Bool);
        NumberScanner number(word.raw);
        if (number.next() && number.atEnd()) return spec(graph::ValueKind::Double);
    }
    return graph::typed(name, name, {}).kept();
}

/// The attribute of a statement about something that this host does not have.
const graph::Attribute& obtainKept(graph::NodeLoader& loader, const SetHead& head) {
    const graph::Attribute* present = loader.node().findKept(head.path);
    return present != nullptr ? *present : loader.addAttribute(keptSpec(head));
}

}  // namespace

const graph::Attribute& keptAttribute(graph::NodeLoader& loader, std::string_view name) {
    if (const graph::Attribute* present = loader.node().findKept(name)) return *present;
    const std::string text(name);
    return loader.addAttribute(graph::typed(text, text, {}).kept());
}

void SavedNode::introduce(graph::NodeLoader& loader) {
    introduceAttributes(loader);
    for (const auto& [first, last] : ranges_) {
        for (std::uint32_t k = first; k < last; ++k) {
            const StatementKind kind = text_->statements[k].kind;
            if (kind == StatementKind::SetAttr) {
                introduceValue(loader, k);
            } else if (kind == StatementKind::Rename) {
                loader.setUuid(readUuid(text_->statement(k)));
            }
        }
    }
    std::stable_sort(
        assigned_.begin(), assigned_.end(),
        [](const AssignedStatement& a, const AssignedStatement& b) { return a.ordinal < b.ordinal; });
}

void SavedNode::introduceAttributes(graph::NodeLoader& loader) {
    std::vector<AddedAttribute> added;
    for (const auto& [first, last] : ranges_) {
        for (std::uint32_t k = first; k < last; ++k) {
            if (text_->statements[k].kind != StatementKind::AddAttr) continue;
            if (auto attribute = readAddAttr(text_->statement(k), text_->form.units))
                added.push_back(std::move(*attribute));
        }
    }
    for (graph::AttributeSpec& spec : assembled(std::move(added))) {
        // Releases differ in what they have from the start and what they add. The alias list is the node's.
        const bool isKnown = loader.node().findAttribute(spec.longName) != nullptr || spec.shortName == "aal";
        if (!isKnown) loader.addAttribute(std::move(spec));
    }
}

void SavedNode::introduceValue(graph::NodeLoader& loader, std::uint32_t statement) {
    const auto head = readSetHead(text_->statement(statement), text_->form.isDoubleByte);
    if (!head) return;
    graph::Node& node = loader.node();
    if (isAliasList(*head)) return introduceAliases(loader, *head);
    if (node.isA("mesh") && isMeshPart(head->root())) {
        assigned_.push_back({node.findAttribute("inMesh")->ordinal(), statement});
        return;
    }
    if (node.isA("mesh") && isPalette(head->path)) {
        assigned_.push_back({node.findAttribute("colorSet")->ordinal(), statement});
        return;
    }
    const std::optional<SetTarget> target = findTarget(node, head->path);
    const graph::PlugKey key = target ? target->key : graph::PlugKey{&obtainKept(loader, *head), {}, 0};
    assigned_.push_back({key.attribute->path().front()->ordinal(), statement});
    if (!head->hasStates()) return;
    graph::PlugState state = node.state(key);
    state.isLocked = head->isLocked.value_or(state.isLocked);
    state.isKeyable = head->isKeyable.value_or(state.isKeyable);
    state.isInChannelBox = head->isInChannelBox.value_or(state.isInChannelBox);
    loader.setState(key, state);
}

/// `{"alias","attribute", ...}`, or the same without marks and with the number of words first.
void SavedNode::introduceAliases(graph::NodeLoader& loader, const SetHead& head) {
    WordScanner words(head.values);
    std::vector<std::string> texts;
    for (Word word = words.next(); !word.isEnd(); word = words.next()) {
        if (word.isText()) texts.push_back(word.text());
    }
    for (std::size_t k = 0; k + 1 < texts.size(); k += 2) {
        const graph::PlugMatch match = graph::findOwnPlug(loader.node().ref(), texts[k + 1]);
        if (match.ok && graph::isLegalName(texts[k])) loader.setAlias(texts[k], match.plug.key());
    }
}

std::vector<AssignedStatement>::const_iterator SavedNode::firstOf(int ordinal) const {
    return std::lower_bound(
        assigned_.begin(), assigned_.end(), ordinal,
        [](const AssignedStatement& entry, int wanted) { return entry.ordinal < wanted; });
}

bool SavedNode::hasValues(int ordinal) const {
    const auto first = firstOf(ordinal);
    return first != assigned_.end() && first->ordinal == ordinal;
}

std::vector<std::uint32_t> SavedNode::statementsOf(int ordinal) const {
    std::vector<std::uint32_t> statements;
    for (auto at = firstOf(ordinal); at != assigned_.end() && at->ordinal == ordinal; ++at)
        statements.push_back(at->statement);
    return statements;
}

void SavedNode::load(graph::NodeLoader& loader, int ordinal) {
    graph::Node& node = loader.node();
    if (node.isA("mesh") && node.findAttribute("inMesh")->ordinal() == ordinal) {
        if (const nodes::MeshPtr& mesh = readOwnMesh(node))
            loader.setData({node.findAttribute("inMesh"), {}, 0}, mesh);
        return;
    }
    if (node.isA("mesh") && node.findAttribute("colorSet")->ordinal() == ordinal) loadColors(loader, ordinal);
    for (const std::uint32_t statement : statementsOf(ordinal)) {
        const auto head = readSetHead(text_->statement(statement), text_->form.isDoubleByte);
        if (!head->hasValues()) continue;
        const auto target = findTarget(node, head->path);
        if (!target) continue;
        if (const auto values = readValues(*head, *target, text_->form)) {
            applyValues(loader, *target, *values);
        } else if (target->key.attribute->isKept()) {
            loader.setData(target->key,
                           std::make_shared<KeptData>(std::string(head->type), std::string(head->values)));
        }
    }
}

const nodes::MeshPtr& SavedNode::readOwnMesh(const graph::Node& node) {
    if (isMeshRead_) return mesh_;
    isMeshRead_ = true;
    MeshTextResult result = readMesh(*text_, statementsOf(node.findAttribute("inMesh")->ordinal()));
    if (!result.error.empty())
        graph_.messages().warning(result.error + " The mesh is kept, but it cannot be read.");
    return mesh_ = std::move(result.mesh);
}

/// Only a mesh that the shape holds itself has corners with colours.
void SavedNode::loadColors(graph::NodeLoader& loader, int ordinal) {
    const graph::Node& node = loader.node();
    const std::vector<std::uint32_t> statements = statementsOf(ordinal);
    const bool hasPalettes = std::any_of(statements.begin(), statements.end(), [&](std::uint32_t statement) {
        return isPalette(readSetHead(text_->statement(statement), text_->form.isDoubleByte)->path);
    });
    if (!hasPalettes || readOwnMesh(node) == nullptr) return;
    const geometry::Topology& topology = mesh_->mesh.topology();
    palettes_ =
        readPalettes(*text_, statements, statementsOf(node.findAttribute("inMesh")->ordinal()), topology);
    for (const auto& [set, palette] : palettes_) {
        std::vector<nodes::Color> colors;
        if (!palette.corners.empty()) colors = vertexColors(palette, topology);
        loader.setData(colorKey(node, set), std::make_shared<nodes::VertexColorData>(std::move(colors)));
    }
}

graph::PlugKey colorKey(const graph::Node& mesh, int set) {
    const graph::Attribute* colors = mesh.findAttribute("colorSet")->child("vertexColors");
    return {colors, {set}, 1};
}

std::string SavedNode::facesText(const CornerColors& corners) const {
    std::string result;
    visitStatements([&](std::uint32_t index) {
        if (text_->statements[index].kind != StatementKind::SetAttr) return;
        const std::string_view statement = text_->statement(index);
        const auto head = readSetHead(statement, text_->form.isDoubleByte);
        if (!head || !isMeshPart(head->root()) || isMeshPoints(head->root())) return;
        const std::string& lineEnd = text_->form.lineEnd;
        result += '\t';
        if (isMeshFaces(head->root()) && head->hasValues()) {
            result += recolored(statement, *head, mesh_->mesh.topology(), corners, false, lineEnd);
        } else {
            result += statement;
        }
        result += lineEnd;
    });
    return result;
}

}  // namespace host::scene
