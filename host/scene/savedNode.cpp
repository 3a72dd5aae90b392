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
    if (node.isA("mesh") && node.findAttribute("inMesh")->ordinal() == ordinal)
        return loadMesh(loader, ordinal);
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

void SavedNode::loadMesh(graph::NodeLoader& loader, int ordinal) {
    MeshTextResult result = readMesh(*text_, statementsOf(ordinal));
    if (!result.error.empty())
        graph_.messages().warning(result.error + " The mesh is kept, but it cannot be read.");
    if (result.mesh == nullptr) return;
    mesh_ = result.mesh;
    loader.setData({loader.node().findAttribute("inMesh"), {}, 0}, std::move(result.mesh));
}

std::string SavedNode::facesText() const {
    std::string result;
    visitStatements([&](std::uint32_t index) {
        if (text_->statements[index].kind != StatementKind::SetAttr) return;
        const auto head = readSetHead(text_->statement(index), text_->form.isDoubleByte);
        if (!head || !isMeshPart(head->root()) || isMeshPoints(head->root())) return;
        result.append("\t").append(text_->statement(index)).append(text_->form.lineEnd);
    });
    return result;
}

}  // namespace host::scene
