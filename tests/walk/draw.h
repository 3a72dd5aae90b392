#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "graph/graph.h"

namespace delven::walk {

/// What a blend shape works on.
struct DeformedMesh {
    std::string blendShape;
    std::string transform;
    std::string shape;
    std::string original;  // shape
};

/// Draws the parts of a line of script at random, most of the time such that it can succeed: names are those
/// of what is in the scene now. The same seed and scene give the same lines where the same compiler built
/// this (the order in which the parts of a line are drawn is its own).
class Draw {
  public:
    /// Stands for a node where there is none.
    static constexpr const char* kMissing = "missing";

    /// @param graph  new: what is in it now belongs to every scene
    Draw(unsigned int seed, host::graph::Graph& graph);

    /// Draws from here on as if made with this seed.
    void reseed(unsigned int seed) { engine_.seed(seed); }

    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned int>(limit)); }
    bool oneIn(int times) { return below(times) == 0; }
    std::string anyOf(const std::vector<std::string>& texts) {
        return texts[static_cast<std::size_t>(below(static_cast<int>(texts.size())))];
    }

    int nodeCount() const { return static_cast<int>(graph_.nodes().size()); }
    /// A node of a type or of one derived from it; kMissing when there is no such node.
    std::string node(const std::string& type);
    bool has(const std::string& type) const { return !graph_.nodesOfType(type).empty(); }
    /// A node of any type but those that every scene has.
    std::string anyNode();
    /// An attribute that was added to a node.
    std::string addedAttribute();
    /// A name for something new; likely to be taken.
    std::string newName();
    /// A number between -2 and 2, now and then one that is far away.
    std::string number();
    /// A vertex number of a small mesh, now and then one that it does not have.
    std::string vertex() { return std::to_string(oneIn(12) ? 20 + below(30) : below(20)); }
    /// Components of a mesh: one, a range, or all of a kind.
    std::string components(const std::string& mesh);
    std::string vertices(const std::string& mesh);

    /// A deformer with its mesh; kMissing where there is none.
    DeformedMesh deformed();
    /// "disconnectAttr ..." for a target mesh that is connected; empty when there is none.
    std::string disconnection();
    /// A target of it, now and then one that it does not have.
    std::string target(const std::string& blendShape);
    /// An item of a target, now and then one that it does not have.
    std::string item(const std::string& blendShape, const std::string& target);
    /// The index of an in-between that a target does not have.
    std::string freeItem(const std::string& blendShape, const std::string& target);

  private:
    std::string oneOf(const std::vector<host::graph::NodeRef>& nodes);
    std::vector<int> indices(const std::string& plug) const;
    std::string element(const std::string& plug, int other);

    std::mt19937 engine_;
    host::graph::Graph& graph_;
    std::uint64_t lastDefault_;  // id of the last node that every scene has
};

}  // namespace delven::walk
