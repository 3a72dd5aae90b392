#include "walk/draw.h"

#include <algorithm>

#include "graph/names.h"
#include "nodes/meshNode.h"

namespace delven::walk {

namespace {

using host::graph::Graph;
using host::graph::Node;
using host::graph::NodeRef;

/// The mesh that a deformer's chain ends in; null when it ends elsewhere.
const Node* meshAfter(const Node& deformer) {
    const Node* at = &deformer;
    for (int length = 0; length < 20; ++length) {
        const Node* next = nullptr;
        for (const auto& [key, links] : at->outgoing()) {
            for (const auto& link : links) {
                if (link.node->isA("mesh")) return link.node;
                if (next == nullptr && link.node->isA("geometryFilter")) next = link.node;
            }
        }
        if (next == nullptr) return nullptr;
        at = next;
    }
    return nullptr;
}

}  // namespace

Draw::Draw(unsigned int seed, Graph& graph)
    : engine_(seed), graph_(graph), lastDefault_(graph.nodes().back()->id()) {}

std::string Draw::oneOf(const std::vector<NodeRef>& nodes) {
    if (nodes.empty()) return kMissing;
    return graph_.uniqueName(*nodes[static_cast<std::size_t>(below(static_cast<int>(nodes.size())))]);
}

std::string Draw::node(const std::string& type) {
    return oneOf(graph_.nodesOfType(type));
}

std::string Draw::anyNode() {
    std::vector<NodeRef> nodes = graph_.nodes();
    const auto isOfEveryScene = [this](const NodeRef& node) { return node->id() <= lastDefault_; };
    nodes.erase(std::remove_if(nodes.begin(), nodes.end(), isOfEveryScene), nodes.end());
    return oneOf(nodes);
}

std::string Draw::addedAttribute() {
    std::vector<std::string> names;
    for (const NodeRef& node : graph_.nodes()) {
        for (const auto* attribute : node->attributes()) {
            if (attribute != nullptr && attribute->isDynamic())
                names.push_back(graph_.uniqueName(*node) + '.' + attribute->longName());
        }
    }
    return names.empty() ? kMissing : anyOf(names);
}

std::string Draw::newName() {
    return anyOf({"a", "b", "face", "face1", "smile", "head", "x2"});
}

std::string Draw::number() {
    if (oneIn(40)) return anyOf({"1e30", "-1e-30", "2147483647", "-2147483648"});
    return anyOf({"0", "1", "-1", "0.5", "-0.25", "1.75", "2"});
}

std::string Draw::vertices(const std::string& mesh) {
    const int first = below(18);
    return mesh + anyOf({".vtx[" + vertex() + "]", ".vtx[" + vertex() + "]", ".vtx[*]",
                         ".vtx[" + std::to_string(first) + ":" + std::to_string(first + below(6)) + "]"});
}

std::string Draw::components(const std::string& mesh) {
    if (!oneIn(3)) return vertices(mesh);
    return mesh + anyOf({".e[", ".f["}) + std::to_string(below(12)) + "]";
}

DeformedMesh Draw::deformed() {
    const std::vector<NodeRef> deformers = graph_.nodesOfType("blendShape");
    DeformedMesh found{kMissing, kMissing, kMissing, kMissing};
    if (deformers.empty()) return found;
    const NodeRef deformer = deformers[static_cast<std::size_t>(below(static_cast<int>(deformers.size())))];
    found.blendShape = graph_.uniqueName(*deformer);
    const Node* shape = meshAfter(*deformer);
    if (shape == nullptr) return found;
    found.shape = graph_.uniqueName(*shape);
    found.transform = graph_.uniqueName(*shape->parent());
    for (const Node* sibling : shape->parent()->children()) {
        if (sibling->isA("mesh") && host::nodes::isIntermediate(graph_, *sibling))
            found.original = graph_.uniqueName(*sibling);
    }
    return found;
}

std::string Draw::disconnection() {
    for (const NodeRef& deformer : graph_.nodesOfType("blendShape")) {
        for (const auto& [key, link] : deformer->incoming()) {
            if (key.attribute->longName() != "inputGeomTarget") continue;
            return "disconnectAttr " + graph_.plugName({link.node->ref(), link.key}) + ' ' +
                   graph_.plugName({deformer, key});
        }
    }
    return {};
}

std::vector<int> Draw::indices(const std::string& plug) const {
    const auto found = host::graph::findPlug(graph_, plug);
    return found.plug ? graph_.elements(found.plug) : std::vector<int>();
}

std::string Draw::element(const std::string& plug, int other) {
    const std::vector<int> present = indices(plug);
    if (present.empty() || oneIn(15)) return std::to_string(other);
    return std::to_string(present[static_cast<std::size_t>(below(static_cast<int>(present.size())))]);
}

std::string Draw::target(const std::string& blendShape) {
    return element(blendShape + ".it[0].itg", 7);
}

std::string Draw::item(const std::string& blendShape, const std::string& target) {
    return element(blendShape + ".it[0].itg[" + target + "].iti", 5250);
}

std::string Draw::freeItem(const std::string& blendShape, const std::string& target) {
    const std::vector<int> taken = indices(blendShape + ".it[0].itg[" + target + "].iti");
    int item = 5100 + below(100);
    while (std::find(taken.begin(), taken.end(), item) != taken.end())
        ++item;
    return std::to_string(item);
}

}  // namespace delven::walk
