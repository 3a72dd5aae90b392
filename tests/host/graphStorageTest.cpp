#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <set>

#include "host/graphFixture.h"

namespace {

using namespace graphtest;

// --- flat multis and components against naive models
// --------------------------------------------------------

class NumberMultiModel : public testing::TestWithParam<int> {};

TEST_P(NumberMultiModel, agreesWithAMapUnderRandomOperations) {
    const int width = GetParam();
    const std::vector<double> defaults{0.25, 0.5, 0.75};
    std::mt19937 random(static_cast<unsigned>(7 + width));
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    NumberMulti multi(width);
    std::map<int, std::vector<double>> model;
    for (int step = 0; step < 4000; ++step) {
        const int index = below(60);
        const int action = below(10);
        if (action < 6) {
            const int part = below(width);
            const double value = below(1000);
            const bool isNew = model.count(index) == 0;
            EXPECT_EQ(multi.write(index, part, value, defaults.data()), isNew);
            if (isNew) model[index].assign(defaults.begin(), defaults.begin() + width);
            model[index][static_cast<std::size_t>(part)] = value;
        } else if (action < 8) {
            EXPECT_EQ(multi.remove(index), model.erase(index) == 1);
        } else if (action == 8) {
            EXPECT_EQ(multi.contains(index), model.count(index) == 1);
        } else if (below(40) == 0) {
            multi.clear();
            model.clear();
        }
        if (below(7) != 0) continue;
        const NumberMulti copy(multi);
        ASSERT_EQ(copy.size(), static_cast<int>(model.size()));
        int position = 0;
        for (const auto& [key, values] : model) {
            ASSERT_EQ(copy.logicalIndex(position), key);
            ASSERT_EQ(multi.indices()[static_cast<std::size_t>(position++)], key);
            const double* found = copy.find(key);
            ASSERT_NE(found, nullptr);
            ASSERT_EQ(std::vector<double>(found, found + width), values);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Widths, NumberMultiModel, testing::Values(1, 3));

TEST(NumberMulti, takesAMillionWritesInDescendingOrder) {
    NumberMulti multi(1);
    const double none = 0.0;
    for (int index = 1000000; index > 0; --index)
        multi.write(index, 0, index, &none);
    EXPECT_EQ(multi.size(), 1000000);
    EXPECT_EQ(*multi.find(77777), 77777.0);
    EXPECT_EQ(multi.find(0), nullptr);
}

/// Elements that the random operations are about: 40 places to begin at, up to 6 from each.
constexpr int kElementCount = 45;

/// From which element on.
class ComponentFrom : public testing::TestWithParam<int> {};

TEST_P(ComponentFrom, agreesWithASetUnderRandomOperations) {
    const int least = GetParam();
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        Component component(ComponentKind::Vertex);
        std::set<int> model;
        for (int step = 0; step < 12; ++step) {
            const int first = least + static_cast<int>(random() % 40);
            const Component other(ComponentKind::Vertex, {first, first + static_cast<int>(random() % 6)});
            const unsigned action = random() % 4;
            if (action < 2) component.merge(other);
            if (action == 2) component.remove(other);
            if (action == 3) component.toggle(other);
            for (const int element : other.elements()) {
                const bool had = model.count(element) != 0;
                if (action < 2 || (action == 3 && !had)) model.insert(element);
                if (action == 2 || (action == 3 && had)) model.erase(element);
            }
        }
        const std::vector<int> expected(model.begin(), model.end());
        ASSERT_EQ(component.elements(), expected);
        ASSERT_EQ(component.count(), static_cast<int>(expected.size()));
        for (int position = 0; position < component.count(); ++position)
            ASSERT_EQ(component.element(position), expected[static_cast<std::size_t>(position)]);
        for (int offset = -1; offset < kElementCount; ++offset)
            ASSERT_EQ(component.contains(least + offset), model.count(least + offset) != 0);
        for (int k = 1; k < component.runCount(); ++k)
            ASSERT_GT(component.run(k).first - 1, component.run(k - 1).last) << "runs that touch are one run";
        ASSERT_TRUE(component == Component::fromIndices(ComponentKind::Vertex, expected));
    }
}

INSTANTIATE_TEST_SUITE_P(Component, ComponentFrom,
                         testing::Values(0, std::numeric_limits<int>::max() - (kElementCount - 1)),
                         [](const auto& parameter) {
                             return parameter.param == 0 ? "zero" : "theLargestInt";
                         });

TEST(ComponentWord, isReadWithItsRange) {
    const auto range = parseComponentWord("vtx[3:5]");
    ASSERT_TRUE(range);
    EXPECT_EQ(range->run, (host::graph::Run{3, 5}));
    EXPECT_TRUE(parseComponentWord("e[*]")->all);
    EXPECT_EQ(parseComponentWord("f[9]")->kind, ComponentKind::Face);
    for (const char* wrong :
         {"vtx", "vtx[]", "vtx[a]", "vtx[5:3]", "vtx[-1]", "map[3]", "vtx[3", "vtx[1:]", "[2]"})
        EXPECT_FALSE(parseComponentWord(wrong)) << wrong;
}

TEST(ComponentList, keepsEntriesApartAndInOrder) {
    ComponentListData list;
    list.appendRun(ComponentKind::Vertex, 5, 6);
    list.append(Component::fromIndices(ComponentKind::Vertex, {9, 0, 1}));
    list.appendRun(ComponentKind::Vertex, 7, 7);
    EXPECT_EQ(list.size(), 3);
    EXPECT_EQ(list.flattened(), (std::vector<int>{5, 6, 0, 1, 9, 7}));
    EXPECT_EQ(list.entry(1).runCount(), 2);
}

// --- values ------------------------------------------------------------------------------------------------

TEST(Values, areRoundedToWhatTheKindStores) {
    ToyGraph graph;
    graph.make("holder", "h");
    graph.setNumber(graph.at("h.single"), 0.1);
    EXPECT_EQ(graph.valueOf("h.single"), static_cast<double>(0.1F));
    graph.setNumber(graph.at("h.precise"), 0.1);
    EXPECT_EQ(graph.valueOf("h.precise"), 0.1);
    graph.setNumber(graph.at("h.whole"), -3.9);
    EXPECT_EQ(graph.valueOf("h.whole"), -3.0);
    graph.setNumber(graph.at("h.w[4]"), 0.1);
    EXPECT_EQ(graph.valueOf("h.w[4]"), static_cast<double>(0.1F));
}

TEST(Values, areDefaultsUntilWrittenAndReadingCreatesNothing) {
    ToyGraph graph;
    graph.make("holder", "h");
    const std::string before = sceneDump(graph);
    EXPECT_EQ(graph.valueOf("h.precise"), 2.5);
    EXPECT_EQ(graph.valueOf("h.points[3].py"), 7.0);
    EXPECT_EQ(graph.valueOf("h.outer[2].inner[1].amounts[5]"), 1.0);
    EXPECT_EQ(graph.textOf("h.names[2]"), "(none)");
    EXPECT_EQ(graph.elementCount(graph.at("h.outer")), 0);
    EXPECT_EQ(sceneDump(graph), before);
}

TEST(Values, ofOneElementLeaveTheOthersAlone) {
    ToyGraph graph;
    graph.make("holder", "h");
    graph.setNumber(graph.at("h.points[8].px"), 1);
    graph.setNumber(graph.at("h.points[2].pz"), 2);
    graph.setData(graph.at("h.outer[1].inner[6000].label"), text("x"));
    graph.setNumber(graph.at("h.outer[1].inner[5500].amounts[3]"), 4);
    EXPECT_EQ(graph.elements(graph.at("h.points")), (std::vector<int>{2, 8}));
    EXPECT_EQ(graph.valueOf("h.points[8].py"), 7.0);
    EXPECT_EQ(graph.elements(graph.at("h.outer[1].inner")), (std::vector<int>{5500, 6000}));
    EXPECT_EQ(graph.textOf("h.outer[1].inner[6000].label"), "x");
    EXPECT_EQ(graph.textOf("h.outer[1].inner[5500].label"), "(none)");
    EXPECT_EQ(graph.elementAt(graph.at("h.outer[1].inner"), 1), 6000);
    EXPECT_EQ(graph.elementAt(graph.at("h.outer[1].inner"), 2), -1);
    EXPECT_EQ(graph.nextIndex(graph.at("h.points")), 9);
    graph.setNumber(graph.at("h.w[0]"), 1);
    graph.setNumber(graph.at("h.w[2147483647]"), 1);
    EXPECT_EQ(graph.nextIndex(graph.at("h.w")), 1) << "nothing comes after the largest index";
    graph.removeElement(graph.at("h.outer[1].inner[6000]"));
    EXPECT_EQ(graph.textOf("h.outer[1].inner[6000].label"), "(none)");
    EXPECT_EQ(graph.valueOf("h.outer[1].inner[5500].amounts[3]"), 4.0);
}

TEST(Values, clearElementsKeepsConnectedOnes) {
    ToyGraph graph;
    graph.make("holder", "h");
    graph.make("holder", "source");
    graph.setNumber(graph.at("h.w[1]"), 1);
    graph.setNumber(graph.at("h.w[2]"), 2);
    graph.connect(graph.at("source.single"), graph.at("h.w[2]"));
    graph.clearElements(graph.at("h.w"));
    EXPECT_EQ(graph.elements(graph.at("h.w")), (std::vector<int>{2}));
    graph.disconnect(graph.at("h.w[2]"));
    graph.clearElements(graph.at("h.w"));
    EXPECT_EQ(graph.elementCount(graph.at("h.w")), 0);
}

// --- names -------------------------------------------------------------------------------------------------

TEST(PlugNames, leaveOutPlainCompoundsAndKeepIndices) {
    ToyGraph graph;
    graph.make("holder", "h");
    EXPECT_EQ(graph.plugName(graph.at("h.ou[1].in[6000].la")), "h.outer[1].inner[6000].label");
    EXPECT_EQ(graph.plugName(graph.at("h.colour.colourX")), "h.colourX");
    EXPECT_EQ(graph.plugName(graph.at("h.pt[4].py")), "h.points[4].py");
    EXPECT_EQ(graph.at("h.pt[4].py").fullAttributePath(false), "pt[4].py");
    EXPECT_EQ(graph.at("h.cox").fullAttributePath(true), "colour.colourX");
}

TEST(PlugNames, areFoundInEveryForm) {
    ToyGraph graph;
    const NodeRef node = graph.make("holder", "h");
    const Plug wanted = graph.at("h.outer[0].inner[2].amounts[5]");
    EXPECT_EQ(graph.at("h.ou[0].in[2].am[5]"), wanted);
    EXPECT_EQ(graph.at("h.inner[2].am[5]"), wanted) << "an index that is not given is 0";
    graph.setAlias(graph.at("h.w[3]"), "smile");
    EXPECT_EQ(graph.at("h.smile"), graph.at("h.weights[3]"));
    graph.setAlias(graph.at("h.w[5]"), "frown");
    graph.setAlias(graph.at("h.w[3]"), "grin");
    EXPECT_EQ(graph.at("h.grin"), graph.at("h.weights[3]"));
    EXPECT_FALSE(findPlug(graph, "h.smile").ok);
    graph.setAlias(graph.at("h.w[3]"), "");
    EXPECT_EQ(graph.at("h.frown"), graph.at("h.weights[5]")) << "behind one that is gone";
    EXPECT_EQ(node->alias(graph.at("h.w[5]").key()), "frown");
    const PlugMatch range = findPlug(graph, "h.w[2:7]");
    EXPECT_EQ(range.plug.logicalIndex(), 2);
    EXPECT_EQ(range.last, 7);
    EXPECT_TRUE(graph.at("h.w").isArray());
    for (const char* wrong : {"h.none", "h.precise[2]", "h.w[", "h.w[x]", "h.", "h", "none.w", "h.w[1:2].x"})
        EXPECT_FALSE(findPlug(graph, wrong).ok) << wrong;
}

TEST(PlugNames, preferARootAttributeToAChildOfTheSameShortName) {
    NodeTypes types;
    types.add({"base", "", {compound("lists", "ls", {number("width", "w")}).array()}});
    const NodeType& type = types.add({"derived", "base", {number("weight", "w").array()}});
    EXPECT_EQ(type.find("w"), type.find("weight"));
    EXPECT_NE(type.find("width"), nullptr);
}

TEST(NodeNames, areMadeUniqueWhereTheyMust) {
    ToyGraph graph;
    const NodeRef a = graph.make("place", "a");
    const NodeRef b = graph.make("place", "b");
    EXPECT_EQ(graph.make("place", "a")->name(), "a1");
    EXPECT_EQ(graph.make("holder")->name(), "holder1");
    EXPECT_EQ(graph.make("holder")->name(), "holder2");
    EXPECT_EQ(graph.make("holder", "a")->name(), "a2") << "a name outside the DAG is unique in the scene";
    const NodeRef under = graph.make("shape", "s", a);
    const NodeRef other = graph.make("shape", "s", b);
    EXPECT_EQ(other->name(), "s") << "paths differ";
    EXPECT_EQ(graph.uniqueName(*under), "a|s");
    EXPECT_EQ(graph.fullPath(*other), "|b|s");
    graph.reparent(*other, a.get());
    EXPECT_EQ(other->name(), "s1");
    EXPECT_EQ(graph.rename(*other, "s"), "s1");
    EXPECT_EQ(graph.uniqueName(*under), "s");
}

TEST(NodeNames, countOnPastTheLastOneAndBackWhenOneGoes) {
    ToyGraph graph;
    std::vector<NodeRef> made;
    for (int k = 0; k < 5; ++k)
        made.push_back(graph.make("holder"));
    EXPECT_EQ(made.back()->name(), "holder5");
    graph.deleteNodes({made[1]});
    EXPECT_EQ(graph.make("holder")->name(), "holder2");
    EXPECT_EQ(graph.make("holder")->name(), "holder6");
    graph.rename(*made[3], "other");
    EXPECT_EQ(graph.nextName("holder3"), "holder4");
    EXPECT_EQ(graph.nextName("holder"), "holder4");
}

TEST(NodeNames, aTopLevelNodeIsToldFromADeeperOneByTheLeadingBar) {
    ToyGraph graph;
    const NodeRef group = graph.make("place", "g");
    const NodeRef top = graph.make("place", "x");
    const NodeRef deep = graph.make("place", "x", group);
    EXPECT_EQ(graph.uniqueName(*top), "|x");
    EXPECT_EQ(graph.uniqueName(*deep), "g|x");
    EXPECT_EQ(findNode(graph, "x"), nullptr);
    EXPECT_EQ(findNode(graph, "|x"), top);
    EXPECT_EQ(findNode(graph, "g|x"), deep);
    EXPECT_EQ(findNode(graph, ":g"), group);
    EXPECT_EQ(findNodes(graph, "x").size(), 2U);
    EXPECT_EQ(findAll(graph, "x").failure, NameFailure::Ambiguous);
    EXPECT_EQ(findAll(graph, "x*").items.size(), 2U);
    EXPECT_EQ(findAll(graph, "g|*").items.size(), 1U);
    EXPECT_EQ(findAll(graph, "y").errorText("y"), "No object matches name: y");
}

}  // namespace
