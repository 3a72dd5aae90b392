// dv_polyMapVertexOrder extends, checks, copies and selects by maps that are there.

#include <array>
#include <ostream>

#include "support/variants.h"
#include "vertexOrderFixture.h"

namespace {

using namespace vertexOrder;

struct BadEdge {
    const char* name;
    const char* flags;
    int a, b;
    const char* line;  // that the failure is reported with on the error stream
};

class EdgeWithoutTwoFaces : public MapVertexOrder, public ::testing::WithParamInterface<BadEdge> {};

TEST_P(EdgeWithoutTwoFaces, EndsTheCall) {
    add(twoQuads());
    setMap(Ints(6, 7));
    Outcome outcome;
    const std::string report =
        standardErrorOf([&] { outcome = call(GetParam().flags + edge(GetParam().a, GetParam().b)); });
    EXPECT_NE(report.find("polyMapVertexOrder"), std::string::npos) << report;
    EXPECT_NE(report.find(GetParam().line), std::string::npos) << report;
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.warnings, Strings{"The symmetry edge must be connected to two faces."});
    EXPECT_EQ(map(), Ints(6, 7));
}

INSTANTIATE_TEST_SUITE_P(Modes, EdgeWithoutTwoFaces,
                         ::testing::Values(BadEdge{"build", "", 0, 3, "342"},
                                           BadEdge{"extend", "-atm ", 0, 3, "385"},
                                           BadEdge{"check", "-ck ", 2, 5, "342"}),
                         [](const auto& test) { return std::string(test.param.name); });

class ExtendMap : public MapVertexOrder {
  protected:
    /// A shell over the plane, and two that mirror each other in connectivity only; what is mapped is the
    /// first.
    void SetUp() override {
        Mesh right = twoQuads(4.0F);
        Mesh left = meshOf({-3, 1, 0, -4, 1, 0, -5, 1, 0, -3, 1, 2, -4, 1, 2, -5, 1, 2},
                           {{0, 1, 4, 3}, {1, 2, 5, 4}});
        add(host::geometry::uniteMeshes({twoQuads(), right, left}).mesh);
        setMap(kFirst);
    }

    const Ints kFirst{2, 1, 0, 5, 4, 3, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
};

TEST_F(ExtendMap, FromTwoEdgesByASideOfEach) {
    if (variant().neighbourOrder != host::graph::NeighbourOrder::Ascending)
        GTEST_SKIP() << "the order in which the host lists neighbours decides which of them is named";
    // The inner edges; the edges of the left shell run the other way around.
    EXPECT_EQ(result("-atm -sl " + edge(7, 10) + " " + edge(13, 16)), 1);
    const Ints both{2, 1, 0, 5, 4, 3, 12, 13, 14, 15, 16, 17, 6, 7, 8, 9, 10, 11};
    EXPECT_EQ(map(), both);
    EXPECT_EQ(selected(), Strings({"base.f[2]", "base.f[4]", "base.vtx[10]", "base.vtx[16]"}));
}

TEST_F(ExtendMap, FromTwoEdgesOfAStripEitherSide) {
    // Three quads in a row, of which the middle one is the nearer face of both inner edges.
    const std::vector<float> points{-3, 0, 0, -1, 0, 0, 1, 0, 0, 3, 0, 0,
                                    -3, 0, 1, -1, 0, 1, 1, 0, 1, 3, 0, 1};
    const Ints left{0, 4, 5, 1};
    const Ints middle{1, 5, 6, 2};
    const Ints right{2, 6, 7, 3};
    for (const std::vector<Ints>& faces : {std::vector<Ints>{middle, left, right}, {left, middle, right}}) {
        scene_.mel("file -new -force");
        add(meshOf(points, faces));
        setMap(Ints(8, -1));
        EXPECT_EQ(result("-atm " + edge(1, 5) + " " + edge(2, 6)), 1);
        EXPECT_EQ(map(), Ints({3, 2, 1, 0, 7, 6, 5, 4}));
    }
}

TEST_F(ExtendMap, FromOneEdge) {
    EXPECT_EQ(result("-atm " + edge(13, 16)), 1);
    EXPECT_EQ(map(), Ints({2, 1, 0, 5, 4, 3, -1, -1, -1, -1, -1, -1, 14, 13, 12, 17, 16, 15}));
}

TEST_F(ExtendMap, FromAnyOtherNumberOfEdgesNothing) {
    EXPECT_EQ(result("-atm base"), 1);
    EXPECT_EQ(result("-atm " + edge(7, 10) + " " + edge(13, 16) + " " + edge(1, 4)), 1);
    EXPECT_EQ(map(), kFirst);
}

TEST_F(ExtendMap, FromABorderEdgeIsPointedOut) {
    const Outcome outcome = call("-atm -v 1 " + edge(6, 9) + " " + edge(13, 16));
    EXPECT_EQ(outcome.value.toInt(), 1);
    EXPECT_EQ(outcome.infos, Strings({"Unable to find all necessary symmetry components for a shell pair.",
                                      "Use the following command to indicate the affected shell:",
                                      "polySelect -extendToShell 2 baseShape;"}) +
                                 closingLines("x", "0.0001"));
    EXPECT_EQ(outcome.warnings, kClosingWarning);
    EXPECT_EQ(map(), kFirst);
}

TEST_F(ExtendMap, FromABorderEdgeNothing) {
    // No two centres of faces and edges are as far from the plane any more.
    scene_.mel("move -relative 0.25 0 0.125 base.vtx[9]");
    for (const std::string& border : {edge(6, 9), edge(8, 11), edge(6, 7), edge(7, 8), edge(9, 10)}) {
        for (const std::string& edges : {border + ' ' + edge(13, 16), edge(13, 16) + ' ' + border}) {
            EXPECT_EQ(call("-atm " + edges).warnings, kClosingWarning) << edges;
            EXPECT_EQ(map(), kFirst) << edges;
        }
    }
}

TEST_F(ExtendMap, NeedsAMapOfTheMeshAsItIs) {
    const auto expectRefused = [&] {
        const Outcome outcome = call("-atm " + edge(7, 10));
        EXPECT_FALSE(outcome.ok);
        EXPECT_EQ(outcome.errors,
                  Strings{"Unable to extend the order mapping because the vertex count has changed."});
    };
    setMap({1, 0});
    expectRefused();
    EXPECT_EQ(map(), Ints({1, 0}));
    scene_.mel("deleteAttr -attribute dvVertexOrderMap baseShape");
    expectRefused();
    EXPECT_FALSE(hasMap());
}

TEST_F(ExtendMap, WhereAnEdgeLiesOppositeWaysTheFacesAreToldApartAlongTheirOwnDirection) {
    // Across y all shells are flat: the faces are neither nearer nor farther than their edge.
    const Outcome outcome = call("-atm -a y " + edge(7, 10) + " " + edge(13, 16));
    EXPECT_EQ(outcome.warnings, kClosingWarning);
    EXPECT_EQ(map(), kFirst);
    // Folded along their middle edges, both faces of each lie on one side of it; what differs is x.
    scene_.mel("move -relative 0 1 0 base.vtx[7] base.vtx[10] base.vtx[13] base.vtx[16]");
    EXPECT_EQ(result("-atm -a y " + edge(7, 10) + " " + edge(13, 16)), 1);
    EXPECT_EQ(map(), Ints({2, 1, 0, 5, 4, 3, 12, 13, 14, 15, 16, 17, 6, 7, 8, 9, 10, 11}));
}

/// Two quads that meet at an edge.
struct Fold {
    std::array<float, 3> first, second;  // from the middle of the edge to the centres of the faces
};

/// Two shells of the same fold, in places where a face that is farther than its edge along one axis is nearer
/// along another.
struct FoldPair {
    const char* name;
    const char* axis;
    Fold fold;
    std::array<float, 3> place, otherPlace;
};

void PrintTo(const FoldPair& pair, std::ostream* out) {
    *out << pair.name;
}

class FoldedFaces : public ExtendMap, public ::testing::WithParamInterface<FoldPair> {
  protected:
    void SetUp() override {}
};

/// @param place  of the edge, which runs along y; its ends are the vertices 0 and 1
std::vector<float> foldPoints(const Fold& fold, const std::array<float, 3>& place) {
    std::vector<float> points;
    const std::array<float, 3> none{};
    for (const std::array<float, 3>* centre : {&none, &fold.first, &fold.second}) {
        for (const float end : {-0.25F, 0.25F}) {
            for (std::size_t axis = 0; axis < 3; ++axis)
                points.push_back(place[axis] + 2 * (*centre)[axis] + (axis == 1 ? end : 0));
        }
    }
    return points;
}

TEST_P(FoldedFaces, OfTwoEdgesArePairedByTheirSide) {
    const Mesh first = meshOf(foldPoints(GetParam().fold, GetParam().place), {{0, 1, 3, 2}, {1, 0, 4, 5}});
    // The other way around, and with the edge between the last corner and the first.
    const Mesh second =
        meshOf(foldPoints(GetParam().fold, GetParam().otherPlace), {{0, 4, 5, 1}, {1, 3, 2, 0}});
    add(host::geometry::uniteMeshes({first, second}).mesh);
    setMap(Ints(12, -1));
    EXPECT_EQ(result(std::string("-atm -a ") + GetParam().axis + ' ' + edge(0, 1) + ' ' + edge(6, 7)), 1);
    EXPECT_EQ(map(), Ints({7, 6, 9, 8, 11, 10, 1, 0, 3, 2, 5, 4}));
}

INSTANTIATE_TEST_SUITE_P(
    TwoEdges, FoldedFaces,
    ::testing::Values(
        FoldPair{"OnTheTwoSidesOfTheirEdge", "x", {{0.5F, 0, 2}, {-0.5F, 0, -2}}, {5, 0, 10}, {5, 0, -10}},
        FoldPair{
            "BothFartherAndApartAlongX", "y", {{1.5F, 1, 1}, {-1.5F, 1, -1}}, {10, 10, 10}, {10, 10, -10}},
        FoldPair{
            "BothFartherAndApartAlongY", "x", {{1, 1.5F, 1}, {1, -1.5F, -1}}, {10, 10, 10}, {10, 10, -10}},
        FoldPair{"BothFartherAndApartAlongZMoreThanX",
                 "y",
                 {{1, 1, 1.5F}, {-1, 1, -1.5F}},
                 {10, 10, 10},
                 {-10, 10, 10}},
        FoldPair{"BothFartherAndApartAlongZMoreThanY",
                 "x",
                 {{1, 1, 1.5F}, {1, -1, -1.5F}},
                 {10, 10, 10},
                 {10, -10, 10}},
        FoldPair{
            "BothFartherBelowThePlane", "x", {{-1, 1, 1.5F}, {-1, -1, -1.5F}}, {-10, 10, 10}, {-10, -10, 10}},
        FoldPair{
            "BothNearerAndApartAlongZ", "x", {{-1, 1, 1.5F}, {-1, -1, -1.5F}}, {10, 10, 10}, {10, -10, 10}}),
    [](const auto& test) { return std::string(test.param.name); });

struct Query {
    const char* name;
    const char* flags;
};

class QueryMode : public MapVertexOrder, public ::testing::WithParamInterface<Query> {};

TEST_P(QueryMode, AnswersMinusOneWithoutAUsableMapAndChangesNothing) {
    add(twoQuads());
    scene_.addMesh("other", zoo::cube());
    const std::string text = GetParam().flags + std::string(" base");
    for (const Ints& unusable : {Ints(), Ints(5, 0), Ints(7, 0)}) {
        const std::string before = scene_.dump();
        EXPECT_EQ(result(text), -1);
        EXPECT_EQ(scene_.dump(), before);
        setMap(unusable);
    }
}

INSTANTIATE_TEST_SUITE_P(All, QueryMode,
                         ::testing::Values(Query{"check", "-ck"}, Query{"copy", "-ct otherShape"},
                                           Query{"mapped", "-sm"}, Query{"unmapped", "-su"}),
                         [](const auto& test) { return std::string(test.param.name); });

class UseMap : public MapVertexOrder {
  protected:
    void SetUp() override {
        add(twoQuads());
        scene_.addMesh("other", zoo::cube());
        setMap({2, 1, 0, -1, 4, -1});
        scene_.mel("select -clear");
    }
};

TEST_F(UseMap, CheckCountsGapsOrSelectsPartners) {
    EXPECT_EQ(result("-ck base"), 2);
    EXPECT_EQ(result("-ck " + edge(1, 4)), 2);
    EXPECT_TRUE(selected().empty());
    scene_.mel("dv_polyMapVertexOrder -ck base.vtx[1:3]");
    EXPECT_EQ(selected(), Strings({"base.vtx[0]", "base.vtx[1]", "base.vtx[2]", "base.vtx[3]"}));
    EXPECT_FALSE(scene_.run("int $r = `dv_polyMapVertexOrder -ck base.vtx[4]`").ok) << "no result";
}

TEST_F(UseMap, SelectionModesComeInOrderOfPrecedence) {
    const Strings mapped{"base.vtx[0]", "base.vtx[1]", "base.vtx[2]", "base.vtx[4]"};
    scene_.mel("dv_polyMapVertexOrder -sm base");
    EXPECT_EQ(selected(), mapped);
    scene_.mel("dv_polyMapVertexOrder -su base");
    EXPECT_EQ(selected(), Strings({"base.vtx[3]", "base.vtx[5]"}));
    scene_.mel("dv_polyMapVertexOrder -su -sm -ct otherShape -atm base");
    EXPECT_EQ(selected(), mapped);
    EXPECT_FALSE(hasMap("otherShape"));
    EXPECT_EQ(result("-ck -sm -su base"), 2);
    // Nothing left to select.
    setMap({2, 1, 0, 5, 4, 3});
    scene_.mel("dv_polyMapVertexOrder -su base");
    EXPECT_TRUE(selected().empty());
}

TEST_F(UseMap, CopiesToTheShapeOfAnyMesh) {
    EXPECT_EQ(result("-ct otherShape base"), 1);
    EXPECT_EQ(map("otherShape"), map());
    setMap({0, 1, 2, 3, 4, 5});
    EXPECT_EQ(result("-ct otherShape base"), 1);
    EXPECT_EQ(map("otherShape"), map()) << "in place of the one before";
    for (const std::string name : {"other", "ghost", "persp"}) {
        const Outcome outcome = call("-ct " + name + " base");
        EXPECT_FALSE(outcome.ok);
        EXPECT_EQ(outcome.errors.back(), name + " is not a mesh object.");
    }
}

TEST_F(MapVertexOrder, TakesTheSelectionAndSeesTheDeformedMesh) {
    add(twoQuads());
    scene_.mel("blendShape -name bs base; select base");
    EXPECT_EQ(result(""), 1);
    EXPECT_TRUE(hasMap());
    EXPECT_FALSE(hasMap("baseShapeOrig"));
}

class OutlastedSelection : public MapVertexOrder {
  protected:
    /// Selects components of a cube, of which six vertices and seven edges remain.
    void select(const std::string& components) {
        add(zoo::cube());
        scene_.addMesh("small", twoQuads());
        scene_.mel("select " + components + "; connectAttr smallShape.outMesh baseShape.inMesh");
    }
};

TEST_F(OutlastedSelection, OfVerticesGivesThoseThatAreLeft) {
    select("base.vtx[1] base.vtx[6:7]");
    ASSERT_EQ(selected().size(), 3U);
    setMap({2, 3, 0, 1, 4, 5});
    scene_.mel("dv_polyMapVertexOrder -ck");
    EXPECT_EQ(selected(), Strings({"base.vtx[1]", "base.vtx[3]"}));
}

TEST_F(OutlastedSelection, OfEdgesHasNoFaces) {
    select("base.e[10]");
    for (const char* flags : {"", "-atm"}) {
        const Outcome outcome = call(flags);
        EXPECT_FALSE(outcome.ok);
        EXPECT_EQ(outcome.warnings, Strings{"The symmetry edge is not connected to any faces."});
    }
}

TEST_F(OutlastedSelection, OfTwoEdgesHasNoFaces) {
    select("base.e[10:11]");
    setMap({-1, -1, -1, -1, -1, -1});
    const Outcome outcome = call("-atm");
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.errors, Strings{"The edge is not connected to any faces."});
}

TEST_F(OutlastedSelection, OfTwoEdgesOneHasFaces) {
    select("base.e[0] base.e[10]");
    setMap({-1, -1, -1, -1, -1, -1});
    const Outcome outcome = call("-atm");
    EXPECT_TRUE(outcome.ok);
    EXPECT_EQ(outcome.warnings, kClosingWarning);
    EXPECT_EQ(map(), Ints(6, -1));
}

TEST_F(MapVertexOrder, AShapeWithoutGeometryHasAnEmptyMap) {
    scene_.mel("createNode mesh -name hollow");
    EXPECT_EQ(result("-tol 0 hollow"), -1);
    EXPECT_EQ(map("hollow"), Ints());
    EXPECT_EQ(result("-atm -ck hollow"), -1);
}

}  // namespace
