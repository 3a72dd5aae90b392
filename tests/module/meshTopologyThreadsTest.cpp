// Two walks side by side on one topology, as the two passes of a symmetric shell are, and two halves of one
// look-up. They run in oneTBB tasks, where a race would go unseen; here they run on threads of the test.

#include <gtest/gtest.h>

#include <thread>

#include "plainMesh.h"
#include "symmetry/meshTopology.h"
#include "symmetry/mirrorPlaces.h"

namespace {

/// Quads of a grid, `columns` wide.
std::vector<std::vector<int>> gridFaces(int columns, int rows) {
    std::vector<std::vector<int>> faces;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const int corner = row * (columns + 1) + column;
            faces.push_back({corner, corner + columns + 1, corner + columns + 2, corner + 1});
        }
    }
    return faces;
}

TEST(MeshTopologyThreads, TwoWalksShareATopology) {
    constexpr int kColumns = 40;
    constexpr int kRows = 30;
    const MeshTopology topology(plainMesh((kColumns + 1) * (kRows + 1), gridFaces(kColumns, kRows)));
    // The edge between the two middle columns: each pass goes into the face on its side.
    const int upper = kColumns / 2;
    const int lower = upper + kColumns + 1;
    const WalkStart starts[2] = {{upper - 1, upper, lower}, {upper, upper, lower}};
    std::vector<int> orders[2];
    std::vector<std::thread> threads;
    for (int pass = 0; pass < 2; ++pass) {
        threads.emplace_back([&, pass] {
            ShellWalker walker(topology);
            for (int round = 0; round < 20; ++round) {
                ASSERT_TRUE(walker.walk(starts[pass], kColumns * kRows));
                orders[pass].assign(walker.order().begin(), walker.order().end());
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    ASSERT_EQ(orders[0].size(), orders[1].size());
    for (std::size_t k = 0; k < orders[0].size(); ++k) {
        const int row = orders[0][k] / (kColumns + 1);
        const int mirrored = row * (kColumns + 1) + kColumns - orders[0][k] % (kColumns + 1);
        ASSERT_EQ(orders[1][k], mirrored) << "position " << k;
    }
}

TEST(MirrorPlacesThreads, TwoHalvesFillOneTable) {
    std::vector<PlainPoint> points;
    std::vector<int> all;
    for (int vertex = 0; vertex < 4000; ++vertex) {
        // Each vertex is across from its neighbour in the list.
        const auto side = static_cast<float>(1 + vertex / 2 % 50);
        points.push_back({vertex % 2 == 0 ? side : -side, 0.0F, static_cast<float>(vertex / 100), 1.0F});
        all.push_back(vertex);
    }
    MirrorPlaces places(points, 0, points.size());
    std::vector<int> entries(points.size(), MirrorPlaces::kNowhere);
    std::vector<std::thread> threads;
    for (const unsigned int half : {0U, 1U})
        threads.emplace_back([&, half] { places.add(half, all, entries); });
    for (std::thread& thread : threads)
        thread.join();
    for (const int vertex : all) {
        const int entry = entries[static_cast<std::size_t>(vertex)];
        ASSERT_NE(entry, MirrorPlaces::kNowhere);
        EXPECT_EQ(places.acrossFrom(vertex, entry), vertex % 2 == 0 ? vertex + 1 : vertex - 1);
    }
}

}  // namespace
