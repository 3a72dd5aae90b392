// Nodes with several parents in scene files.

#include "host/sceneFixture.h"

namespace scenetest {
namespace {

const std::string kHead = R"(//Maya ASCII 2024 scene
//Name: scene.ma
requires maya "2024";
currentUnit -l centimeter -a degree -t film;
)";

/// A shape that is there four times: by two parents of its own and two above it.
const std::string kTwice = kHead + R"(createNode transform -n "a1";
createNode transform -n "a2" -p "a1";
	setAttr ".t" -type "double3" 1 0 0 ;
createNode transform -n "a3" -p "|a1|a2";
createNode mesh -n "m" -p "|a1|a2|a3";
	setAttr -s 4 ".iog";
createNode transform -n "b3" -p "|a1|a2";
	setAttr ".t" -type "double3" 0 5 0 ;
createNode transform -n "b1";
	setAttr ".t" -type "double3" 0 0 7 ;
parent -s -nc -r -add "|a1|a2" "b1";
parent -s -nc -r -add "|a1|a2|a3|m" "|a1|a2|b3" ;
createNode network -n "n";
	addAttr -ci true -sn "in" -ln "in" -at "matrix";
connectAttr "|b1|a2|b3|m.wm" "n.in";
connectAttr "|a1|a2|a3|m.iog" ":initialShadingGroup.dsm" -na;
connectAttr "|b1|a2|b3|m.iog" ":initialShadingGroup.dsm" -na;
// End of scene.ma
)";

TEST(SceneInstances, AreReadAndStayByteForByte) {
    SceneHost host;
    host.open(kTwice);
    EXPECT_EQ(host.ok("ls -ap -l m"), "|a1|a2|a3|m |b1|a2|a3|m |a1|a2|b3|m |b1|a2|b3|m");
    EXPECT_EQ(host.ok("getAttr m.worldMatrix[3]"), "1 0 0 0 0 1 0 0 0 0 1 0 1 5 7 1");
    EXPECT_EQ(host.ok("getAttr n.in"), host.ok("getAttr m.worldMatrix[3]")) << "the path names the instance";
    EXPECT_EQ(host.ok("sets -q initialShadingGroup"), "m");
    EXPECT_EQ(host.ok("file -q -modified"), "0");
    EXPECT_EQ(host.saved(), kTwice);
    host.touchOwnNodes();
    EXPECT_EQ(host.saved(), kTwice);
    host.ok("rename b1 c1; parent -add a3 c1; undo; undo");
    EXPECT_EQ(host.saved(), kTwice) << "what was undone leaves no trace";
}

/// What a change makes of the scene: the lines that go, and those that come.
struct Change {
    std::string name;
    std::string script;
    std::vector<std::string> gone;
    std::vector<std::string> added;
    std::string paths;  // of the shape
};

void PrintTo(const Change& change, std::ostream* stream) {
    *stream << change.script;
}

/// New nodes have new ids.
std::vector<std::string> withoutIds(std::vector<std::string> lines) {
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const std::string& line) { return line.find("rename -uid") != line.npos; }),
                lines.end());
    return lines;
}

class SceneInstanceChange : public testing::TestWithParam<Change> {};

TEST_P(SceneInstanceChange, IsWrittenAndReadBack) {
    const Change& change = GetParam();
    SceneHost host;
    host.open(kTwice);
    host.ok(change.script);
    EXPECT_EQ(host.ok("ls -ap -l m"), change.paths);
    const std::string text = host.saved();
    EXPECT_EQ(missingLines(kTwice, text), change.gone);
    EXPECT_EQ(withoutIds(missingLines(text, kTwice)), change.added);
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.ok("ls -ap -l m"), change.paths);
    EXPECT_EQ(host.saved(), text);
}

const char* const kB1 = "parent -s -nc -r -add \"|a1|a2\" \"b1\";";
const char* const kB3 = "parent -s -nc -r -add \"|a1|a2|a3|m\" \"|a1|a2|b3\" ;";
const char* const kWorld = "connectAttr \"|b1|a2|b3|m.wm\" \"n.in\";";
const char* const kFirst = "connectAttr \"|a1|a2|a3|m.iog\" \":initialShadingGroup.dsm\" -na;";
const char* const kLast = "connectAttr \"|b1|a2|b3|m.iog\" \":initialShadingGroup.dsm\" -na;";

/// All instances are shaded like the first one. A connection from one that is gone keeps its number.
const char* const kSecond = "connectAttr \"|a1|a2|a3|m.iog[1]\" \":initialShadingGroup.dsm\" -na;";
const char* const kGoneWorld = "connectAttr \"|a1|a2|a3|m.wm[3]\" \"n.in\";";

INSTANTIATE_TEST_SUITE_P(
    Changes, SceneInstanceChange,
    testing::Values(
        Change{"RenamingTheOtherParent",
               "rename b1 c1",
               {"createNode transform -n \"b1\";", kB1, kWorld, kLast},
               {"createNode transform -n \"c1\";", "parent -s -nc -r -add \"|a1|a2\" \"c1\";",
                "connectAttr \"|c1|a2|b3|m.wm\" \"n.in\";",
                "connectAttr \"|c1|a2|b3|m.iog\" \":initialShadingGroup.dsm\" -na;"},
               "|a1|a2|a3|m |c1|a2|a3|m |a1|a2|b3|m |c1|a2|b3|m"},
        Change{"TakingTheShapeAway",
               "parent -s -rm \"b3|m\"",
               {kB3, kWorld, kLast},
               {kSecond, kGoneWorld},
               "|a1|a2|a3|m |b1|a2|a3|m"},
        Change{"AddingAnother",
               "createNode transform -n late; parent -s -nc -add m late",
               {},
               {"createNode transform -n \"late\";", "parent -s -nc -r -add \"|a1|a2|a3|m\" \"late\";"},
               "|a1|a2|a3|m |b1|a2|a3|m |a1|a2|b3|m |b1|a2|b3|m |late|m"},
        Change{"TakingTheFirstParentAway",
               "parent -rm \"a1|a2\"",
               {"createNode transform -n \"a2\" -p \"a1\";", "createNode transform -n \"a3\" -p \"|a1|a2\";",
                "createNode mesh -n \"m\" -p \"|a1|a2|a3\";", "createNode transform -n \"b3\" -p \"|a1|a2\";",
                kB1, kB3, kWorld, kFirst, kLast},
               {"createNode transform -n \"a2\" -p \"b1\";", "createNode transform -n \"a3\" -p \"a2\";",
                "createNode mesh -n \"m\" -p \"a3\";", "createNode transform -n \"b3\" -p \"a2\";",
                "parent -s -nc -r -add \"|b1|a2|a3|m\" \"b3\";",
                "connectAttr \"|b1|a2|a3|m.iog\" \":initialShadingGroup.dsm\" -na;",
                "connectAttr \"|b1|a2|a3|m.iog[1]\" \":initialShadingGroup.dsm\" -na;",
                "connectAttr \"|b1|a2|a3|m.wm[3]\" \"n.in\";"},
               "|b1|a2|a3|m |b1|a2|b3|m"}),
    [](const auto& parameter) { return parameter.param.name; });

TEST(SceneInstances, NamesOfNodesThatGetAnotherPlaceBecomePaths) {
    SceneHost host;
    host.open(kHead +
              "createNode transform -n \"p\";\ncreateNode mesh -n \"s\" -p \"p\";\n"
              "createNode transform -n \"q\";\nconnectAttr \"s.iog\" \":initialShadingGroup.dsm\" -na;\n");
    host.ok("parent -s -add s q");
    const std::string text = host.saved();
    EXPECT_EQ(text.substr(text.find("parent ")),
              "parent -s -nc -r -add \"|p|s\" \"q\";\n"
              "connectAttr \"|p|s.iog\" \":initialShadingGroup.dsm\" -na;\n"
              "connectAttr \"|p|s.iog[1]\" \":initialShadingGroup.dsm\" -na;\n");
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.saved(), text);
}

TEST(SceneInstances, NamesWithoutPathsStayWhereTheFileHadThem) {
    SceneHost host;
    const std::string nodes = kHead + R"(createNode transform -n "a";
createNode transform -n "b";
createNode transform -n "g" -p "a";
createNode transform -n "c";
parent -s -nc -r -add "|a|g" "b";
)";
    host.open(nodes + "connectAttr \"g.tx\" \"c.tx\";\n");
    host.ok("rename c d");
    const std::string saved = host.saved();
    EXPECT_NE(saved.find("connectAttr \"g.tx\" \"d.tx\";"), std::string::npos) << saved;
}

TEST(SceneInstances, GoWithExportsAndIntoNamespaces) {
    SceneHost host;
    host.open(kTwice);
    const std::string part = host.path("part.ma");
    host.ok("select b1; file -exportSelected -type \"mayaAscii\" \"" + part + "\"");
    host.ok("file -new -force; file -open \"" + part + "\"");
    EXPECT_EQ(host.ok("ls -ap -l m"), "|a1|a2|a3|m |b1|a2|a3|m |a1|a2|b3|m |b1|a2|b3|m");
    host.ok("file -new -force; createNode transform -n a1; createNode transform -n b1");
    const std::string before = host.dump();
    host.ok("file -import -namespace \"in\" \"" + part + "\"");
    EXPECT_EQ(host.ok("ls -ap -l \"in:a3\""), "|in:a1|in:a2|in:a3 |in:b1|in:a2|in:a3");
    const std::string after = host.dump();
    host.ok("undo");
    EXPECT_EQ(host.dump(), before);
    host.ok("redo");
    EXPECT_EQ(host.dump(), after);
    host.ok("select \"in:b3\"; file -rename \"" + host.path("all.ma") + "\"; file -save -type mayaAscii");
    EXPECT_NE(host.read("all.ma").find("parent -s -nc -r -add \"|in:a1|in:a2\" \"in:b1\";"),
              std::string::npos);
    host.open(kTwice);
    host.ok("select n; file -force -exportSelected -type \"mayaAscii\" \"" + part + "\"");
    EXPECT_EQ(host.read("part.ma").find("parent -s"), std::string::npos)
        << "the other parents were not asked for";
}

/// Statements that give no node another parent are kept, and mean nothing.
TEST(SceneInstances, ThatCannotBeAreKeptAsText) {
    SceneHost host;
    const std::string text =
        kHead +
        "createNode transform -n \"a\";\ncreateNode transform -n \"b\" -p \"a\";\n"
        "createNode transform -n \"c\";\ncreateNode mesh -n \"m\" -p \"a\";\n"
        "parent -s -nc -r -add \"|a\" \"b\" ;\nparent \"|a|b\" \"c\" ;\n"
        "parent -s -nc -r -add \"|a|m\" \"a\" ;\nparent -s -nc -r -add \"|a|m\" \"m\" ;\n"
        "parent -s -nc -r -add \"c\" \"c\" ;\nparent -s -nc -r -add \"c\" ;\n"
        "parent -s -nc -r -add \"nobody\" \"c\" ;\nparent -add \"|a|m\" \"nobody\" ;\n"
        "parent -s -nc -r -add \"|a|m\" \"|a|m\" \"c\" ;\n"
        "parent -s -nc -r -add \"|a|m\" \"c\" ;\nparent -s -nc -r -add \"|a|m\" \"c\" ;\n";
    host.open(text);
    EXPECT_EQ(host.ok("ls -ap -l m b c"), "|a|m |c|m |a|b |c");
    host.touchOwnNodes();
    EXPECT_EQ(host.saved(), text);
    const std::string file = host.write("bad.ma", text + "createNode mesh -n \"x\" -p \"y\";\n");
    const std::string before = host.dump();
    EXPECT_EQ(host.fails("file -import -namespace \"n\" \"" + file + "\""),
              "bad.ma, line 20, column 1: The parent 'y' is not in the scene, or there are several.");
    EXPECT_EQ(host.dump(), before);
}

/// A circle of many nodes, one node with many parents, and the same instance again and again: what is not
/// linear does not end.
TEST(SceneInstances, InGreatNumbersTakeLinearTime) {
    constexpr int kCount = 100000;
    std::string text = kHead + "createNode transform -n \"p0\";\ncreateNode mesh -n \"m\" -p \"p0\";\n";
    std::string statements;
    for (int k = 1; k <= kCount; ++k) {
        const std::string name = "p" + std::to_string(k);
        text += "createNode transform -n \"" + name + "\";\n";
        statements += "parent -s -nc -r -add \"|p0|m\" \"" + name + "\";\n";
        statements += "parent -s -nc -r -add \"|p0|m\" \"" + name + "\";\n";
        statements += "parent -s -nc -r -add \"" + name + "\" \"p" + std::to_string(k % kCount + 1) + "\";\n";
    }
    SceneHost host;
    host.open(text + statements);
    EXPECT_EQ(host.ok("size(`listRelatives -ap m`)"), std::to_string(kCount + 1));
    EXPECT_EQ(host.ok("size(`listRelatives -ap p5`)"), "0") << "the circle was kept as text";
    EXPECT_EQ(host.fails("ls -ap m"),
              "ls: 'm' has more than 10000 paths. Leave out -allPaths to list its first one.");
    host.ok("createNode transform -n extra");
    EXPECT_NE(host.saved().find(statements), std::string::npos) << "every name was compared";
    host.ok("delete p0");
    EXPECT_EQ(host.ok("listRelatives -p m"), "p1");
}

/// Connections count instances in the order in which the file makes them.
TEST(SceneInstances, NewOnesStandBehindThoseOfTheFile) {
    SceneHost host;
    host.open(
        "requires maya \"2024\";\n"
        "createNode transform -n \"a\";\ncreateNode mesh -n \"s\" -p \"a\";\n"
        "createNode transform -n \"b\";\n\tsetAttr \".ty\" 5;\n"
        "createNode transform -n \"c\";\n\tsetAttr \".ty\" 9;\n"
        "parent -s -nc -r -add \"|a|s\" \"b\";\n");
    host.ok("addAttr -ln in -at matrix b; parent -s -add s c; connectAttr s.wm[1] b.in; select -cl");
    EXPECT_EQ(host.ok("getAttr b.in").substr(0, 30), host.ok("getAttr b.wm").substr(0, 30));
    const std::string before = host.dump();
    const std::string text = host.saved();
    EXPECT_LT(text.find("\"|a|s\" \"b\""), text.find("\"|a|s\" \"c\"")) << text;
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.dump(), before);
}

/// A part of a scene has other numbers.
TEST(SceneInstances, ExportedConnectionsMeanTheSameInstances) {
    SceneHost host;
    for (const char* name : {"a", "b", "c"})
        host.ok("createNode transform -n " + std::string(name));
    host.ok(
        "setAttr b.ty 5; setAttr c.ty 9; createNode mesh -n s -p a; parent -s -add s b; parent -s -add s c");
    for (const char* name : {"fromB", "fromC"})
        host.ok("createNode network -n " + std::string(name) + "; addAttr -ln in -at matrix " + name);
    host.ok("connectAttr s.wm[1] fromB.in; connectAttr s.wm[2] fromC.in");
    host.ok("select a c fromB fromC; file -type mayaAscii -exportSelected \"" + host.path("part.ma") + "\"");
    host.ok("file -open -force \"" + host.path("part.ma") + "\"");
    EXPECT_EQ(host.ok("listConnections -s 1 -d 0 -p 1 fromC.in"), "s.worldMatrix[1]");
    EXPECT_EQ(host.ok("getAttr fromC.in"), host.ok("getAttr c.wm"));
    EXPECT_EQ(host.ok("listConnections fromB.in"), "") << "its instance was not exported";
}

}  // namespace
}  // namespace scenetest
