// The commands on meshes and files where a script with its expectation in a comment will not do.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <sstream>
#if !defined(_WIN32)
#include <sys/stat.h>
#endif

#include "geometry/textFile.h"
#include "host/commandsFixture.h"

namespace commandstest {
namespace {

/// Host with one mesh of the zoo as "mesh".
class MeshHost : public Host {
  public:
    explicit MeshHost(const geometry::Mesh& mesh) { nodes::createMesh(graph, mesh, "mesh", nullptr); }

    std::vector<std::string> lines(const std::string& text) { return run(text).value.toStringArray(); }
};

// --- polyInfo

struct InfoCase {
    std::string name;
    std::string command;
    std::vector<std::string> lines;

    friend void PrintTo(const InfoCase& infoCase, std::ostream* stream) { *stream << infoCase.command; }
};

const std::vector<InfoCase> kInfoCases{
    {"faceToVertex", "polyInfo -faceToVertex mesh.f[0]", {"FACE      0:      0      1      3      2 \n"}},
    {"faceToEdge", "polyInfo -fe mesh.f[0]", {"FACE      0:      0      5      1      4 \n"}},
    {"edgeToVertex",
     "polyInfo -edgeToVertex mesh.e[10:11]",
     {"EDGE     10:      6      0  Smooth\n", "EDGE     11:      7      1  Smooth\n"}},
    {"edgeToFace", "polyInfo -ef mesh.e[0]", {"EDGE      0:      0      3 \n"}},
    {"vertexToEdge", "polyInfo -ve mesh.vtx[7]", {"VERTEX      7:      3      9     11 \n"}},
    {"vertexToFace", "polyInfo -vf mesh.vtx[0]", {"VERTEX      0:      0      3      5 \n"}},
    {"componentsInAnyOrder",
     "polyInfo -vf mesh.vtx[7] mesh.vtx[0]",
     {"VERTEX      0:      0      3      5 \n", "VERTEX      7:      2      3      4 \n"}},
    {"selection", "select mesh.f[5]; polyInfo -fv", {"FACE      5:      6      0      2      4 \n"}}};

class PolyInfoLayout : public testing::TestWithParam<InfoCase> {};

TEST_P(PolyInfoLayout, IsThatOfTheHost) {
    MeshHost host(zoo::cube());
    EXPECT_EQ(host.lines(GetParam().command), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(Commands, PolyInfoLayout, testing::ValuesIn(kInfoCases),
                         [](const auto& parameter) { return parameter.param.name; });

class EveryMesh : public testing::TestWithParam<zoo::NamedMesh> {};

/// The numbers of a line behind its colon.
std::vector<int> numbersOf(const std::string& line) {
    std::istringstream stream(line.substr(line.find(':') + 1));
    std::vector<int> numbers;
    for (int number = 0; stream >> number;)
        numbers.push_back(number);
    return numbers;
}

TEST_P(EveryMesh, HasPolyInfoTablesThatAgreeWithEachOther) {
    const geometry::Topology& topology = GetParam().mesh.topology();
    MeshHost host(GetParam().mesh);
    const auto edges = host.lines("polyInfo -edgeToFace mesh");
    const auto faces = host.lines("polyInfo -faceToEdge mesh");
    const auto corners = host.lines("polyInfo -faceToVertex mesh");
    ASSERT_EQ(edges.size(), static_cast<std::size_t>(topology.edgeCount()));
    ASSERT_EQ(faces.size(), static_cast<std::size_t>(topology.faceCount()));
    ASSERT_EQ(corners.size(), faces.size());
    const auto contains = [](const std::vector<int>& numbers, int number) {
        return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
    };
    for (std::size_t edge = 0; edge < edges.size(); ++edge) {
        for (const int face : numbersOf(edges[edge]))
            EXPECT_TRUE(contains(numbersOf(faces[static_cast<std::size_t>(face)]), static_cast<int>(edge)));
    }
    for (std::size_t face = 0; face < faces.size(); ++face)
        EXPECT_EQ(numbersOf(corners[face]).size(), numbersOf(faces[face]).size());
}

TEST_P(EveryMesh, KeepsItsCountsAndPointsThroughExportAndImport) {
    if (GetParam().mesh.vertexCount() == 0) return;
    const std::string first = testing::TempDir() + "delvenFirst.obj";
    const std::string second = testing::TempDir() + "delvenSecond.obj";
    MeshHost host(GetParam().mesh);
    host.ok("file -force -type \"OBJexport\" -exportAll \"" + first + "\"");
    host.ok("file -new -force");
    EXPECT_EQ(host.ok("file -import -type \"OBJ\" -rnn \"" + first + "\""), "|mesh |mesh|meshShape");
    host.ok("file -force -typ \"OBJexport\" -ea \"" + second + "\"");
    EXPECT_EQ(geometry::readTextFile(first).text, geometry::readTextFile(second).text);
    const nodes::MeshPtr mesh = nodes::meshOf(host.graph, graph::findNode(host.graph, "meshShape"));
    EXPECT_EQ(mesh->mesh.points(), GetParam().mesh.points());
    EXPECT_EQ(mesh->mesh.topology().faceVertices(), GetParam().mesh.topology().faceVertices());
    std::remove(first.c_str());
    std::remove(second.c_str());
}

INSTANTIATE_TEST_SUITE_P(Zoo, EveryMesh, testing::ValuesIn(zoo::allMeshes()),
                         [](const auto& parameter) { return parameter.param.name; });

struct ManifoldCase {
    std::string name;
    geometry::Mesh mesh;
    std::vector<std::string> edges;
    std::vector<std::string> vertices;

    friend void PrintTo(const ManifoldCase& manifoldCase, std::ostream* stream) {
        *stream << manifoldCase.name;
    }
};

geometry::Mesh opposedTriangles() {
    // Both run along edge 1-2 from 1 to 2, so they face opposite ways.
    return geometry::createMesh({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0}, {3, 3}, {0, 1, 2, 3, 1, 2}).mesh;
}

class PolyInfoManifold : public testing::TestWithParam<ManifoldCase> {};

TEST_P(PolyInfoManifold, NamesWhereTheMeshIsNone) {
    MeshHost host(GetParam().mesh);
    EXPECT_EQ(host.lines("polyInfo -nonManifoldEdges mesh"), GetParam().edges);
    EXPECT_EQ(host.lines("polyInfo -nmv mesh"), GetParam().vertices);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, PolyInfoManifold,
    testing::Values(ManifoldCase{"cube", zoo::cube(), {}, {}}, ManifoldCase{"grid", zoo::openGrid(), {}, {}},
                    ManifoldCase{"sphere", zoo::sphereWithPoles(), {}, {}},
                    ManifoldCase{"fin", zoo::nonManifoldFin(), {"mesh.e[0]"}, {"mesh.vtx[0:1]"}},
                    ManifoldCase{"sharedVertex", zoo::twoShellsSharingVertex(), {}, {"mesh.vtx[0]"}},
                    ManifoldCase{"opposed", opposedTriangles(), {"mesh.e[1]"}, {"mesh.vtx[1:2]"}}),
    [](const auto& parameter) { return parameter.param.name; });

TEST(PolyInfo, SaysWhatItCannotReport) {
    MeshHost host(zoo::cube());
    EXPECT_EQ(host.fails("polyInfo mesh"), "polyInfo: No flag says what to report.");
    EXPECT_EQ(host.fails("polyInfo -fv mesh.vtx[0]"),
              "polyInfo: -faceToVertex of components of another kind is not covered.");
    EXPECT_EQ(host.fails("polyInfo -nme mesh.vtx[0]"),
              "polyInfo: -nonManifoldEdges of components of another kind is not covered.");
    EXPECT_EQ(host.fails("polyInfo -fn mesh"), "Flag '-fn' is not covered by this host.");
}

TEST(PolyEvaluate, GivesTheTighterBoxWhenItIsToBeAccurate) {
    Host host;
    host.ok("polySphere -sx 4 -sy 2 -n \"gem\"; rotate -a 0 45 0 gem");
    const auto widest = [&](const std::string& flags) {
        return host.run("polyEvaluate -b" + flags + " gem").value.toFloatArray()[1];
    };
    EXPECT_NEAR(widest(""), std::sqrt(2.0), 1e-6);
    EXPECT_NEAR(widest(" -ae"), std::sqrt(0.5), 1e-6);
}

// --- file

class FileCommand : public testing::Test {
  protected:
    FileCommand() : folder_(std::filesystem::path(testing::TempDir()) / "delvenFileCommand") {
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    ~FileCommand() override { std::filesystem::remove_all(folder_); }

    std::string path(const std::string& name) const { return (folder_ / name).generic_string(); }
    std::string written(const std::string& name, const std::string& text) const {
        EXPECT_EQ(geometry::writeTextFile(path(name), text), "");
        return path(name);
    }

    Host host_;

  private:
    std::filesystem::path folder_;
};

constexpr const char* kTriangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\n";

TEST_F(FileCommand, NamesImportedMeshesAfterTheObjectsOrTheFile) {
    const std::string plain = written("my face-2.obj", std::string(kTriangle) + "f 1 2 3\n");
    const std::string named =
        written("parts.obj", std::string("o left:eye\n") + kTriangle + "f 1 2 3\no nose\n" + kTriangle +
                                 "g tip\nf 4 5 6\ng bridge\nf 4 6 5\n");
    EXPECT_EQ(host_.ok("file -import -type \"OBJ\" -returnNewNodes \"" + plain + "\""),
              "|my_face_2 |my_face_2|my_face_Shape2");
    EXPECT_EQ(host_.ok("file -import \"" + named + "\""), named);
    EXPECT_EQ(host_.ok("ls -type transform"), "front left_eye my_face_2 nose persp side top");
    EXPECT_EQ(host_.ok("polyEvaluate -f nose"), "2");
    EXPECT_EQ(host_.ok("sets -im initialShadingGroup left_eye nose my_face_2"), "1");
    EXPECT_EQ(host_.ok("file -i -typ \"OBJ\" -ignoreVersion -mergeNamespacesOnClash false -namespace \":\" "
                       "-options \"mo=1\" -pr -rnn \"" +
                       plain + "\""),
              "|my_face_3 |my_face_3|my_face_Shape3");
}

TEST_F(FileCommand, RunsAndOpensNothingThatAFileNames) {
    std::string text = "mtllib " + path("pipe") + "\n";
    for (const char* name : {"a; createNode transform -n run", "`delete box`", "\"); delete box; (\"",
                             "$(touch run)", "box", "|box", "..", "../../up", "-n", "\\"}) {
        text += std::string("o ") + name + "\nusemtl ../m\n" + kTriangle + "f -3 -2 -1\n";
    }
    const std::string file = written("names.obj", text);
    host_.addCube("box");
#if !defined(_WIN32)
    // Whoever opens it to read waits for somebody who writes.
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
#endif
    host_.ok("file -import \"" + file + "\"");
    EXPECT_EQ(host_.ok("size(`ls -type mesh`)"), "11");
    EXPECT_EQ(host_.ok("objExists box"), "1");
    EXPECT_EQ(host_.ok("objExists run"), "0");
    EXPECT_FALSE(std::filesystem::exists(path("run")) || std::filesystem::exists(path("m")));
}

TEST_F(FileCommand, DumpsTheSceneAsTheSameTextToAResultAndAFile) {
    host_.ok("polyPlane -n tile -sx 1 -sy 1 -ch 0; addAttr -ln note -dt \"string\" tile");
    host_.ok(
        "setAttr tile.note -type \"string\" \"two\\nlines \\\"quoted\\\"\"; setAttr -l 1 tile.tx; select "
        "-cl");
    const std::string text = host_.ok("headlessDump");
    EXPECT_NE(text.find("tile.note = string \"two\\nlines \\\"quoted\\\"\"\n"), std::string::npos) << text;
    EXPECT_NE(text.find("tileShape.inMesh = mesh points -0.5 0 0.5 0.5 0 0.5"), std::string::npos) << text;
    EXPECT_NE(text.find("state tile.translate.translateX locked keyable\n"), std::string::npos) << text;
    EXPECT_EQ(host_.ok("headlessDump -f \"" + path("scene.txt") + "\""), path("scene.txt"));
    EXPECT_EQ(geometry::readTextFile(path("scene.txt")).text, text);
    host_.ok("setAttr -l 0 tile.tx; setAttr tile.tx 0.1");
    EXPECT_EQ(dumpDifference(text, host_.ok("headlessDump")),
              "- state tile.translate.translateX locked keyable\n+ tile.translate.translateX = 0.1\n");
}

TEST_F(FileCommand, UndoesAndRedoesAnImport) {
    const std::string file = written("one.obj", std::string(kTriangle) + "f 1 2 3\n");
    const std::string before = host_.dump();
    host_.ok("file -import \"" + file + "\"");
    const std::string after = host_.dump();
    ASSERT_TRUE(host_.registry.undo());
    EXPECT_EQ(dumpDifference(before, host_.dump()), "");
    ASSERT_TRUE(host_.registry.redo());
    EXPECT_EQ(dumpDifference(after, host_.dump()), "");
}

TEST_F(FileCommand, ExportsWhatIsSelectedAsItLiesInTheWorld) {
    host_.addCube("a");
    host_.addCube("b");
    host_.ok("polyPlane -w 2 -h 2 -sx 1 -sy 1 -n \"tile\"; group -n \"set\" tile a; move 0 3 0 set");
    host_.ok("blendShape -n \"bs\" tile; parent -w a; select set");
    const std::string file = path("tile.obj");
    EXPECT_EQ(
        host_.ok("file -type \"OBJexport\" -exportSelected -options \"groups=0;normals=0\" \"" + file + "\""),
        file);
    host_.ok("file -f -new");
    host_.ok("file -import \"" + file + "\"");
    EXPECT_EQ(host_.ok("ls -type mesh"), "tileShape");
    EXPECT_EQ(host_.ok("xform -q -t tile.vtx[*]"), "-1 3 1 1 3 1 -1 3 -1 1 3 -1");
}

TEST_F(FileCommand, ReplacesAFileOnlyWhenForced) {
    host_.addCube("a");
    const std::string file = written("kept.obj", "# kept\n");
    EXPECT_EQ(host_.fails("file -type \"OBJexport\" -ea \"" + file + "\""),
              "file: " + file + " exists; -force replaces it.");
    EXPECT_EQ(geometry::readTextFile(file).text, "# kept\n");
    host_.ok("file -force -type \"OBJexport\" -ea \"" + file + "\"");
    EXPECT_NE(geometry::readTextFile(file).text, "# kept\n");
}

TEST_F(FileCommand, StartsANewSceneWithoutWhatTheOldOneHad) {
    const std::string fresh = host_.dump();
    host_.ok("file -new");
    host_.ok("polyCube -n \"box\"; blendShape box; setAttr lambert1.diffuse 0.1");
    EXPECT_EQ(host_.fails("file -new"), "Unsaved changes.");
    EXPECT_EQ(host_.ok("file -newFile -force"), "untitled");
    EXPECT_EQ(dumpDifference(fresh, host_.dump()), "");
    EXPECT_FALSE(host_.registry.undo());
    EXPECT_EQ(host_.ok("polyCube"), "pCube1 polyCube1");
    EXPECT_EQ(host_.ok("sets -q initialShadingGroup"), "pCubeShape1");
    EXPECT_EQ(host_.ok("file -q -sceneName"), "");
}

TEST_F(FileCommand, SaysWhatIsWrongAndChangesNothing) {
    const std::string two =
        written("two.obj", std::string("o a\n") + kTriangle + "f 1 2 3\no b\n" + kTriangle + "f 4 5 6\n");
    const std::string broken = written("broken.obj", std::string(kTriangle) + "f 1 2 9\n");
    const std::string none = written("none.obj", "# nothing\n");
    const std::string before = host_.dump();
    const auto quoted = [](const std::string& text) { return " \"" + text + "\""; };
    const std::vector<std::pair<std::string, std::string>> cases{
        {"file -import" + quoted(broken),
         broken + ", line 4: face refers to vertex 9, but only 3 are defined"},
        {"file -import" + quoted(none), "file: " + none + " holds no mesh."},
        {"file -import -options \"mo=0\"" + quoted(two), "file: The option mo=0 is not covered."},
        {"file -import -options \"up=z\"" + quoted(two), "file: The option up=z is not covered."},
        {"file -import -type \"mayaAscii\"" + quoted(two),
         "two.obj, line 1, column 1: 'o' is not a statement of a scene file. Nothing was opened."},
        {"file -import \"scene.mb\"",
         "file: Binary scenes are not covered by this host. Save the scene as mayaAscii (.ma) in Maya and "
         "use "
         "that file."},
        {"file -import -type \"FBX\" \"scene.fbx\"",
         "file: Files other than of type \"OBJ\" are not covered."},
        {"file -import -namespace \"rig\"" + quoted(two),
         "file: Namespaces are not covered by this host: rig"},
        {"file -import", "file: No file was named."},
        {"file -import -exportAll" + quoted(two),
         "file: Exactly one of -open, -import, -save, -rename, -newFile, -exportSelected and -exportAll is "
         "needed."},
        {"file -type \"OBJexport\" -es" + quoted(path("x.obj")), "Nothing is currently selected."},
        {"file -type \"OBJexport\" -ea" + quoted(path("x.obj")), "file: There is no mesh to export."},
        {"file -type \"OBJexport\" -options \"normals=1\" -ea" + quoted(path("x.obj")),
         "file: The option normals=1 is not covered."},
        {"file -open" + quoted(two), "file: Only scenes (.ma) can be opened. Use -import for " + two + '.'},
        {"file -reference" + quoted(two),
         "file: References cannot be made by this host. Those of an opened scene are kept, but not loaded."},
        {"file -new -force \"named\"", "file: A name for a new scene is not covered."},
        {"file -q -ignoreVersion", "file: This query is not covered by this host."}};
    for (const auto& [command, error] : cases)
        EXPECT_EQ(host_.fails(command), error) << command;
    const std::string missing = host_.fails("file -import" + quoted(path("gone.obj")));
    EXPECT_NE(missing.find(path("gone.obj")), std::string::npos) << missing;
    EXPECT_EQ(dumpDifference(before, host_.dump()), "");
    EXPECT_EQ(host_.undoSize(), 0u);
}

}  // namespace
}  // namespace commandstest
