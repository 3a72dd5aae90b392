#include <gtest/gtest.h>

#include <string>

#include "graph/hierarchy.h"
#include "graph/pathNames.h"
#include "host/graphFixture.h"

namespace {

using namespace graphtest;

class NamesOfNeighbours : public testing::TestWithParam<unsigned> {};

/// Few names for many nodes: namesakes stand beside, above and below each other.
TEST_P(NamesOfNeighbours, AreThoseThatEachNodeHasAlone) {
    std::mt19937 random(GetParam());
    const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random()) % limit; };
    ToyGraph graph;
    std::vector<NodeRef> nodes{graph.make("holder", "apart")};
    for (int k = 0; k < 60; ++k) {
        NodeRef parent =
            below(8) == 0 ? nullptr : nodes[nodes.size() - 1 - below(std::min<std::size_t>(4, nodes.size()))];
        if (parent != nullptr && !parent->type().isDag()) parent = nullptr;
        nodes.push_back(graph.make("place", std::string(1, static_cast<char>('a' + below(3))), parent));
    }
    for (int k = 0; k < 20 && GetParam() % 2 == 0; ++k) {
        const NodeRef node = nodes[1 + below(60)];
        const NodeRef parent = nodes[1 + below(60)];
        if (!graph.hasParent(*node, parent.get()) && !isBelow(*parent, *node))
            graph.addInstance(*node, parent.get());
    }
    const std::vector<NodeRef> made = nodes;
    for (int k = 0; k < 200; ++k)
        nodes.push_back(made[below(made.size())]);
    nodes.insert(nodes.end(), made.rbegin(), made.rend());
    PathNames full(graph, PathNames::Kind::Full);
    PathNames unique(graph, PathNames::Kind::Unique);
    for (const NodeRef& node : nodes) {
        EXPECT_EQ(full.of(*node), graph.fullPath(*node));
        EXPECT_EQ(unique.of(*node), graph.uniqueName(*node));
        EXPECT_EQ(findNodes(graph, unique.of(*node)), std::vector<NodeRef>{node});
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, NamesOfNeighbours, testing::Range(1U, 40U));

}  // namespace
