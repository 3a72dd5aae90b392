#pragma once

#include <map>
#include <memory>
#include <random>
#include <string>

#include "graph/graph.h"
#include "graph/names.h"
#include "graph/sceneDump.h"

/// Node types that show every way in which the graph stores a value, and one that computes.
namespace graphtest {

using namespace host::graph;

/// How often each adder has computed, by node name.
inline std::map<std::string, int>& computeCounts() {
    static std::map<std::string, int> counts;
    return counts;
}

inline void addToyTypes(NodeTypes& types) {
    types.add({"node", "", {message("message", "msg")}, {}, true});
    types.add({"dagNode", "node", {number("visible", "v", ValueKind::Bool).withDefault(1)}, {}, true});
    types.add({"place", "dagNode", {triple("offset", "of")}});
    types.add({"shape", "dagNode", {typed("words", "wo", "string")}});
    types.add({"holder",
               "node",
               {number("whole", "wh", ValueKind::Int), number("single", "si", ValueKind::Float),
                number("precise", "pr").withDefault(2.5), typed("text", "tx", "string"),
                triple("colour", "co", ValueKind::Float), number("weights", "w", ValueKind::Float).array(),
                compound("points", "pt",
                         {number("px", "px"), number("py", "py").withDefault(7), number("pz", "pz")})
                    .array(),
                typed("names", "na", "string").array(), message("members", "me").array(),
                compound("outer", "ou",
                         {compound("inner", "in",
                                   {typed("label", "la", "string"),
                                    number("amounts", "am", ValueKind::Float).withDefault(1).array()})
                              .array(),
                          number("level", "le", ValueKind::Int)})
                    .array()}});
    NodeBehaviour adding;
    adding.compute = [](Graph& graph, const Plug& output) -> ComputedValue {
        const NodeRef& node = output.node();
        ++computeCounts()[node->name()];
        return graph.number(node->plug("left")) + graph.number(node->plug("right"));
    };
    adding.passThrough = [](const Plug& output) {
        return output.attribute().longName() == "sum" ? output.node()->plug("left") : Plug();
    };
    types.add({"adder",
               "node",
               {number("left", "l"), number("right", "r"), number("sum", "s").output()},
               adding,
               false,
               true});
}

/// A graph with the toy types.
struct ToyGraph : Graph {
    ToyGraph() {
        addToyTypes(types());
        computeCounts().clear();
    }
    NodeRef make(const char* type, const std::string& name = {}, const NodeRef& parent = nullptr) {
        return createNode(*types().find(type), name, parent.get());
    }
    Plug at(const std::string& name) const { return findPlug(*this, name).plug; }
    double valueOf(const std::string& name) { return number(at(name)); }
    std::string textOf(const std::string& name) {
        const auto text = dataAs<StringData>(data(at(name)));
        return text != nullptr ? text->value : "(none)";
    }
};

inline DataPtr text(const std::string& value) {
    return std::make_shared<StringData>(value);
}

}  // namespace graphtest
