#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "host/graphFixture.h"

namespace {

using namespace graphtest;

class Warnings final : public MessageSink {
  public:
    void print(const std::string&) override {}
    void info(const std::string&) override {}
    void warning(const std::string& text) override { texts.push_back(text); }
    void error(const std::string&) override {}
    std::vector<std::string> texts;
};

struct StepCase {
    const char* name;
    std::function<void(ToyGraph&)> run;
    bool isSaidByRedo = true;  // false where redo needs no missing node
};

void PrintTo(const StepCase& stepCase, std::ostream* stream) {
    *stream << stepCase.name;
}

Node& nodeOf(const ToyGraph& graph, const char* name) {
    return *findNode(graph, name);
}

// Each changes n, low or what is below low.
const StepCase kSteps[] = {
    {"number", [](ToyGraph& graph) { graph.setNumber(graph.at("n.precise"), 4); }},
    {"newElement", [](ToyGraph& graph) { graph.setNumber(graph.at("n.weights[2]"), 4); }},
    {"oldElement", [](ToyGraph& graph) { graph.setNumber(graph.at("n.weights[7]"), 4); }},
    {"data", [](ToyGraph& graph) { graph.setData(graph.at("n.text"), text("new")); }},
    {"dataElement", [](ToyGraph& graph) { graph.setData(graph.at("n.names[2]"), text("new")); }},
    {"createdElement", [](ToyGraph& graph) { graph.createElement(graph.at("n.names[2]")); }},
    {"removedElement", [](ToyGraph& graph) { graph.removeElement(graph.at("n.weights[7]")); }},
    {"clearedElements", [](ToyGraph& graph) { graph.clearElements(graph.at("n.weights")); }},
    {"stored", [](ToyGraph& graph) { graph.recordStored(graph.at("n.precise")); }, false},
    {"source", [](ToyGraph& graph) { graph.connect(graph.at("n.precise"), graph.at("m.single")); }},
    {"destination", [](ToyGraph& graph) { graph.connect(graph.at("m.precise"), graph.at("n.single")); }},
    {"broken", [](ToyGraph& graph) { graph.disconnect(graph.at("n.whole")); }},
    {"name", [](ToyGraph& graph) { graph.rename(nodeOf(graph, "n"), "other"); }},
    {"newAlias", [](ToyGraph& graph) { graph.setAlias(graph.at("n.weights[2]"), "smile"); }},
    {"oldAlias", [](ToyGraph& graph) { graph.setAlias(graph.at("n.weights[7]"), "smile"); }},
    {"state",
     [](ToyGraph& graph) {
         PlugState locked;
         locked.isLocked = true;
         graph.setState(graph.at("n.precise"), locked);
     }},
    {"newAttribute", [](ToyGraph& graph) { graph.addAttribute(nodeOf(graph, "n"), number("more", "mo")); }},
    {"oldAttribute",
     [](ToyGraph& graph) {
         Node& node = nodeOf(graph, "n");
         graph.deleteAttribute(node, *node.findAttribute("extra"));
     }},
    {"createdBelow", [](ToyGraph& graph) { graph.make("place", "child", nodeOf(graph, "low").ref()); }},
    {"deletedBelow", [](ToyGraph& graph) { graph.deleteNodes({nodeOf(graph, "leaf").ref()}); }},
    {"movedOut", [](ToyGraph& graph) { graph.reparent(nodeOf(graph, "leaf"), nullptr); }, false},
    {"moved", [](ToyGraph& graph) { graph.reparent(nodeOf(graph, "low"), nullptr); }},
};

class StepOnAMissingNode : public testing::TestWithParam<StepCase> {
  protected:
    StepOnAMissingNode() {
        graph.setMessages(warnings);
        n = graph.make("holder", "n");
        graph.make("holder", "m");
        low = graph.make("place", "low", graph.make("place", "high"));
        graph.make("place", "leaf", low);
        graph.addAttribute(*n, number("extra", "ex"));
        graph.setNumber(graph.at("n.weights[7]"), 1);
        graph.setAlias(graph.at("n.weights[7]"), "grin");
        graph.connect(graph.at("m.whole"), graph.at("n.whole"));
    }

    /// The scene, and what the lost node keeps.
    std::string everything() const {
        std::string all = sceneDump(graph) + n->name();
        for (const char* name :
             {"precise", "weights[7]", "weights[2]", "names[2]", "text", "extra", "more"}) {
            const PlugMatch match = findPlug(graph, n, name);
            if (!match.ok) continue;
            const PlugKey& key = match.plug.key();
            all += std::string(" ") + name + '=' + std::to_string(n->storedNumber(key)) + n->alias(key);
            if (n->storedData(key) != nullptr) all += " data";
            if (n->state(key).isLocked) all += " locked";
        }
        return all;
    }

    Warnings warnings;
    ToyGraph graph;
    NodeRef n;
    NodeRef low;
};

TEST_P(StepOnAMissingNode, IsLeftOutAndSaidOnce) {
    ChangeList changes;
    {
        const RecordingScope recording(graph, &changes);
        GetParam().run(graph);
    }
    graph.deleteNodes({n, low});
    const std::string before = everything();
    changes.undo(graph);
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(warnings.texts.size(), 1U);
    changes.redo(graph);
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(warnings.texts.size(), GetParam().isSaidByRedo ? 2U : 1U);
}

INSTANTIATE_TEST_SUITE_P(Kinds, StepOnAMissingNode, testing::ValuesIn(kSteps),
                         [](const auto& parameter) { return parameter.param.name; });

/// Records what changes a graph.
template <typename Change>
ChangeList& record(ToyGraph& graph, ChangeList& changes, Change change) {
    const RecordingScope recording(graph, &changes);
    change();
    return changes;
}

TEST_F(StepOnAMissingNode, NamesTheNodesInOneWarning) {
    ChangeList changes;
    record(graph, changes, [&] {
        for (int k = 0; k < 5; ++k)
            graph.setNumber(graph.at("n.weights").element(k), k + 2);
        graph.setNumber(graph.at("low.offsetX"), 1);
        graph.setNumber(graph.at("m.precise"), 9);
    });
    graph.deleteNodes({n, low});
    changes.undo(graph);
    ASSERT_EQ(warnings.texts.size(), 1U);
    EXPECT_NE(warnings.texts[0].find("low and 1 more"), std::string::npos) << warnings.texts[0];
    EXPECT_EQ(graph.valueOf("m.precise"), 2.5) << "what is there is stepped on";
}

TEST_F(StepOnAMissingNode, SelectsTheOthers) {
    Selection both;
    for (const char* name : {"n", "m"})
        both.add({findNode(graph, name), {}, {}});
    graph.select(both);
    ChangeList changes;
    record(graph, changes, [&] { graph.select({}); });
    graph.deleteNodes({n});
    changes.undo(graph);
    ASSERT_EQ(graph.selection().items().size(), 1U);
    EXPECT_EQ(graph.selection().items()[0].node->name(), "m");
    EXPECT_EQ(warnings.texts.size(), 1U);
}

TEST(Links, leaveNoEndBehindWhereAStepFindsAnotherSource) {
    ToyGraph graph;
    for (const char* name : {"a", "b", "c"})
        graph.make("holder", name);
    ChangeList changes;
    record(graph, changes, [&] { graph.connect(graph.at("a.precise"), graph.at("c.precise")); });
    graph.connect(graph.at("b.precise"), graph.at("c.precise"));
    const std::string byB = sceneDump(graph);
    changes.undo(graph);
    EXPECT_EQ(sceneDump(graph), byB) << "the connection to take back is not there";
    changes.redo(graph);
    EXPECT_EQ(graph.source(graph.at("c.precise")), graph.at("a.precise"));
    EXPECT_TRUE(nodeOf(graph, "b").outgoing().empty());
    graph.deleteNodes({nodeOf(graph, "c").ref()});
    EXPECT_TRUE(graph.connections(nodeOf(graph, "a")).empty());
    EXPECT_TRUE(graph.connections(nodeOf(graph, "b")).empty());
}

TEST(Links, goWithTheAttributeThatUndoTakesAway) {
    ToyGraph graph;
    const NodeRef a = graph.make("holder", "a");
    const NodeRef b = graph.make("holder", "b");
    {
        ChangeList changes;
        record(graph, changes, [&] { graph.addAttribute(*a, number("extra", "ex")); });
        graph.connect(graph.at("b.precise"), graph.at("a.extra"));
        changes.undo(graph);
    }
    EXPECT_TRUE(graph.connections(*a).empty());
    EXPECT_TRUE(graph.connections(*b).empty());
}

}  // namespace
