#include "commands/blendShapeEdit.h"

#include "commands/meshSupport.h"
#include "commands/transformSupport.h"
#include "nodes/deformers.h"

namespace host::commands {

namespace {

using graph::NodeRef;

/// The four arguments of -target.
struct TargetWords {
    int baseIndex = 0;
    int weightIndex = 0;
    std::string targetName;
    double fullWeight = 1.0;
};

Found<TargetWords> targetWords(graph::Graph& graph, const NodeRef& blendShape,
                               const std::vector<Value>& words) {
    const std::string baseName = words[0].toString();
    const Found<NodeRef> base = findMeshShape(graph, baseName);
    if (!base.ok()) return {{}, base.error};
    const int baseIndex = nodes::geometryIndexOf(graph, blendShape, base.value);
    if (baseIndex < 0)
        return {{}, "blendShape: " + baseName + " is not deformed by " + blendShape->name() + '.'};
    if (words[1].toInt() < 0)
        return {{}, "blendShape: The weight index " + words[1].toString() + " is out of range."};
    if (nodes::itemIndex(words[3].toFloat()) == 0)
        return {{}, "blendShape: The full weight " + words[3].toString() + " is out of range."};
    return {{baseIndex, words[1].toInt(), words[2].toString(), words[3].toFloat()}, {}};
}

/// Why a plug and what is below it cannot be changed: one of these, or what contains them, is locked.
std::string lockObstacle(const graph::Graph& graph, const graph::Plug& plug) {
    const auto text = [&](const graph::Plug& locked) {
        return "blendShape: '" + graph.plugName(locked) + "' is locked.";
    };
    if (isLocked(plug)) return text(plug);
    for (const auto& [key, state] : plug.node()->states()) {
        if (!state.isLocked) continue;
        const graph::Plug locked(plug.node(), key);
        for (graph::Plug at = locked; at; at = at.parent()) {
            if (at.key() == plug.key()) return text(locked);
        }
    }
    return {};
}

std::string add(graph::Graph& graph, const NodeRef& blendShape, const TargetWords& words, bool inBetween) {
    const Found<NodeRef> target = findMeshShape(graph, words.targetName);
    if (!target.ok()) return target.error;
    if (nodes::geometryIndexOf(graph, blendShape, target.value) >= 0)
        return "blendShape: " + words.targetName + " cannot be its own target.";
    std::string locked =
        lockObstacle(graph, nodes::targetItemPlug(blendShape, words.baseIndex, words.weightIndex,
                                                  nodes::itemIndex(words.fullWeight)));
    if (!locked.empty()) return locked;
    const nodes::TargetResult added = nodes::addTarget(graph, blendShape, words.baseIndex, words.weightIndex,
                                                       target.value, words.fullWeight, inBetween);
    return added.ok ? std::string() : "blendShape: " + added.error + '.';
}

/// @return empty, or why the element has to stay
std::string removeElement(graph::Graph& graph, const graph::Plug& element) {
    std::string locked = lockObstacle(graph, element);
    if (!locked.empty()) return locked;
    for (const graph::Connection& connection : graph.connectionsBelow(element))
        graph.disconnect(connection.destination);
    graph.removeElement(element);
    return {};
}

/// Removes one item. With its last item, the target is removed from this base. With the last base, its weight
/// and alias are removed.
std::string remove(graph::Graph& graph, const NodeRef& blendShape, const TargetWords& words) {
    const graph::Plug item = nodes::targetItemPlug(blendShape, words.baseIndex, words.weightIndex,
                                                   nodes::itemIndex(words.fullWeight));
    if (!graph.hasElement(item))
        return "blendShape: " + blendShape->name() + " has no target at weight index " +
               std::to_string(words.weightIndex) + " and this weight.";
    std::string locked = removeElement(graph, item);
    if (!locked.empty()) return locked;
    if (!nodes::targetItems(graph, blendShape, words.baseIndex, words.weightIndex).empty()) return {};
    const graph::Plug bases = blendShape->plug("inputTarget");
    locked = removeElement(graph, nodes::targetGroupPlug(blendShape, words.baseIndex, words.weightIndex));
    if (!locked.empty()) return locked;
    for (const int base : graph.elements(bases)) {
        if (graph.hasElement(nodes::targetGroupPlug(blendShape, base, words.weightIndex))) return {};
    }
    const graph::Plug weight = blendShape->plug("weight").element(words.weightIndex);
    graph.setAlias(weight, {});
    return graph.hasElement(weight) ? removeElement(graph, weight) : std::string();
}

/// Why this host cannot do what -target asks for; empty if it can.
std::string inBetweenObstacle(const ParsedArguments& arguments) {
    if (!arguments.isSet("inBetweenType") || arguments.text("inBetweenType") == "absolute") return {};
    return "blendShape: In-betweens other than absolute ones are not covered.";
}

}  // namespace

std::string setBlendShapeOptions(graph::Graph& graph, const NodeRef& blendShape,
                                 const ParsedArguments& arguments) {
    for (const char* flag : {"weightCount", "geometry"}) {
        if (arguments.isSet(flag)) return std::string("blendShape: -") + flag + " can only be queried.";
    }
    if (arguments.isSet("origin")) {
        const std::string origin = arguments.text("origin");
        if (origin != "local") return "blendShape: An origin other than local is not covered.";
        graph.setNumber(blendShape->plug("origin"), 1.0);
    }
    if (arguments.isSet("topologyCheck"))
        graph.setNumber(blendShape->plug("topologyCheck"), arguments.boolean("topologyCheck") ? 1.0 : 0.0);
    if (arguments.isSet("envelope")) {
        std::string error = writeObstacle(graph, blendShape->plug("envelope"));
        if (!error.empty()) return error;
        graph.setNumber(blendShape->plug("envelope"), arguments.number("envelope"));
    }
    return {};
}

std::string setBlendShapeWeights(graph::Graph& graph, const NodeRef& blendShape,
                                 const ParsedArguments& arguments) {
    for (int use = 0; use < arguments.uses("weight"); ++use) {
        const std::vector<Value>& words = arguments.values("weight", use);
        const graph::Plug weight = blendShape->plug("weight").element(words[0].toInt());
        if (!graph.hasElement(weight))
            return "blendShape: " + blendShape->name() + " has no target of index " + words[0].toString() +
                   '.';
        std::string error = writeObstacle(graph, weight);
        if (!error.empty()) return error;
        graph.setNumber(weight, words[1].toFloat());
    }
    return {};
}

std::string editBlendShape(graph::Graph& graph, const NodeRef& blendShape, const ParsedArguments& arguments) {
    for (const char* flag : {"name", "frontOfChain"}) {
        if (arguments.isSet(flag)) return std::string("blendShape: -") + flag + " cannot be edited.";
    }
    std::string error = inBetweenObstacle(arguments);
    if (error.empty()) error = setBlendShapeOptions(graph, blendShape, arguments);
    if (!error.empty()) return error;
    if (arguments.isSet("remove") && !arguments.isSet("target"))
        return "blendShape: -remove needs -target to say what to remove.";
    for (int use = 0; use < arguments.uses("target"); ++use) {
        const Found<TargetWords> words = targetWords(graph, blendShape, arguments.values("target", use));
        if (!words.ok()) return words.error;
        error = arguments.isSet("remove") ? remove(graph, blendShape, words.value)
                                          : add(graph, blendShape, words.value, arguments.isSet("inBetween"));
        if (!error.empty()) return error;
    }
    return setBlendShapeWeights(graph, blendShape, arguments);
}

}  // namespace host::commands
