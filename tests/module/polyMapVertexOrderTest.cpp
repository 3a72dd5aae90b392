// dv_polyMapVertexOrder builds maps: what it pairs, and what it says about the shells that it cannot pair.

#include <algorithm>
#include <cmath>

#include "support/variants.h"
#include "vertexOrderFixture.h"

namespace {

using namespace vertexOrder;

bool liesInPlane(const Mesh& mesh, int axis) {
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        if (mesh.point(vertex)[axis] != 0.0) return false;
    }
    return true;
}

class MapOfEveryMesh : public MapVertexOrder, public ::testing::WithParamInterface<zoo::NamedMesh> {};

TEST_P(MapOfEveryMesh, PairsVerticesBothWaysAndCountsItsGaps) {
    add(GetParam().mesh);
    for (const char* axis : {"x", "y", "z"}) {
        const Outcome outcome = call(std::string("-axis ") + axis + " base");
        // A mesh within the plane has no two sides: there the order of neighbours decides what is paired.
        const bool isUsualOrder = variant().neighbourOrder == host::graph::NeighbourOrder::Ascending;
        if (!isUsualOrder && liesInPlane(GetParam().mesh, axis[0] - 'x')) continue;
        if (!outcome.ok) {
            EXPECT_FALSE(outcome.errors.empty());
            continue;
        }
        const Ints partners = map();
        ASSERT_EQ(static_cast<int>(partners.size()), mesh_.vertexCount());
        int gaps = 0;
        for (int vertex = 0; vertex < mesh_.vertexCount(); ++vertex) {
            const int partner = partners[static_cast<std::size_t>(vertex)];
            gaps += partner == -1 ? 1 : 0;
            if (partner == -1) continue;
            EXPECT_EQ(partners[static_cast<std::size_t>(partner)], vertex) << axis;
        }
        EXPECT_EQ(outcome.value.toInt(), gaps < mesh_.vertexCount() ? 1 : -1);
        // A mesh without vertices has an empty map, which is no map.
        EXPECT_EQ(result("-check base"), mesh_.vertexCount() > 0 ? gaps : -1);
    }
}

INSTANTIATE_TEST_SUITE_P(Zoo, MapOfEveryMesh, ::testing::ValuesIn(zoo::allMeshes()),
                         [](const auto& test) { return test.param.name; });

/// What lay along x lies along another axis then.
Mesh turned(Mesh mesh, int axis) {
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        const host::geometry::Vec3 before = mesh.point(vertex);
        host::geometry::Vec3 after = before;
        for (const int k : {0, 1, 2})
            after[(k + axis) % 3] = before[k];
        mesh.setPoint(vertex, after);
    }
    return mesh;
}

struct Symmetric {
    std::string name;
    Mesh mesh;
    std::string axis;

    friend void PrintTo(const Symmetric& symmetric, std::ostream* out) { *out << symmetric.name; }
};

class MapOfSymmetricMesh : public MapVertexOrder, public ::testing::WithParamInterface<Symmetric> {};

TEST_P(MapOfSymmetricMesh, PairsMirrorImagesAndOutlastsSculpting) {
    add(GetParam().mesh);
    EXPECT_EQ(result("-a " + GetParam().axis + " base"), 1);
    const Ints partners = map();
    const std::size_t axis = GetParam().axis == "x" ? 0 : GetParam().axis == "y" ? 1 : 2;
    for (int vertex = 0; vertex < mesh_.vertexCount(); ++vertex) {
        const int partner = partners[static_cast<std::size_t>(vertex)];
        ASSERT_NE(partner, -1);
        host::geometry::Vec3 mirrored = mesh_.point(vertex);
        mirrored[static_cast<int>(axis)] *= -1.0;
        const host::geometry::Vec3 found = mesh_.point(partner);
        for (const int k : {0, 1, 2})
            EXPECT_NEAR(found[k], mirrored[k], 1e-4) << vertex << " and " << partner;
    }
    EXPECT_EQ(result("-ck base"), 0);
    scene_.mel("move -relative -objectSpace 0.3 0.1 0.2 base.vtx[0:1]");
    EXPECT_EQ(result("-ck base"), 0);
    EXPECT_EQ(map(), partners);
}

INSTANTIATE_TEST_SUITE_P(
    Zoo, MapOfSymmetricMesh,
    ::testing::Values(Symmetric{"grid", zoo::openGrid(), "x"},
                      Symmetric{"gridAcrossZ", zoo::openGrid(3, 6), "z"},
                      Symmetric{"sphere", zoo::sphereWithPoles(), "x"},
                      Symmetric{"sphereAcrossZ", zoo::sphereWithPoles(), "z"},
                      Symmetric{"fan", zoo::fan(), "x"}, Symmetric{"pair", zoo::mirroredShellPair(), "x"},
                      Symmetric{"pairAcrossY", turned(zoo::mirroredShellPair(), 1), "y"},
                      Symmetric{"pairAcrossZ", turned(zoo::mirroredShellPair(), 2), "z"},
                      Symmetric{"shuffledPair", zoo::shuffled(zoo::mirroredShellPair(), 3), "x"},
                      Symmetric{"head", zoo::shuffledHead(), "x"}),
    [](const auto& test) { return test.param.name; });

TEST_F(MapVertexOrder, AnyOtherAxisTextIsX) {
    add(twoQuads());
    EXPECT_EQ(result("-axis w base"), 1);
    EXPECT_EQ(map(), Ints({2, 1, 0, 5, 4, 3}));
}

TEST_F(MapVertexOrder, ATransformStandsForItsFirstChild) {
    add(twoQuads());
    scene_.addMesh("other", twoQuads());
    scene_.mel("parent -shape -relative otherShape base");
    EXPECT_EQ(result("base"), 1);
    EXPECT_TRUE(hasMap("baseShape"));
    EXPECT_FALSE(hasMap("otherShape"));
}

TEST_F(MapVertexOrder, KeepsTheMapWhereNoEditorShowsIt) {
    add(twoQuads());
    result("base");
    EXPECT_EQ(scene_.mel("attributeQuery -node baseShape -hidden dvVertexOrderMap").toInt(), 1);
}

TEST_F(MapVertexOrder, IsNotUndoable) {
    add(twoQuads());
    scene_.mel("flushUndo");
    result("base");
    scene_.run("undo");
    EXPECT_EQ(map(), Ints({2, 1, 0, 5, 4, 3}));
}

TEST_F(MapVertexOrder, FullDetailsOfACentreEdge) {
    if (variant().neighbourOrder != host::graph::NeighbourOrder::Ascending)
        GTEST_SKIP() << "the order in which the host lists neighbours decides which of them is named";
    add(twoQuads());
    const Outcome outcome = call("-v 2 base");
    EXPECT_EQ(
        outcome.infos,
        Strings({"Shell: 0  Start ID: 0  Faces: 2  Vertices: 6  Face ID: -1  Vertex ID: 4  "
                 "BBox min: -1 0 0  BBox max: 1 0 1  ",
                 "1 of 1 shells verified.", "Components:  ",
                 "Face1: 0  Face2: 1  Vertex1: 4  Vertex2: 1  Shell Face Size: 2  Shell Vertex Size: 6"}));
    EXPECT_TRUE(outcome.warnings.empty());
}

TEST_F(MapVertexOrder, FullDetailsOfAPair) {
    if (variant().neighbourOrder != host::graph::NeighbourOrder::Ascending)
        GTEST_SKIP() << "the order in which the host lists neighbours decides which of them is named";
    add(meshOf({1, 0, 0, 2, 0, 0, 2, 0, 1, -1, 0, 0, -2, 0, 0, -2, 0, 1}, {{0, 1, 2}, {3, 5, 4}}));
    EXPECT_EQ(call("-v 2 -sl base").infos,
              Strings({"Shell: 0  Start ID: 0  Faces: 1  Vertices: 3  Face ID: -1  Vertex ID: 0  "
                       "BBox min: 1 0 0  BBox max: 2 0 1  ",
                       "Shell: 1  Start ID: 1  Faces: 1  Vertices: 3  Face ID: -1  Vertex ID: 3  "
                       "BBox min: -2 0 0  BBox max: -1 0 1  ",
                       "2 of 2 shells verified.", "Components:  ",
                       "Face1: 0  Face2: 1  Vertex1: 0  Vertex2: 1  Vertex3: 3  Vertex4: 4  "
                       "Shell Face Size: 1  Shell Vertex Size: 3"}));
    EXPECT_EQ(selected(), Strings({"base.f[0]", "base.f[1]", "base.vtx[0]", "base.vtx[1]", "base.vtx[3]",
                                   "base.vtx[4]"}));
    EXPECT_EQ(map(), Ints({3, 4, 5, 0, 1, 2}));
}

TEST_F(MapVertexOrder, AShellOffThePlaneIsPointedOut) {
    add(zoo::cube());
    const Outcome quiet = call("-tol 0 base");
    EXPECT_TRUE(quiet.ok);
    EXPECT_EQ(quiet.value.toInt(), -1);
    EXPECT_EQ(quiet.infos, closingLines("x", "0.01")) << "a hundredth of the length of the edges";
    EXPECT_EQ(quiet.warnings, kClosingWarning);
    EXPECT_EQ(map(), Ints(8, -1)) << "the map is written all the same";
    const Outcome verbose = call("-a y -v 1 base");
    EXPECT_EQ(
        verbose.infos,
        Strings({"One or more shells have been found with no provided symmetry components and no centered "
                 "vertices.",
                 "Use the following command to indicate the affected shell:",
                 "polySelect -extendToShell 0 baseShape;", "0 of 1 shells verified."}) +
            closingLines("y", "0.0001"));
    EXPECT_EQ(verbose.warnings,
              Strings{"A second center vertex cannot be found for a shell without user defined components."} +
                  kClosingWarning);
}

TEST_F(MapVertexOrder, ACentreEdgeMayEndAtTheFirstVertex) {
    add(meshOf({0, 0, 0, 0, 0, 1, -1, 0, 0, -1, 0, 1, 1, 0, 0, 1, 0, 1}, {{1, 0, 2, 3}, {0, 1, 5, 4}}));
    EXPECT_EQ(result("base"), 1);
    EXPECT_EQ(map(), Ints({0, 1, 4, 5, 2, 3}));
}

TEST_F(MapVertexOrder, AShellThatTouchesThePlaneInOneVertexIsPointedOut) {
    // Symmetric across z as well, so that an edge from the plane outwards is one to begin at.
    add(meshOf({0, 0, 0, 2, 0, -1, 1, 0, 0, 2, 0, 1}, {{0, 1, 2}, {0, 2, 3}}));
    const Outcome outcome = call("-v 1 base");
    EXPECT_EQ(outcome.value.toInt(), 1);
    EXPECT_EQ(
        outcome.infos,
        Strings({"One or more shells have been found with no provided symmetry components and no centered "
                 "vertices.",
                 "Use the following command to indicate the affected shell:",
                 "polySelect -extendToShell 0 baseShape;", "1 of 1 shells verified."}) +
            closingLines("x", "0.0001"));
    EXPECT_EQ(outcome.warnings, kClosingWarning);
    EXPECT_EQ(map(), Ints({0, 3, 2, 1}));
}

TEST_F(MapVertexOrder, AFailedSearchOnThePlaneIsToldToo) {
    // One side only: the edge on the plane has one face.
    add(meshOf({0, 0, 0, 1, 0, 0, 1, 0, 1, 0, 0, 1}, {{0, 3, 2, 1}}));
    const Outcome outcome = call("base");
    EXPECT_EQ(outcome.value.toInt(), -1);
    EXPECT_EQ(outcome.infos, closingLines("x", "0.0001"));
    EXPECT_EQ(outcome.warnings,
              Strings{"The symmetry edge must be connected to two faces."} + kClosingWarning);
}

TEST_F(MapVertexOrder, OfThreeEqualShellsTheFirstTwoAreAPairAndTheFirstStandsForTheThird) {
    // Three pairs of quads along z, each over the plane.
    Mesh row;
    row = host::geometry::uniteMeshes(
              {twoQuads(), twoQuads(), twoQuads()},
              {host::geometry::Matrix4(), host::geometry::Matrix4::translation({0, 0, 2}),
               host::geometry::Matrix4::translation({0, 0, 4})})
              .mesh;
    add(row);
    const Outcome outcome = call("-v 1 base");
    EXPECT_EQ(outcome.value.toInt(), 1);
    EXPECT_EQ(outcome.infos, Strings({"Some paired shells have an overlap which is too large.",
                                      "Use the following command/s to indicate the affected shell/s:",
                                      "polySelect -extendToShell 0 baseShape;", "1 of 3 shells verified."}) +
                                 closingLines("x", "0.0001"));
    EXPECT_EQ(map(), Ints({2, 1, 0, 5, 4, 3, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1}));
}

/// Triangles far from the plane, each with its first corner at x.
Mesh triangles(const std::vector<float>& places, float extent = 1.0F) {
    std::vector<float> points;
    std::vector<Ints> faces;
    for (const float x : places) {
        const float away = x > 0 ? x + extent : x - extent;
        const int first = static_cast<int>(points.size() / 3);
        points.insert(points.end(), {x, 0, 0, away, 0, 0, away, 0, 1});
        faces.push_back(x > 0 ? Ints{first, first + 1, first + 2} : Ints{first, first + 2, first + 1});
    }
    return meshOf(points, faces);
}

TEST_F(MapVertexOrder, ThreeOverlappingShellsAreNoPair) {
    add(triangles({1, -1, -1.25F, 8}));
    const Outcome outcome = call("-v 1 base");
    EXPECT_EQ(outcome.value.toInt(), -1);
    EXPECT_EQ(outcome.infos,
              Strings({"Some paired shells have an overlap which is too large.",
                       "Use the following command/s to indicate the affected shell/s:",
                       "polySelect -extendToShell 0 baseShape;", "polySelect -extendToShell 1 baseShape;",
                       "polySelect -extendToShell 2 baseShape;",
                       // The second pair has but one shell left.
                       "Some paired shells have an overlap which is too large.",
                       "Use the following command/s to indicate the affected shell/s:",
                       "polySelect -extendToShell 3 baseShape;", "0 of 4 shells verified."}) +
                  closingLines("x", "0.0001"));
}

TEST_F(MapVertexOrder, APairWhoseMirrorImageIsNearAnotherShellFails) {
    // The partner is a little off; a shell of two faces lies where the first face's mirror image is.
    add(meshOf({1,     0,     0, 2,  0, 0, 2,  0, 1, -1.2F, 0.5F, 0, -2.2F, 0.5F, 0,
                -2.2F, -0.5F, 1, -1, 0, 0, -1, 1, 0, -3,    1,    0, -3,    0,    0},
               {{0, 1, 2}, {3, 5, 4}, {6, 7, 8}, {6, 8, 9}}));
    const Outcome outcome = call("-v 1 base");
    EXPECT_EQ(outcome.value.toInt(), -1);
    const Strings expected{"Unable to find all necessary symmetry components for a shell pair.",
                           "Use the following commands to indicate the affected shells:",
                           "polySelect -extendToShell 0 baseShape;",
                           "polySelect -extendToShell 1 baseShape;"};
    ASSERT_GE(outcome.infos.size(), expected.size());
    EXPECT_NE(std::search(outcome.infos.begin(), outcome.infos.end(), expected.begin(), expected.end()),
              outcome.infos.end())
        << ::testing::PrintToString(outcome.infos);
}

/// A pair whose left shell begins where a shell of two faces, with lower numbers, has a corner.
Mesh pairWithAShellInTheWay() {
    return meshOf(
        {0, 0, 0, -1, 0, 0, -1, 1, 0, -3, 1, 0, 1, 0, 0, 2, 0, 0, 2, 0, 1, -1, 0, 0, -2, 0, 0, -2, 0, 1},
        {{0, 1, 2}, {1, 3, 2}, {4, 5, 6}, {7, 9, 8}});
}

TEST_F(MapVertexOrder, AShellWithAPointThatIsNoNumberIsStillInTheWay) {
    if (variant().faceTie != host::graph::FaceTie::First)
        GTEST_SKIP() << "which face is answered where two shells share a place decides what is in the way";
    Mesh mesh = pairWithAShellInTheWay();
    mesh.setPoint(0, {std::nan(""), 0, 0});
    add(mesh);
    EXPECT_EQ(call("base").value.toInt(), -1);
    EXPECT_EQ(map(), Ints(10, -1));
}

TEST_F(MapVertexOrder, AMarkedShellIsStillInTheWay) {
    add(pairWithAShellInTheWay());
    const Outcome outcome = call(edge(1, 2));
    EXPECT_EQ(outcome.warnings, kClosingWarning);
    EXPECT_EQ(map(), Ints({3, 1, 2, 0, -1, -1, -1, -1, -1, -1}));
}

TEST_F(MapVertexOrder, ASelectedEdgeStartsAShellThatIsNotOnThePlane) {
    if (variant().neighbourOrder != host::graph::NeighbourOrder::Ascending)
        GTEST_SKIP() << "the order in which the host lists neighbours decides which of them is named";
    // The left shell is found, the right one marked.
    add(host::geometry::uniteMeshes({twoQuads(5.0F), twoQuads()}).mesh);
    const Outcome outcome = call("-v 2 " + edge(1, 4));
    EXPECT_EQ(outcome.value.toInt(), 1);
    ASSERT_EQ(outcome.infos.size(), 6U);
    EXPECT_EQ(outcome.infos[0],
              "Shell: 0  Start ID: 0  Faces: 2  Vertices: 0  Face ID: 0  Vertex ID: -1  BBox min: 0 0 0  "
              "BBox max: 0 0 0  ");
    EXPECT_EQ(outcome.infos[2], "2 of 2 shells verified.");
    EXPECT_TRUE(outcome.warnings.empty());
    EXPECT_EQ(map(), Ints({2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9}));
}

TEST_F(MapVertexOrder, AWalkThatRunsOutOfFacesLeavesTheMapAlone) {
    if (variant().neighbourOrder != host::graph::NeighbourOrder::Ascending)
        GTEST_SKIP() << "the order in which the host lists neighbours decides which of them is named";
    add(zoo::nonManifoldFin());
    setMap(Ints(8, 7));
    const Outcome outcome = call("base");
    EXPECT_FALSE(outcome.ok);
    // Both passes fail; the first speaks first.
    EXPECT_EQ(outcome.warnings, Strings(2, "Failed to process all faces."));
    ASSERT_EQ(outcome.infos.size(), 4U);
    EXPECT_EQ(outcome.infos[0], "Shell index: 0");
    EXPECT_EQ(outcome.infos[1].substr(0, 10), "Vertices: ");
    EXPECT_EQ(Strings(outcome.infos.begin(), outcome.infos.begin() + 2),
              Strings(outcome.infos.begin() + 2, outcome.infos.end()));
    EXPECT_EQ(outcome.errors, Strings({"Error while iterating the mesh during the first pass.",
                                       "Error while iterating the mesh during the second pass."}));
    EXPECT_EQ(map(), Ints(8, 7));
}

TEST_F(MapVertexOrder, HalvesOfDifferentSizeLeaveTheMapAlone) {
    // Two quads at the right, a quad and a triangle at the left.
    add(meshOf({1, 0,  0, 2, 0,  0, 3, 0,  0, 1, 0,  1, 2, 0,  1, 3, 0,
                1, -1, 0, 0, -2, 0, 0, -1, 0, 1, -2, 0, 1, -3, 0, 1},
               {{0, 3, 4, 1}, {1, 4, 5, 2}, {6, 7, 9, 8}, {7, 10, 9}}));
    setMap(Ints(11, -1));
    const Outcome outcome = call("-atm " + edge(1, 4) + " " + edge(7, 9));
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.infos, Strings({"Shell index: 0", "Pass counts: 6, 5"}));
    EXPECT_EQ(outcome.errors,
              Strings{"Remapping failed because the two passes have a different vertex count."});
    EXPECT_EQ(map(), Ints(11, -1));
}

TEST_F(MapVertexOrder, TheFaceCountsOfMarkedShellsGoToTheStartsInTheirOrder) {
    add(host::geometry::uniteMeshes({twoQuads(5.0F), twoQuads(-5.0F), zoo::openGrid()}).mesh);
    const Outcome outcome = call("-v 2 " + edge(1, 4) + " " + edge(7, 10) + " " + edge(19, 24));
    EXPECT_EQ(outcome.value.toInt(), 1);
    ASSERT_EQ(outcome.infos.size(), 8U);
    const auto ending = [&](std::size_t line, std::size_t length) {
        return outcome.infos[line].substr(outcome.infos[line].size() - length);
    };
    const std::string two = "Shell Face Size: 2  Shell Vertex Size: 0";
    EXPECT_EQ(ending(5, two.size()), two);
    EXPECT_EQ(ending(6, two.size()), two);
    const std::string many = "Shell Face Size: 12  Shell Vertex Size: 0";
    EXPECT_EQ(ending(7, many.size()), many);
    EXPECT_TRUE(outcome.warnings.empty());
}

/// Two edges of one shell: the second start has no face count of its own, as there is one for each shell.
TEST_F(MapVertexOrder, TellsOfASelectedEdgeWithoutAFaceCount) {
    add(zoo::openGrid());
    const std::string edges = "base.e[" + std::to_string(mesh_.topology().findEdge(2, 7)) + "] base.e[" +
                              std::to_string(mesh_.topology().findEdge(7, 12)) + "]";
    const Outcome quiet = call(edges);
    EXPECT_EQ(quiet.value.toInt(), 1);
    EXPECT_EQ(quiet.warnings, kClosingWarning);
    EXPECT_EQ(result("-ck base"), 0) << "the first start covers the shell";
    const Outcome told = call("-verbose 1 " + edges);
    ASSERT_GE(told.infos.size(), 3U);
    EXPECT_EQ(told.infos[0],
              "One or more selected edges mark shells of different face counts, or the same shell.");
    EXPECT_EQ(told.infos[2].substr(0, 26), "polySelect -extendToShell ");
}

}  // namespace
