#include "support/sceneDump.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <sstream>
#include <vector>

#include "graph/data.h"
#include "graph/numberMulti.h"
#include "graph/slot.h"
#include "nodes/meshColors.h"
#include "nodes/meshData.h"

namespace delven::test {

namespace {

using namespace host::graph;

std::string numberText(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

template <typename Numbers>
void appendNumbers(std::string& text, const Numbers& numbers) {
    for (const auto number : numbers)
        text += ' ' + numberText(static_cast<double>(number));
}

std::string componentListText(const ComponentListData& list) {
    std::string text;
    for (int k = 0; k < list.size(); ++k) {
        text += k == 0 ? " " : " | ";
        const auto runs = list.runs(k);
        for (const Run* run = runs.first; run != runs.second; ++run)
            text += runText(list.kind(k), *run);
    }
    return text;
}

/// Stands for the bytes of an array that is too long to be listed.
template <typename Entry>
std::string digest(const std::vector<Entry>& entries) {
    std::uint64_t hash = 14695981039346656037ULL;
    const auto* bytes = reinterpret_cast<const unsigned char*>(entries.data());
    for (std::size_t k = 0; k < entries.size() * sizeof(Entry); ++k)
        hash = (hash ^ bytes[k]) * 1099511628211ULL;
    return std::to_string(entries.size()) + '#' + std::to_string(hash);
}

std::string meshText(const host::nodes::MeshData& data) {
    const host::geometry::Topology& topology = data.mesh.topology();
    std::string text = " points " + digest(data.mesh.points()) + " faces " + digest(topology.faceOffsets()) +
                       ' ' + digest(topology.faceVertices()) + ' ' + digest(topology.faceEdges());
    for (const host::nodes::VertexGroup& group : data.groups)
        text += " group " + std::to_string(group.id);
    return text;
}

std::string dataText(const Data& data) {
    std::string text(data.typeName());
    if (const auto* string = dynamic_cast<const StringData*>(&data)) {
        text += " \"" + string->value + '"';
    } else if (const auto* strings = dynamic_cast<const StringArrayData*>(&data)) {
        for (const std::string& entry : strings->value)
            text += " \"" + entry + '"';
    } else if (const auto* doubles = dynamic_cast<const DoubleArrayData*>(&data)) {
        appendNumbers(text, doubles->value);
    } else if (const auto* integers = dynamic_cast<const IntArrayData*>(&data)) {
        appendNumbers(text, integers->value);
    } else if (const auto* points = dynamic_cast<const PointArrayData*>(&data)) {
        for (const Point4& point : points->value)
            appendNumbers(text, point);
    } else if (const auto* vectors = dynamic_cast<const VectorArrayData*>(&data)) {
        for (const Vector3& vector : vectors->value)
            appendNumbers(text, vector);
    } else if (const auto* matrix = dynamic_cast<const MatrixData*>(&data)) {
        appendNumbers(text, matrix->value);
    } else if (const auto* list = dynamic_cast<const ComponentListData*>(&data)) {
        text += componentListText(*list);
    } else if (const auto* mesh = dynamic_cast<const host::nodes::MeshData*>(&data)) {
        text += meshText(*mesh);
    } else if (const auto* colors = dynamic_cast<const host::nodes::VertexColorData*>(&data)) {
        text += ' ' + digest(colors->colors);
    }
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
            line(path, numberText(*number));
        } else if (const auto* data = std::get_if<DataPtr>(&slot.content)) {
            line(path, *data != nullptr ? dataText(**data) : "null");
        } else if (const auto* numbers = std::get_if<std::unique_ptr<NumberMulti>>(&slot.content)) {
            writeNumbers(**numbers, path);
        } else if (const auto* children = std::get_if<std::unique_ptr<Slot::Children>>(&slot.content)) {
            for (const auto& child : attribute.children()) {
                write(*child, (**children)[static_cast<std::size_t>(child->ordinal())],
                      path + '.' + child->longName());
            }
        } else if (const auto* multi = std::get_if<std::unique_ptr<ElementMulti>>(&slot.content)) {
            for (const auto& [index, element] : (**multi).elements) {
                line(indexed(path, index), "exists");
                write(attribute, *element, indexed(path, index));
            }
        }
    }

  private:
    void line(const std::string& path, const std::string& value) {
        text_ += prefix_ + path + " = " + value + '\n';
    }

    void writeNumbers(const NumberMulti& numbers, const std::string& path) {
        for (const int index : numbers.indices()) {
            const double* at = numbers.find(index);
            std::string value;
            appendNumbers(value, std::vector<double>(at, at + numbers.width()));
            line(indexed(path, index), value.substr(1));
        }
    }

    std::string prefix_;
    std::string& text_;
};

std::string plugText(const Graph& graph, const Node& node, const PlugKey& key) {
    return graph.fullPath(node) + '.' + Plug(const_cast<Node&>(node).ref(), key).fullAttributePath(true);
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
    const std::string path = graph.fullPath(node);
    text += "node " + node.type().name() + ' ' + path + '\n';
    for (const Node* child : node.children())
        text += "child " + path + ' ' + child->name() + '\n';
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

std::vector<std::string> sortedLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    return lines;
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

std::string dumpDifference(const std::string& before, const std::string& after) {
    const std::vector<std::string> old = sortedLines(before);
    const std::vector<std::string> now = sortedLines(after);
    std::vector<std::string> gone;
    std::vector<std::string> added;
    std::set_difference(old.begin(), old.end(), now.begin(), now.end(), std::back_inserter(gone));
    std::set_difference(now.begin(), now.end(), old.begin(), old.end(), std::back_inserter(added));
    std::string text;
    for (const std::string& line : gone)
        text += "- " + line + '\n';
    for (const std::string& line : added)
        text += "+ " + line + '\n';
    return text.empty() && before != after ? "only the order of lines differs\n" : text;
}

}  // namespace delven::test
