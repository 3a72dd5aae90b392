#include "symmetry/meshTopology.h"

#include <gtest/gtest.h>

#include <set>

#include "plainMesh.h"
#include "support/meshZoo.h"

namespace {

using Faces = std::vector<std::vector<int>>;
using Ints = std::vector<int>;

Ints list(const IndexRange& range) {
    return Ints(range.begin(), range.end());
}

Ints facesAcross(const MeshTopology& mesh, int face) {
    Ints faces;
    for (int k = 0; k < mesh.faceEdges(face).size(); ++k)
        faces.push_back(mesh.corners(face)[k].faceAcross);
    return faces;
}

MeshTopology topologyOf(const zoo::Mesh& mesh) {
    Faces faces;
    for (int face = 0; face < mesh.faceCount(); ++face) {
        const auto corners = mesh.topology().faceVertices(face);
        faces.emplace_back(corners.begin(), corners.end());
    }
    return MeshTopology(plainMesh(mesh.vertexCount(), faces));
}

/// Two quads side by side: 0 1 2 on top, 3 4 5 below; the edge between them is 1-4.
const Faces kTwoQuads{{0, 3, 4, 1}, {1, 4, 5, 2}};

struct Ring {
    const char* name;
    std::vector<EdgeEnds> ends;
    int a, b;
    std::vector<std::array<int, 3>> order;  // position, first, second
};

class RingOrder : public ::testing::TestWithParam<Ring> {};

TEST_P(RingOrder, GoesAroundFromTheEntryEdge) {
    std::vector<std::array<int, 3>> order;
    for (const RingEdge& edge : orderFaceEdges(GetParam().ends, GetParam().a, GetParam().b)) {
        order.push_back({edge.position, edge.first, edge.second});
    }
    EXPECT_EQ(order, GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(
    Faces, RingOrder,
    ::testing::Values(
        Ring{
            "forwards", {{0, 1}, {1, 2}, {2, 3}, {3, 0}}, 1, 2, {{1, 1, 2}, {2, 2, 3}, {3, 3, 0}, {0, 0, 1}}},
        Ring{"backwards",
             {{0, 1}, {1, 2}, {2, 3}, {3, 0}},
             2,
             1,
             {{1, 2, 1}, {0, 1, 0}, {3, 0, 3}, {2, 3, 2}}},
        Ring{"edgesTurnedAndMixed", {{2, 1}, {0, 2}, {1, 0}}, 0, 1, {{2, 0, 1}, {0, 1, 2}, {1, 2, 0}}},
        // The walk goes on behind an edge that the face does not have.
        Ring{"diagonal", {{0, 1}, {1, 2}, {2, 3}, {3, 0}}, 0, 2, {{2, 2, 3}, {3, 3, 0}, {0, 0, 1}}},
        Ring{"foreignEdge", {{0, 1}, {1, 2}, {2, 0}}, 7, 8, {}},
        Ring{"missingEdge", {{0, 1}, {1, 2}, {2, 0}}, -1, -1, {}},
        // Two triangles that touch at 0, as one face: the last edge at the corner goes on.
        Ring{"faceThatTouchesItself",
             {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {3, 4}, {4, 0}},
             2,
             0,
             {{2, 2, 0}, {5, 0, 4}, {4, 4, 3}, {3, 3, 0}, {0, 0, 1}, {1, 1, 2}}},
        Ring{"sameEdgeTwice",
             {{0, 1}, {1, 2}, {2, 1}, {1, 0}},
             0,
             1,
             {{0, 0, 1}, {3, 0, 1}, {1, 1, 2}, {2, 1, 2}}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(MeshTopology, KnowsTheFaceBeyondEachEdge) {
    const MeshTopology mesh(plainMesh(6, kTwoQuads));
    EXPECT_EQ(facesAcross(mesh, 0), Ints({-1, -1, 1, -1}));
    EXPECT_EQ(facesAcross(mesh, 1), Ints({0, -1, -1, -1}));
    // Three faces on the edge 0-1: the first of the others.
    const MeshTopology fin(plainMesh(5, {{0, 1, 2}, {0, 1, 3}, {0, 1, 4}}));
    EXPECT_EQ(facesAcross(fin, 0)[0], 1);
    EXPECT_EQ(facesAcross(fin, 1)[0], 0);
    EXPECT_EQ(facesAcross(fin, 2)[0], 0);
    // A face on both sides of its edges.
    EXPECT_EQ(facesAcross(MeshTopology(plainMesh(3, {{0, 1, 2, 1}})), 0), Ints(4, -1));
}

TEST(MeshTopology, TellsPlainRingsFromOtherFaces) {
    EXPECT_TRUE(MeshTopology(plainMesh(6, kTwoQuads)).isRing(1));
    EXPECT_FALSE(MeshTopology(plainMesh(5, {{0, 1, 2, 0, 3, 4}})).isRing(0)) << "touches itself";
    EXPECT_TRUE(MeshTopology(plainMesh(11, {{0, 9, 1, 8, 2, 7, 3, 6, 4, 5, 10}})).isRing(0));
    EXPECT_FALSE(MeshTopology(plainMesh(11, {{0, 9, 1, 8, 2, 0, 7, 3, 6, 4, 5}})).isRing(0))
        << "of many corners";
    MeshConnectivity shifted = plainMesh(3, {{0, 1, 2}});
    shifted.faceEdges.values = {1, 2, 0};
    EXPECT_FALSE(MeshTopology(shifted).isRing(0)) << "edges do not begin at the first corner";
}

TEST(MeshTopology, ShellsAreJoinedByEdgesAndNumberedByTheirLowestFace) {
    // 0 and 3 share an edge; 1 touches 0 at a vertex only; 2 is alone; 4 and 5 share an edge that has a
    // third face.
    const MeshTopology mesh(
        plainMesh(16, {{0, 1, 2}, {0, 4, 5}, {6, 7, 8}, {2, 1, 3}, {9, 10, 11}, {9, 10, 12}, {10, 9, 13}}));
    const Shells shells = findShells(mesh);
    ASSERT_EQ(shells.count(), 4);
    EXPECT_EQ(list(shells.faces[0]), Ints({0, 3}));
    EXPECT_EQ(list(shells.faces[1]), Ints({1}));
    EXPECT_EQ(list(shells.faces[2]), Ints({2}));
    EXPECT_EQ(list(shells.faces[3]), Ints({4, 5, 6}));
    EXPECT_EQ(shells.shellOfFace, Ints({0, 1, 2, 0, 3, 3, 3}));
    EXPECT_EQ(shells.faceCountAt(6), 3);
    EXPECT_EQ(shells.firstFaceAt(3), 0);
    EXPECT_EQ(findShells(MeshTopology(MeshConnectivity())).count(), 0);
}

TEST(ShellWalker, MeetsMirroredVerticesAtTheSamePosition) {
    const MeshTopology mesh(plainMesh(6, kTwoQuads));
    ShellWalker walker(mesh);
    ASSERT_TRUE(walker.walk({0, 1, 4}, 2));
    EXPECT_EQ(list(walker.order()), Ints({1, 4, 3, 0, 5, 2}));
    ASSERT_TRUE(walker.walk({1, 1, 4}, 2));
    EXPECT_EQ(list(walker.order()), Ints({1, 4, 5, 2, 3, 0}));
}

TEST(ShellWalker, FailsWhenFacesRunOutAndWalksOnAfterwards) {
    const MeshTopology mesh(plainMesh(9, {{0, 3, 4, 1}, {1, 4, 5, 2}, {6, 7, 8}}));
    ShellWalker walker(mesh);
    EXPECT_FALSE(walker.walk({0, 1, 4}, 3)) << "the third face is in another shell";
    EXPECT_FALSE(walker.walk({0, -1, -1}, 2)) << "no edge to begin at";
    EXPECT_TRUE(walker.walk({0, -1, -1}, 1));
    EXPECT_EQ(list(walker.order()), Ints());
    EXPECT_TRUE(walker.walk({0, 1, 4}, 1));
    EXPECT_EQ(list(walker.order()), Ints({1, 4, 3, 0})) << "no more faces than asked for";
    EXPECT_TRUE(walker.walk({0, 1, 4}, 0));
    EXPECT_EQ(list(walker.order()), Ints());
    EXPECT_TRUE(walker.walk({2, 7, 6}, 1));
    EXPECT_EQ(list(walker.order()), Ints({7, 6, 8}));
}

TEST(ShellWalker, MeetsTheTipOfASpur) {
    // The face goes to 2 and back by one edge, which ends the way around it.
    const MeshTopology mesh(plainMesh(3, {{0, 1, 2, 1}}));
    ShellWalker walker(mesh);
    ASSERT_TRUE(walker.walk({0, 0, 1}, 1));
    EXPECT_EQ(list(walker.order()), Ints({0, 1, 2}));
}

/// The walk without any preparation, marks in sets.
bool simpleWalk(const MeshTopology& mesh, const WalkStart& start, int faceCount, Ints& order) {
    std::vector<WalkStart> queue{start};
    std::set<int> faces{start.face};
    std::set<int> vertices;
    order.clear();
    for (std::size_t i = 0; i < static_cast<std::size_t>(faceCount); ++i) {
        if (i >= queue.size()) return false;
        const WalkStart entry = queue[i];
        std::vector<EdgeEnds> ends;
        for (const int edge : mesh.faceEdges(entry.face))
            ends.push_back(mesh.ends(edge));
        for (const RingEdge& edge : orderFaceEdges(ends, entry.first, entry.second)) {
            if (vertices.insert(edge.first).second) order.push_back(edge.first);
            if (vertices.insert(edge.second).second) order.push_back(edge.second);
            const int across = mesh.corners(entry.face)[edge.position].faceAcross;
            if (across != -1 && faces.insert(across).second)
                queue.push_back({across, edge.first, edge.second});
        }
    }
    return true;
}

class EveryMesh : public ::testing::TestWithParam<zoo::NamedMesh> {};

TEST_P(EveryMesh, WalksFromEveryEdgeLikeTheSimpleWalk) {
    const MeshTopology mesh = topologyOf(GetParam().mesh);
    const Shells shells = findShells(mesh);
    ShellWalker walker(mesh);
    for (int face = 0; face < mesh.faceCount(); ++face) {
        for (const int edge : mesh.faceEdges(face)) {
            const EdgeEnds& ends = mesh.ends(edge);
            for (const WalkStart& start :
                 {WalkStart{face, ends[0], ends[1]}, WalkStart{face, ends[1], ends[0]}}) {
                Ints expected;
                const bool isComplete = simpleWalk(mesh, start, shells.faceCountAt(face), expected);
                ASSERT_EQ(walker.walk(start, shells.faceCountAt(face)), isComplete);
                ASSERT_EQ(list(walker.order()), expected) << "face " << face << ", edge " << edge;
            }
        }
    }
}

TEST_P(EveryMesh, ShellsAreThoseOfTheHost) {
    const MeshTopology mesh = topologyOf(GetParam().mesh);
    const host::geometry::Shells& expected = GetParam().mesh.topology().shells();
    const Shells shells = findShells(mesh);
    EXPECT_EQ(shells.shellOfFace, expected.shellOfFace);
    EXPECT_EQ(shells.faces.values, expected.faces.values);
    EXPECT_EQ(shells.faces.offsets, expected.faces.offsets);
}

INSTANTIATE_TEST_SUITE_P(Zoo, EveryMesh, ::testing::ValuesIn(zoo::allMeshes()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
