// Nodes with several parents, against a model that follows each way by itself.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "graph/instances.h"
#include "host/graphFixture.h"

namespace {

using namespace graphtest;

std::vector<std::string> naivePaths(const Node& node) {
    std::vector<std::string> result;
    visitParents(node, [&](const Node* parent) {
        const auto above = parent != nullptr ? naivePaths(*parent) : std::vector<std::string>{""};
        for (const std::string& path : above)
            result.push_back(path + '|' + node.name());
    });
    return result;
}

bool naiveIsBelow(const Node& node, const Node& above) {
    bool isFound = &node == &above;
    visitParents(node, [&](const Node* parent) {
        isFound = isFound || (parent != nullptr && naiveIsBelow(*parent, above));
    });
    return isFound;
}

std::vector<std::string> namesOf(const std::vector<Node*>& nodes) {
    std::vector<std::string> names;
    names.reserve(nodes.size());
    for (const Node* node : nodes)
        names.push_back(node->name());
    return names;
}

class RandomInstances : public testing::TestWithParam<unsigned> {
  protected:
    RandomInstances() {
        for (int k = 0; k < 14; ++k)
            add(graph_.make("place", name(), pick()));
        for (int k = 0; k < 12; ++k) {
            const NodeRef node = pick();
            const NodeRef parent = pick();
            if (node == nullptr || parent == nullptr || graph_.hasParent(*node, parent.get())) continue;
            EXPECT_EQ(isBelow(*parent, *node), naiveIsBelow(*parent, *node));
            if (!isBelow(*parent, *node)) graph_.addInstance(*node, parent.get());
        }
    }

    std::size_t below(std::size_t limit) { return random_() % limit; }
    std::string name() { return std::string(1, static_cast<char>('a' + below(4))); }
    NodeRef pick() { return nodes_.empty() || below(9) == 0 ? nullptr : nodes_[below(nodes_.size())]; }
    void add(const NodeRef& node) { nodes_.push_back(node); }

    /// The place that a path means, which has to be one only.
    Instance placeOf(const std::string& path) {
        const NameMatches matches = findAll(graph_, path);
        EXPECT_EQ(matches.items.size(), 1u) << path;
        const SelectionItem& item = matches.items.front();
        EXPECT_EQ(itemNames(graph_, item, true),
                  std::vector<std::string>{fullPath({item.node.get(), item.path})});
        return {item.node.get(), item.path};
    }

    void checkLists() {
        for (const NodeRef& node : graph_.nodesOfType("dagNode")) {
            std::vector<const Node*> parents;
            visitParents(*node, [&](Node* parent) {
                const auto& list = parent != nullptr ? parent->children() : graph_.roots();
                EXPECT_EQ(std::count(list.begin(), list.end(), node.get()), 1) << node->name();
                EXPECT_EQ(std::count_if(list.begin(), list.end(),
                                        [&](const Node* other) { return other->name() == node->name(); }),
                          1);
                EXPECT_TRUE(graph_.hasParent(*node, parent));
                EXPECT_EQ(std::count(parents.begin(), parents.end(), parent), 0);
                parents.push_back(parent);
            });
        }
    }

    ToyGraph graph_;
    std::vector<NodeRef> nodes_;

  private:
    std::mt19937 random_{GetParam()};
};

TEST_P(RandomInstances, AreFoundByEachOfTheirPathsAndCountedAlike) {
    checkLists();
    for (const NodeRef& node : nodes_) {
        const std::vector<std::string> expected = naivePaths(*node);
        const std::vector<std::string> names = shortPaths(graph_, *node);
        ASSERT_EQ(paths(*node), expected);
        ASSERT_EQ(names.size(), expected.size());
        ASSERT_EQ(pathCount(*node), expected.size());
        EXPECT_EQ(isInstanced(*node), expected.size() > 1);
        EXPECT_EQ(graph_.fullPath(*node), expected.front());
        EXPECT_EQ(findNode(graph_, graph_.uniqueName(*node)), node);
        for (std::size_t k = 0; k < expected.size(); ++k) {
            const auto at = std::to_string(k) + ' ' + expected[k];
            EXPECT_EQ(findNode(graph_, expected[k]), node) << at;
            EXPECT_EQ(fullPath({node.get(), k}), expected[k]);
            EXPECT_EQ(placeOf(expected[k]).number, k) << at;
            EXPECT_EQ(findNode(graph_, names[k]), node) << names[k];
            EXPECT_EQ(placeOf(names[k]).number, k) << names[k] << " for " << at;
            EXPECT_EQ(itemName(graph_, {node, {}, {}, k}), k > 0 ? names[k] : graph_.uniqueName(*node));
        }
        EXPECT_TRUE(upwards({node.get(), expected.size()}).empty());
    }
}

TEST_P(RandomInstances, AreVisitedOnce) {
    const NodeRef root = graph_.make("place", "root");
    for (Node* other : std::vector<Node*>(graph_.roots())) {
        if (other != root.get()) graph_.addInstance(*other, root.get());
    }
    std::vector<const Node*> seen;
    visitHierarchy(*root, [&](Node& node) { seen.push_back(&node); });
    EXPECT_EQ(seen.size(), nodes_.size() + 1);
    std::sort(seen.begin(), seen.end());
    EXPECT_EQ(std::unique(seen.begin(), seen.end()), seen.end());
}

TEST_P(RandomInstances, StayWhereAnotherParentStays) {
    const NodeRef gone = nodes_[below(nodes_.size())];
    std::vector<NodeRef> expected;
    for (const NodeRef& node : nodes_) {
        bool stays = false;
        for (const std::string& path : naivePaths(*node)) {
            const auto chain = upwards(placeOf(path));
            stays = stays || std::none_of(chain.begin(), chain.end(),
                                          [&](const Instance& at) { return at.node == gone.get(); });
        }
        if (stays) expected.push_back(node);
    }
    const std::string before = sceneDump(graph_);
    ChangeList changes;
    {
        const RecordingScope scope(graph_, &changes);
        graph_.deleteNodes({gone});
    }
    const std::string after = sceneDump(graph_);
    EXPECT_EQ(graph_.nodes(), expected);
    checkLists();
    changes.undo(graph_);
    EXPECT_EQ(sceneDump(graph_), before);
    changes.redo(graph_);
    EXPECT_EQ(sceneDump(graph_), after);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomInstances, testing::Range(1U, 60U));

TEST(Instances, TheNextParentIsTheFirstWhenTheFirstGoes) {
    ToyGraph graph;
    const NodeRef a = graph.make("place", "a");
    const NodeRef b = graph.make("place", "b");
    const NodeRef node = graph.make("place", "node", a);
    graph.make("place", "before", b);
    graph.addInstance(*node, b.get());
    graph.make("place", "after", b);
    graph.addInstance(*node, nullptr);
    EXPECT_EQ(paths(*node), (std::vector<std::string>{"|node", "|a|node", "|b|node"}))
        << "the world is first";
    const std::string before = sceneDump(graph);
    ChangeList changes;
    {
        const RecordingScope scope(graph, &changes);
        graph.removeInstance(*node, nullptr);
        graph.deleteNodes({a});
    }
    EXPECT_EQ(paths(*node), std::vector<std::string>{"|b|node"});
    EXPECT_EQ(namesOf(b->children()), (std::vector<std::string>{"before", "node", "after"}));
    EXPECT_FALSE(graph.hasInstances());
    graph.reparent(*node, nullptr);
    changes.undo(graph);
    EXPECT_EQ(paths(*node), (std::vector<std::string>{"|node", "|a|node"})) << "what was not recorded stays";
    graph.addInstance(*node, b.get());
    EXPECT_NE(sceneDump(graph), before) << "it is the last child now";
}

TEST(Instances, MovingBelowAParentThatTheNodeHasLeavesOne) {
    ToyGraph graph;
    const NodeRef a = graph.make("place", "a");
    const NodeRef b = graph.make("place", "b");
    const NodeRef node = graph.make("place", "node", a);
    graph.addInstance(*node, b.get());
    graph.reparent(*node, b.get());
    EXPECT_EQ(paths(*node), std::vector<std::string>{"|b|node"});
    EXPECT_TRUE(a->children().empty());
}

TEST(Instances, ChangesAboveAreToldThroughEachParent) {
    ToyGraph graph;
    const NodeRef a = graph.make("place", "a");
    const NodeRef b = graph.make("place", "b");
    const NodeRef adder = graph.make("adder", "adder");
    graph.connect(graph.at("b.offsetX"), graph.at("adder.left"));
    EXPECT_EQ(graph.valueOf("adder.sum"), 0);
    graph.addInstance(*b, a.get());
    EXPECT_EQ(graph.valueOf("adder.sum"), 0);
    EXPECT_EQ(computeCounts()["adder"], 2) << "another parent is a change";
}

/// 2 to the power of 40 paths, and a chain that no stack could follow.
TEST(Instances, ManyPathsAndDeepOnesHaveTheirLimits) {
    ToyGraph graph;
    NodeRef last = graph.make("place", "top");
    for (int level = 0; level < 40; ++level) {
        const NodeRef left = graph.make("place", "left" + std::to_string(level), last);
        const NodeRef right = graph.make("place", "right" + std::to_string(level), last);
        last = graph.make("place", "join" + std::to_string(level), left);
        graph.addInstance(*last, right.get());
    }
    EXPECT_EQ(pathCount(*last), kMaxPaths + 1);
    EXPECT_EQ(paths(*last).size(), kMaxPaths);
    EXPECT_EQ(fullPath({last.get(), kMaxPaths - 1}), paths(*last).back());
    EXPECT_TRUE(upwards({last.get(), kMaxPaths}).empty());
    EXPECT_EQ(findNode(graph, "top|right0|join0|left1|join1"), graph.nodesNamed("join1").front());
    EXPECT_FALSE(isBelow(*graph.roots().front(), *last));
    EXPECT_EQ(graph.uniqueName(*last), "join39");
    constexpr int kDepth = 100000;
    NodeRef deep = last;
    for (int level = 0; level < kDepth; ++level)
        deep = graph.make("place", "d" + std::to_string(level), deep);
    const NodeRef other = graph.make("place", "other");
    graph.addInstance(*deep, other.get());
    EXPECT_EQ(pathCount(*deep), kMaxPaths + 1);
    graph.deleteNodes({graph.roots().front()->ref()});
    EXPECT_EQ(paths(*deep), std::vector<std::string>{"|other|" + deep->name()});
}

}  // namespace
