#include <gtest/gtest.h>

#include "graph/hierarchy.h"
#include "host/graphFixture.h"
#include "support/dumpDifference.h"

namespace {

using namespace graphtest;

TEST(Connections, carryTheValueAndLeaveItWhenBroken) {
    ToyGraph graph;
    graph.make("holder", "a");
    graph.make("holder", "b");
    graph.setNumber(graph.at("a.precise"), 6);
    graph.setNumber(graph.at("b.whole"), 1);
    graph.connect(graph.at("a.precise"), graph.at("b.whole"));
    graph.setNumber(graph.at("a.precise"), 8.75);
    EXPECT_EQ(graph.valueOf("b.whole"), 8.0) << "read as what the destination stores";
    graph.disconnect(graph.at("b.whole"));
    graph.setNumber(graph.at("a.precise"), 1);
    EXPECT_EQ(graph.valueOf("b.whole"), 8.0);
}

TEST(Connections, ofACompoundCarryItsChildren) {
    ToyGraph graph;
    graph.make("holder", "a");
    graph.make("holder", "b");
    graph.setNumber(graph.at("a.colourY"), 0.5);
    graph.connect(graph.at("a.colour"), graph.at("b.points[3]"));
    EXPECT_EQ(graph.valueOf("b.points[3].py"), 0.5);
    EXPECT_EQ(graph.elements(graph.at("b.points")), (std::vector<int>{3})) << "a connected element exists";
    graph.disconnect(graph.at("b.points[3]"));
    graph.setNumber(graph.at("a.colourY"), 0);
    EXPECT_EQ(graph.valueOf("b.points[3].py"), 0.5);
    EXPECT_EQ(graph.valueOf("b.points[3].px"), 0.0);
}

TEST(Connections, carryDataAndReplaceOneAnother) {
    ToyGraph graph;
    graph.make("holder", "a");
    graph.make("holder", "b");
    graph.make("holder", "c");
    graph.setData(graph.at("a.text"), text("first"));
    graph.setData(graph.at("b.text"), text("second"));
    graph.connect(graph.at("a.text"), graph.at("c.names[0]"));
    EXPECT_EQ(graph.textOf("c.names[0]"), "first");
    graph.connect(graph.at("b.text"), graph.at("c.names[0]"));
    EXPECT_EQ(graph.textOf("c.names[0]"), "second");
    EXPECT_TRUE(graph.destinations(graph.at("a.text")).empty());
    EXPECT_EQ(graph.connections(*graph.at("c.text").node()).size(), 1U);
    EXPECT_EQ(graph.connectionsBelow(graph.at("c.names")).size(), 1U);
    EXPECT_TRUE(graph.connectionsBelow(graph.at("c.names[1]")).empty());
}

TEST(Connections, inACycleOfPlainValuesYieldTheStoredOne) {
    ToyGraph graph;
    for (const char* name : {"a", "b", "c"})
        graph.make("holder", name);
    graph.setNumber(graph.at("a.precise"), 4);
    graph.connect(graph.at("a.precise"), graph.at("b.precise"));
    graph.connect(graph.at("b.precise"), graph.at("c.whole"));
    graph.connect(graph.at("c.whole"), graph.at("b.single"));
    graph.connect(graph.at("b.single"), graph.at("c.whole"));
    EXPECT_EQ(graph.valueOf("a.precise"), 4.0) << "beside the cycle";
    EXPECT_EQ(graph.valueOf("c.whole"), graph.at("c.whole").node()->storedNumber(graph.at("c.whole").key()));
    EXPECT_EQ(graph.valueOf("b.single"),
              graph.at("b.single").node()->storedNumber(graph.at("b.single").key()));
}

TEST(Connections, andChildrenMadeWithoutARecordSurviveTheUndoOfTheirNode) {
    ToyGraph graph;
    const NodeRef keep = graph.make("place", "keep");
    ChangeList creation;
    NodeRef parent;
    {
        const RecordingScope recording(graph, &creation);
        parent = graph.make("place", "parent");
    }
    const NodeRef child = graph.make("place", "child", parent);
    graph.connect(graph.at("parent.offset"), graph.at("keep.offset"));
    creation.undo(graph);
    EXPECT_EQ(child->parent(), nullptr);
    EXPECT_EQ(graph.fullPath(*child), "|child");
    EXPECT_TRUE(graph.connections(*keep).empty());
    creation.redo(graph);
    EXPECT_TRUE(parent->isAlive());
    EXPECT_EQ(graph.fullPath(*child), "|child");
}

TEST(Evaluation, computesOncePerChangeUpstream) {
    ToyGraph graph;
    for (const char* name : {"first", "second", "aside"})
        graph.make("adder", name);
    graph.connect(graph.at("first.sum"), graph.at("second.left"));
    graph.setNumber(graph.at("first.left"), 2);
    graph.setNumber(graph.at("second.right"), 5);
    EXPECT_EQ(graph.valueOf("second.sum"), 7.0);
    EXPECT_EQ(graph.valueOf("second.sum"), 7.0);
    EXPECT_EQ(computeCounts()["second"], 1);
    graph.setNumber(graph.at("aside.left"), 1);
    EXPECT_EQ(graph.valueOf("second.sum"), 7.0);
    EXPECT_EQ(computeCounts()["second"], 1);
    graph.setNumber(graph.at("first.right"), 1);
    EXPECT_EQ(graph.valueOf("second.sum"), 8.0);
    EXPECT_EQ(computeCounts()["first"], 2);
    EXPECT_EQ(computeCounts()["second"], 2);
}

TEST(Evaluation, aCycleEndsWithTheValueFromBefore) {
    ToyGraph graph;
    graph.make("adder", "a");
    graph.make("adder", "b");
    graph.setNumber(graph.at("a.right"), 1);
    graph.connect(graph.at("a.sum"), graph.at("b.left"));
    graph.connect(graph.at("b.sum"), graph.at("a.left"));
    // Of b, which is being computed, a gets the value that it had: none yet.
    EXPECT_EQ(graph.valueOf("b.sum"), 1.0);
    EXPECT_EQ(graph.valueOf("a.sum"), 1.0);
}

TEST(Deleting, takesServiceNodesAlongThatFeedNobodyElse) {
    ToyGraph graph;
    for (const char* name : {"lonely", "shared"})
        graph.make("adder", name);
    const NodeRef reader = graph.make("holder", "reader");
    graph.make("holder", "other");
    graph.connect(graph.at("lonely.sum"), graph.at("reader.precise"));
    graph.connect(graph.at("shared.sum"), graph.at("reader.single"));
    graph.connect(graph.at("shared.sum"), graph.at("other.single"));
    // A message does not keep a node.
    graph.connect(graph.at("lonely.message"), graph.at("other.members[0]"));
    graph.deleteNodes({reader});
    EXPECT_EQ(findNode(graph, "lonely"), nullptr);
    EXPECT_NE(findNode(graph, "shared"), nullptr);
    EXPECT_FALSE(reader->isAlive());
    EXPECT_TRUE(reader->incoming().empty());
}

TEST(Deleting, joinsWhatANodePassesThrough) {
    ToyGraph graph;
    for (const char* name : {"one", "two", "three", "end"})
        graph.make("adder", name);
    graph.make("holder", "reader");
    graph.setNumber(graph.at("one.left"), 4);
    graph.setNumber(graph.at("two.right"), 10);
    graph.setNumber(graph.at("three.right"), 100);
    graph.connect(graph.at("one.sum"), graph.at("two.left"));
    graph.connect(graph.at("two.sum"), graph.at("three.left"));
    graph.connect(graph.at("three.sum"), graph.at("reader.precise"));
    EXPECT_EQ(graph.valueOf("reader.precise"), 114.0);
    graph.deleteNodes({findNode(graph, "two"), findNode(graph, "three")});
    EXPECT_EQ(graph.source(graph.at("reader.precise")), graph.at("one.sum"));
    EXPECT_EQ(graph.valueOf("reader.precise"), 4.0);
}

TEST(Deleting, aSurvivorKeepsTheValueOfTheWholeChain) {
    ToyGraph graph;
    graph.make("adder", "one");
    graph.make("adder", "two");
    graph.make("holder", "reader");
    graph.setNumber(graph.at("one.left"), 4);
    // Not through `left`, which would be passed on.
    graph.connect(graph.at("one.sum"), graph.at("two.right"));
    graph.connect(graph.at("two.sum"), graph.at("reader.precise"));
    graph.deleteNodes({findNode(graph, "one"), findNode(graph, "two")});
    EXPECT_EQ(graph.valueOf("reader.precise"), 4.0);
    EXPECT_EQ(graph.nodes().size(), 1U);
}

TEST(Attributes, addedOnesBehaveLikeTheOthersAndCanGo) {
    ToyGraph graph;
    const NodeRef node = graph.make("holder", "h");
    graph.addAttribute(*node, number("extra", "ex").withDefault(3));
    EXPECT_EQ(graph.valueOf("h.extra"), 3.0);
    graph.connect(graph.at("h.precise"), graph.at("h.extra"));
    graph.setAlias(graph.at("h.extra"), "other");
    graph.deleteAttribute(*node, *node->findAttribute("ex"));
    EXPECT_FALSE(findPlug(graph, "h.extra").ok);
    EXPECT_FALSE(findPlug(graph, "h.other").ok);
    EXPECT_TRUE(node->incoming().empty());
}

// --- undo against dumps, evaluation against a model without memory
// ------------------------------------------

/// Sum of an adder by going upstream every time.
double naive(const Plug& plug, const Graph& graph) {
    if (plug.attribute().longName() == "sum") {
        const NodeRef& node = plug.node();
        return naive(node->plug("left"), graph) + naive(node->plug("right"), graph);
    }
    const Plug source = graph.source(plug);
    return source ? naive(source, graph) : plug.node()->storedNumber(plug.key());
}

bool feeds(const Node& from, const Node& to) {
    if (&from == &to) return true;
    for (const auto& [key, links] : from.outgoing()) {
        for (const Link& link : links) {
            if (feeds(*link.node, to)) return true;
        }
    }
    return false;
}

/// Random changes of a toy scene, each through the recorder.
class RandomScene {
  public:
    explicit RandomScene(unsigned seed) : random_(seed) {}

    ToyGraph graph;

    void change() {
        switch (below(18)) {
            case 16:
            case 17:
                changeInstances();
                break;
            case 0:
                graph.make(pick({"place", "shape", "holder", "adder", "adder"}), pick({"n", "m", "n3", ""}),
                           below(2) == 0 ? any("place") : nullptr);
                break;
            case 1:
                if (const NodeRef node = any("node"); node && below(2) == 0) graph.deleteNodes({node});
                break;
            case 2:
                if (const NodeRef node = any("node")) graph.rename(*node, pick({"n", "r", "q7"}));
                break;
            case 3:
                reparent();
                break;
            case 4:
            case 5:
                connectNumbers();
                break;
            case 6:
                if (const NodeRef node = any("adder")) graph.disconnect(node->plug(pick({"left", "right"})));
                break;
            case 7:
                if (const NodeRef node = any("adder"))
                    graph.setNumber(node->plug(pick({"left", "right"})), below(100));
                break;
            case 8:
                select();
                break;
            default:
                if (const NodeRef node = any("holder")) changeHolder(node);
        }
    }

    void compareSums() {
        for (const NodeRef& node : graph.nodesOfType("adder"))
            ASSERT_EQ(graph.number(node->plug("sum")), naive(node->plug("sum"), graph)) << node->name();
    }

  private:
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    const char* pick(std::vector<const char*> options) {
        return options[static_cast<std::size_t>(below(static_cast<int>(options.size())))];
    }
    NodeRef any(const char* type) {
        const std::vector<NodeRef> nodes = graph.nodesOfType(type);
        return nodes.empty() ? nullptr
                             : nodes[static_cast<std::size_t>(below(static_cast<int>(nodes.size())))];
    }
    void changeInstances() {
        const NodeRef node = any("dagNode");
        const NodeRef parent = below(4) == 0 ? nullptr : any("place");
        if (node == nullptr) return;
        if (!graph.hasParent(*node, parent.get())) {
            if (parent == nullptr || !isBelow(*parent, *node)) graph.addInstance(*node, parent.get());
        } else if (!node->otherParents().empty()) {
            graph.removeInstance(*node, parent.get());
        }
    }
    void reparent() {
        const NodeRef node = any("dagNode");
        const NodeRef parent = any("place");
        if (node != nullptr && parent != nullptr && isBelow(*parent, *node)) return;
        if (node != nullptr) graph.reparent(*node, below(3) == 0 ? nullptr : parent.get(), below(4) - 1);
    }
    /// A plug that gives a number: computed, or plain and perhaps fed itself.
    void connectNumbers() {
        const NodeRef from = any(below(3) == 0 ? "holder" : "adder");
        const NodeRef to = any(below(3) == 0 ? "holder" : "adder");
        if (from == nullptr || to == nullptr || feeds(*to, *from)) return;
        const bool isHeld = to->isA("holder");
        graph.connect(from->plug(from->isA("holder") ? "precise" : "sum"),
                      to->plug(isHeld ? "precise" : pick({"left", "right"})));
    }
    void select() {
        Selection selection = graph.selection();
        if (const NodeRef node = any("node")) selection.toggle({node, {}, {}});
        graph.select(std::move(selection));
    }
    void changeHolder(const NodeRef& node) {
        const Plug inner = node->plug("outer").element(below(3)).child(0).element(below(3));
        switch (below(13)) {
            case 12:
                graph.setNumber(node->plug("precise"), below(50));
                break;
            case 0:
                graph.setNumber(node->plug("weights").element(below(6)), below(50));
                break;
            case 1:
                graph.setNumber(node->plug("points").element(below(6)).child(below(3)), below(50));
                break;
            case 2:
                graph.setNumber(inner.child(1).element(below(4)), below(50));
                break;
            case 3:
                graph.setData(inner.child(0), text(pick({"a", "b"})));
                break;
            case 4:
                graph.setData(node->plug("names").element(below(4)), text("n"));
                break;
            case 5:
                graph.setNumber(node->plug("colour").child(below(3)), below(9));
                break;
            case 6:
                if (const NodeRef from = any("adder"); from != nullptr && !feeds(*node, *from))
                    graph.connect(from->plug("sum"), inner.child(1).element(1));
                break;
            case 7:
                removeElement(pick({"weights", "points", "names", "outer"}), node);
                break;
            case 8:
                graph.clearElements(node->plug(pick({"weights", "points", "names", "outer"})));
                break;
            case 9:
                graph.setAlias(node->plug("weights").element(below(3)), pick({"x", "y", ""}));
                break;
            case 10:
                graph.setState(node->plug("precise"), {below(2) == 0, below(2) == 0, false});
                break;
            default:
                changeAttributes(node);
        }
    }
    void removeElement(const char* array, const NodeRef& node) {
        const Plug element = node->plug(array).element(below(4));
        for (const Connection& connection : graph.connectionsBelow(element))
            graph.disconnect(connection.destination);
        graph.removeElement(element);
    }
    void changeAttributes(const NodeRef& node) {
        if (const Attribute* extra = node->findAttribute("extra")) {
            if (below(2) == 0) {
                graph.deleteAttribute(*node, *extra);
            } else {
                graph.setNumber(node->plug(*extra), below(9));
            }
        } else {
            graph.addAttribute(*node, number("extra", "ex"));
        }
    }

    std::mt19937 random_;
};

class RandomChanges : public testing::TestWithParam<unsigned> {};

TEST_P(RandomChanges, areTakenBackAndRepeatedExactlyAndEvaluateFreshly) {
    RandomScene scene(GetParam());
    std::vector<std::string> dumps{sceneDump(scene.graph)};
    for (int step = 0; step < 400; ++step) {
        auto changes = std::make_unique<ChangeList>();
        {
            const RecordingScope scope(scene.graph, changes.get());
            scene.change();
        }
        if (step % 3 == 0) scene.compareSums();
        if (testing::Test::HasFatalFailure()) return;
        scene.graph.undoQueue().push(std::move(changes));
        dumps.push_back(sceneDump(scene.graph));
    }
    UndoQueue& queue = scene.graph.undoQueue();
    for (int round = 0; round < 2; ++round) {
        for (std::size_t step = dumps.size() - 1; step-- > 0;) {
            ASSERT_TRUE(queue.undo(scene.graph));
            const std::string now = sceneDump(scene.graph);
            ASSERT_EQ(now, dumps[step]) << "undoing " << step << '\n'
                                        << delven::test::dumpDifference(dumps[step], now);
            if (step % 5 == 0) scene.compareSums();
        }
        for (std::size_t step = 1; step < dumps.size(); ++step) {
            ASSERT_TRUE(queue.redo(scene.graph));
            const std::string now = sceneDump(scene.graph);
            ASSERT_EQ(now, dumps[step]) << "redoing " << step << '\n'
                                        << delven::test::dumpDifference(dumps[step], now);
            if (step % 5 == 0) scene.compareSums();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomChanges, testing::Range(1U, 13U));

TEST(UndoQueue, makesOneEntryOfAChunkAndForgetsWhatWasUndone) {
    ToyGraph graph;
    graph.make("holder", "h");
    const auto set = [&](double value) {
        auto changes = std::make_unique<ChangeList>();
        const RecordingScope scope(graph, changes.get());
        graph.setNumber(graph.at("h.precise"), value);
        graph.undoQueue().push(std::move(changes));
    };
    set(1);
    graph.undoQueue().openChunk();
    set(2);
    set(3);
    graph.undoQueue().closeChunk();
    EXPECT_EQ(graph.undoQueue().size(), 2U);
    graph.undoQueue().undo(graph);
    EXPECT_EQ(graph.valueOf("h.precise"), 1.0);
    set(9);
    EXPECT_FALSE(graph.undoQueue().redo(graph));
    graph.undoQueue().undo(graph);
    graph.undoQueue().undo(graph);
    EXPECT_EQ(graph.valueOf("h.precise"), 2.5);
    EXPECT_FALSE(graph.undoQueue().undo(graph));
}

}  // namespace
