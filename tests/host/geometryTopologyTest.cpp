#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <thread>
#include <vector>

#include "geometry/topology.h"
#include "support/meshZoo.h"

namespace {

using namespace host::geometry;

std::vector<int> listOf(IntSpan span) {
    return {span.begin(), span.end()};
}

bool isAscending(IntSpan span) {
    return std::adjacent_find(span.begin(), span.end(), std::greater_equal<int>()) == span.end();
}

bool has(IntSpan span, int value) {
    return std::find(span.begin(), span.end(), value) != span.end();
}

class TopologyOfZoo : public testing::TestWithParam<zoo::NamedMesh> {
  protected:
    const Topology& topology() const { return GetParam().mesh.topology(); }
};

INSTANTIATE_TEST_SUITE_P(Zoo, TopologyOfZoo, testing::ValuesIn(zoo::allMeshes()),
                         [](const auto& animal) { return animal.param.name; });

TEST_P(TopologyOfZoo, faceEdgesJoinNeighbouringCorners) {
    for (int face = 0; face < topology().faceCount(); ++face) {
        const IntSpan corners = topology().faceVertices(face);
        for (int corner = 0; corner < corners.size(); ++corner) {
            Edge expected{corners[corner], corners[(corner + 1) % corners.size()]};
            if (topology().isEdgeReversed(face, corner)) std::swap(expected[0], expected[1]);
            EXPECT_EQ(topology().edge(topology().faceEdges(face)[corner]), expected);
        }
    }
}

TEST_P(TopologyOfZoo, edgesAndFacesKnowEachOther) {
    std::size_t uses = 0;
    for (int edge = 0; edge < topology().edgeCount(); ++edge) {
        EXPECT_FALSE(topology().edgeFaces(edge).empty());
        for (int face : topology().edgeFaces(edge))
            EXPECT_TRUE(has(topology().faceEdges(face), edge));
        uses += static_cast<std::size_t>(topology().edgeFaces(edge).size());
    }
    EXPECT_EQ(uses, topology().faceEdges().size());
}

TEST_P(TopologyOfZoo, verticesEdgesAndNeighboursMatch) {
    int ends = 0;
    for (int vertex = 0; vertex < topology().vertexCount(); ++vertex) {
        const IntSpan edges = topology().vertexEdges(vertex);
        const IntSpan neighbours = topology().vertexNeighbours(vertex);
        ASSERT_EQ(edges.size(), neighbours.size());
        EXPECT_TRUE(isAscending(edges));
        for (int i = 0; i < edges.size(); ++i) {
            const Edge& edge = topology().edge(edges[i]);
            EXPECT_TRUE((edge == Edge{vertex, neighbours[i]}) || (edge == Edge{neighbours[i], vertex}));
            EXPECT_EQ(topology().findEdge(vertex, neighbours[i]), edges[i]);
            EXPECT_EQ(topology().findEdge(neighbours[i], vertex), edges[i]);
        }
        EXPECT_EQ(topology().findEdge(vertex, vertex), -1);
        ends += edges.size();
    }
    EXPECT_EQ(ends, 2 * topology().edgeCount());
}

TEST_P(TopologyOfZoo, verticesAndFacesKnowEachOther) {
    std::size_t uses = 0;
    for (int vertex = 0; vertex < topology().vertexCount(); ++vertex) {
        const IntSpan faces = topology().vertexFaces(vertex);
        EXPECT_TRUE(isAscending(faces));
        for (int face : faces)
            EXPECT_TRUE(has(topology().faceVertices(face), vertex));
        uses += static_cast<std::size_t>(faces.size());
    }
    EXPECT_EQ(uses, topology().faceVertices().size());
}

TEST_P(TopologyOfZoo, neighbouringFacesShareAnEdgeBothWays) {
    for (int face = 0; face < topology().faceCount(); ++face) {
        const std::vector<int> neighbours = topology().faceNeighbours(face);
        EXPECT_EQ(std::set<int>(neighbours.begin(), neighbours.end()).size(), neighbours.size());
        for (int other : neighbours) {
            EXPECT_NE(other, face);
            EXPECT_TRUE(has(topology().faceNeighbours(other), face));
            const std::vector<int> edges = listOf(topology().faceEdges(other));
            EXPECT_TRUE(std::any_of(edges.begin(), edges.end(),
                                    [&](int edge) { return has(topology().faceEdges(face), edge); }));
        }
    }
}

TEST_P(TopologyOfZoo, shellsPartTheFacesAndNoEdgeCrossesThem) {
    const Shells& shells = topology().shells();
    std::vector<int> seen;
    for (int shell = 0; shell < shells.count(); ++shell) {
        std::set<int> vertices;
        for (int face : shells.faces[shell]) {
            EXPECT_EQ(shells.shellOfFace[face], shell);
            seen.push_back(face);
            for (int other : topology().faceNeighbours(face))
                EXPECT_EQ(shells.shellOfFace[other], shell);
            for (int vertex : topology().faceVertices(face))
                vertices.insert(vertex);
        }
        EXPECT_TRUE(isAscending(shells.faces[shell]));
        EXPECT_EQ(listOf(shells.vertices[shell]), std::vector<int>(vertices.begin(), vertices.end()));
        if (shell > 0) {
            EXPECT_LT(shells.faces[shell - 1][0], shells.faces[shell][0]);
        }
    }
    EXPECT_EQ(static_cast<int>(seen.size()), topology().faceCount());
}

TEST_P(TopologyOfZoo, isRebuiltFromItsOwnEdges) {
    std::vector<int> counts;
    for (int face = 0; face < topology().faceCount(); ++face)
        counts.push_back(topology().faceSize(face));
    const TopologyResult again =
        Topology::fromEdges(topology().vertexCount(), topology().edges(), counts, topology().faceVertices());
    ASSERT_TRUE(again.ok()) << again.error;
    EXPECT_TRUE(again.topology->isSameAs(topology()));
}

struct Counts {
    const char* name;
    Mesh mesh;
    int edges;
    int borderEdges;
    int eulerCharacteristic;
    int shells;
};

TEST(Topology, countsOfKnownMeshes) {
    const std::vector<Counts> table{
        {"cube", zoo::cube(), 12, 0, 2, 1},
        {"sphere", zoo::sphereWithPoles(), 88, 0, 2, 1},
        {"head", zoo::shuffledHead(), 180, 0, 2, 1},
        {"grid", zoo::openGrid(4, 3), 31, 14, 1, 1},
        {"fan", zoo::fan(), 9, 6, 1, 1},
        {"fin", zoo::nonManifoldFin(), 10, 9, 1, 1},
        {"shared vertex", zoo::twoShellsSharingVertex(), 12, 0, 3, 2},
        {"pair", zoo::mirroredShellPair(), 40, 0, 4, 2},
        {"three", zoo::threeEqualShells(), 36, 0, 6, 3},
        {"isolated", zoo::isolatedVertices(), 4, 4, 4, 1},
        {"no face", zoo::noFace(), 0, 0, 3, 0},
    };
    for (const Counts& row : table) {
        const Topology& topology = row.mesh.topology();
        int border = 0;
        for (int edge = 0; edge < topology.edgeCount(); ++edge)
            border += topology.edgeFaces(edge).size() == 1;
        EXPECT_EQ(topology.edgeCount(), row.edges) << row.name;
        EXPECT_EQ(border, row.borderEdges) << row.name;
        EXPECT_EQ(topology.vertexCount() - topology.edgeCount() + topology.faceCount(),
                  row.eulerCharacteristic)
            << row.name;
        EXPECT_EQ(topology.shells().count(), row.shells) << row.name;
    }
}

TEST(Topology, edgesAreNumberedWhereTheyFirstAppear) {
    const TopologyResult result = Topology::fromFaces(6, {4, 4}, {0, 1, 2, 3, 4, 0, 3, 5});
    ASSERT_TRUE(result.ok());
    const std::vector<Edge> expected{{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 0}, {3, 5}, {5, 4}};
    EXPECT_EQ(result.topology->edges(), expected);
    EXPECT_EQ(listOf(result.topology->faceEdges(1)), (std::vector<int>{4, 3, 5, 6}));
    EXPECT_TRUE(result.topology->isEdgeReversed(1, 1));
    EXPECT_FALSE(result.topology->isEdgeReversed(1, 0));
}

TEST(Topology, givenEdgesKeepNumbersAndDirectionsAndMayBeLoose) {
    const std::vector<Edge> edges{{3, 1}, {2, 1}, {0, 2}, {1, 0}};
    const TopologyResult result = Topology::fromEdges(4, edges, {3}, {0, 1, 2});
    ASSERT_TRUE(result.ok()) << result.error;
    EXPECT_EQ(result.topology->edges(), edges);
    EXPECT_EQ(listOf(result.topology->faceEdges(0)), (std::vector<int>{3, 1, 2}));
    EXPECT_TRUE(result.topology->edgeFaces(0).empty());
    EXPECT_EQ(listOf(result.topology->vertexNeighbours(1)), (std::vector<int>{3, 2, 0}));
}

TEST(Topology, threeFacesOnAnEdgeStandInTheOrderOfTheirUse) {
    const zoo::Mesh fin = zoo::nonManifoldFin();
    EXPECT_EQ(listOf(fin.topology().edgeFaces(0)), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(fin.topology().faceNeighbours(1), (std::vector<int>{0, 2}));
}

TEST(Topology, aFaceThatReturnsToAVertexIsListedThereOnce) {
    const TopologyResult result = Topology::fromFaces(5, {6}, {0, 1, 2, 0, 3, 4});
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(listOf(result.topology->vertexFaces(0)), (std::vector<int>{0}));
    EXPECT_EQ(result.topology->vertexEdges(0).size(), 4);
    EXPECT_TRUE(result.topology->faceNeighbours(0).empty());
}

TEST(Topology, facesThatShareTwoEdgesAreNeighboursOnce) {
    const TopologyResult result = Topology::fromFaces(5, {4, 4, 3}, {0, 1, 2, 3, 2, 1, 0, 4, 0, 3, 4});
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.topology->faceNeighbours(0), (std::vector<int>{1, 2}));
}

struct BadFaces {
    int vertexCount;
    std::vector<int> counts;
    std::vector<int> corners;
    const char* error;
};

TEST(Topology, badFaceListsAreRefusedWithAReason) {
    const std::vector<BadFaces> table{
        {4, {4, 3}, {0, 1, 2, 3, 1, 2, 4}, "face 1 refers to vertex 4, but there are 4 vertices"},
        {4, {3}, {0, -1, 2}, "face 0 refers to vertex -1, but there are 4 vertices"},
        {4, {3, 2}, {0, 1, 2, 2, 3}, "face 1 has 2 corners, fewer than 3"},
        {4, {-7}, {}, "face 0 has -7 corners, fewer than 3"},
        {4, {3}, {0, 1}, "the corner list ends within face 0"},
        {4, {2147483647, 2147483647}, {0, 1, 2}, "the corner list ends within face 0"},
        {4, {3}, {0, 1, 2, 3}, "the corner list is longer than the faces' corner counts"},
        {4, {3}, {0, 1, 1}, "face 0 has vertex 1 at two neighbouring corners"},
        {4, {4}, {2, 1, 3, 2}, "face 0 has vertex 2 at two neighbouring corners"},
        {-1, {}, {}, "the vertex count -1 is negative"},
    };
    for (const BadFaces& row : table) {
        EXPECT_EQ(validateFaces(row.vertexCount, row.counts, row.corners), row.error);
        const TopologyResult result = Topology::fromFaces(row.vertexCount, row.counts, row.corners);
        EXPECT_FALSE(result.ok());
        EXPECT_EQ(result.error, row.error);
    }
}

TEST(Topology, badEdgeListsAreRefusedWithAReason) {
    const std::vector<std::pair<std::vector<Edge>, std::string>> table{
        {{{0, 1}, {1, 2}}, "face 0 needs an edge between vertices 2 and 0, but there is none"},
        {{{0, 1}, {1, 2}, {2, 0}, {1, 0}}, "edges 0 and 3 join the same vertices 1 and 0"},
        {{{0, 1}, {1, 1}}, "edge 1 has vertex 1 at both ends"},
        {{{0, 9}}, "edge 0 refers to vertex 9, but there are 3 vertices"},
    };
    for (const auto& [edges, error] : table) {
        EXPECT_EQ(Topology::fromEdges(3, edges, {3}, {0, 1, 2}).error, error);
    }
}

TEST(Topology, firstUseFromSeveralThreadsGivesEveryoneTheSameLists) {
    const zoo::Mesh grid = zoo::openGrid(60, 50);
    std::vector<const Shells*> shells(8, nullptr);
    std::vector<std::thread> threads;
    for (const Shells*& result : shells) {
        threads.emplace_back([&grid, &result] {
            result = &grid.topology().shells();
            EXPECT_EQ(grid.topology().vertexNeighbours().size(), grid.vertexCount());
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const Shells* result : shells)
        EXPECT_EQ(result, &grid.topology().shells());
    EXPECT_EQ(shells[0]->faces[0].size(), 3000);
}

/// Hubs and edges with very many faces are where hidden quadratic costs are; this would take minutes.
TEST(Topology, manyFacesOnOneEdgeCostNoMoreThanElsewhere) {
    const int count = 200000;
    std::vector<int> corners;
    for (int i = 0; i < count; ++i)
        corners.insert(corners.end(), {0, 1, i + 2});
    const TopologyResult result =
        Topology::fromFaces(count + 2, std::vector<int>(static_cast<std::size_t>(count), 3), corners);
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.topology->edgeFaces(0).size(), count);
    EXPECT_EQ(result.topology->shells().count(), 1);
    EXPECT_EQ(static_cast<int>(result.topology->faceNeighbours(7).size()), count - 1);
}

}  // namespace
