#include "graph/sceneDump.h"

#include <utility>
#include <vector>

#include "graph/graph.h"
#include "graph/slot.h"
#include "graph/valueText.h"

namespace host::graph {

namespace {

std::string described(double value) {
    std::string text;
    appendText(text, value);
    return text;
}

std::string described(const Data& data) {
    std::string text = ' ' + std::string(data.typeName());
    data.describe(text);
    return text;
}

std::string indexed(const std::string& path, int index) {
    return path + '[' + std::to_string(index) + ']';
}

/// Writes what a slot and everything below it holds.
class SlotWriter {
  public:
    SlotWriter(std::string prefix, std::string& text) : prefix_(std::move(prefix)), text_(text) {}

    void write(const Attribute& attribute, const Slot& slot, const std::string& path) {
        if (const auto* number = std::get_if<double>(&slot.content)) {
            line(path, described(*number));
        } else if (const auto* data = std::get_if<DataPtr>(&slot.content)) {
            line(path, *data != nullptr ? described(**data) : " null");
        } else if (const auto* numbers = std::get_if<std::unique_ptr<NumberMulti>>(&slot.content)) {
            writeNumbers(**numbers, path);
        } else if (const auto* children = std::get_if<std::unique_ptr<Slot::Children>>(&slot.content)) {
            for (const auto& child : attribute.children()) {
                write(*child, (**children)[static_cast<std::size_t>(child->ordinal())],
                      path + '.' + child->longName());
            }
        } else if (const auto* multi = std::get_if<std::unique_ptr<ElementMulti>>(&slot.content)) {
            for (const auto& [index, element] : (**multi).elements) {
                line(indexed(path, index), " exists");
                write(attribute, *element, indexed(path, index));
            }
        }
    }

  private:
    void line(const std::string& path, const std::string& value) {
        text_ += prefix_ + path + " =" + value + '\n';
    }

    void writeNumbers(const NumberMulti& numbers, const std::string& path) {
        for (const int index : numbers.indices()) {
            std::string value;
            appendNumbers(value, numbers.find(index), static_cast<std::size_t>(numbers.width()));
            line(indexed(path, index), value);
        }
    }

    std::string prefix_;
    std::string& text_;
};

std::string plugText(const Graph& graph, const Node& node, const PlugKey& key) {
    return graph.uniqueName(node) + '.' + Plug(const_cast<Node&>(node).ref(), key).fullAttributePath(true);
}

bool isSame(const PlugState& a, const PlugState& b) {
    return a.isLocked == b.isLocked && a.isKeyable == b.isKeyable && a.isInChannelBox == b.isInChannelBox;
}

void writeStates(const Graph& graph, const Node& node, std::string& text) {
    for (const auto& [key, state] : node.states()) {
        PlugState usual;
        usual.isKeyable = key.attribute->spec().isKeyable;
        if (isSame(state, usual)) continue;
        text += "state " + plugText(graph, node, key) + (state.isLocked ? " locked" : "") +
                (state.isKeyable ? " keyable" : "") + (state.isInChannelBox ? " channelBox" : "") + '\n';
    }
}

void writeNode(const Graph& graph, Node& node, std::string& text) {
    const std::string path = graph.uniqueName(node);
    text += "node " + node.type().name() + ' ' + path + '\n';
    for (const Node* child : node.children())
        text += "child " + path + ' ' + child->name() + '\n';
    for (const Node* parent : node.otherParents())
        text += "instance " + path + ' ' + graph.uniqueName(*parent) + '\n';
    const auto attributes = node.attributes();
    for (const Attribute* attribute : attributes) {
        if (attribute == nullptr) continue;
        if (attribute->isDynamic())
            text += "attribute " + path + '.' + attribute->longName() + ' ' + attribute->shortName() + '\n';
        const auto ordinal = static_cast<std::size_t>(attribute->ordinal());
        if (ordinal < node.slots().size())
            SlotWriter(path + '.', text).write(*attribute, node.slots()[ordinal], attribute->longName());
    }
    writeStates(graph, node, text);
    for (const auto& [alias, key] : node.aliases())
        text += "alias " + alias + ' ' + plugText(graph, node, key) + '\n';
    for (const auto& [key, links] : node.outgoing()) {
        std::string line = "feeds " + plugText(graph, node, key);
        for (const Link& link : links)
            line += ' ' + plugText(graph, *link.node, link.key);
        text += line + '\n';
    }
    for (const auto& [key, link] : node.incoming())
        text += "connection " + plugText(graph, *link.node, link.key) + " -> " + plugText(graph, node, key) +
                '\n';
}

}  // namespace

std::string sceneDump(const Graph& graph) {
    std::string text;
    for (const Node* root : graph.roots())
        text += "root " + root->name() + '\n';
    for (const NodeRef& node : graph.nodes())
        writeNode(graph, *node, text);
    for (const SelectionItem& item : graph.selection().items()) {
        for (const std::string& name : itemNames(graph, item, true))
            text += "selected " + name + '\n';
    }
    return text;
}

}  // namespace host::graph
