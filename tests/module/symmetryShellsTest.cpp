#include "symmetry/symmetryShells.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "plainMesh.h"

namespace {

using Faces = std::vector<std::vector<int>>;
using Ints = std::vector<int>;

constexpr double kTolerance = 0.01;

/// Scans a mesh across x. A neighbour is any vertex that shares a face.
std::vector<ShellScan> scan(const std::vector<PlainVector>& points, const Faces& faces,
                            const Ints& markedFaces) {
    const MeshTopology mesh(plainMesh(static_cast<int>(points.size()), faces));
    const Shells shells = findShells(mesh);
    const auto isOnPlane = [&](int vertex) {
        return std::abs(points[static_cast<std::size_t>(vertex)][0]) <= kTolerance;
    };
    const auto hasCentreNeighbour = [&](int vertex) {
        for (const std::vector<int>& face : faces) {
            if (std::find(face.begin(), face.end(), vertex) == face.end()) continue;
            for (const int other : face)
                if (other != vertex && isOnPlane(other)) return true;
        }
        return false;
    };
    return scanShells({mesh, shells, 0, [&](int v) { return points[static_cast<std::size_t>(v)]; }, isOnPlane,
                       hasCentreNeighbour},
                      markedFaces);
}

struct Candidate {
    const char* name;
    std::vector<double> x;  // of the corners of one face
    int expected;
};

class CandidateRule : public ::testing::TestWithParam<Candidate> {};

TEST_P(CandidateRule, PicksTheVertexNearestThePlane) {
    std::vector<PlainVector> points;
    Ints face;
    for (const double x : GetParam().x) {
        face.push_back(static_cast<int>(points.size()));
        points.push_back({x, 0, 0});
    }
    EXPECT_EQ(scan(points, {face}, {})[0].candidate, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Scan, CandidateRule,
    ::testing::Values(Candidate{"nearest", {3, -1, 2}, 1}, Candidate{"firstAmongEquals", {3, 1, -1}, 1},
                      // The vertex that is taken at once counts for nothing in what follows.
                      Candidate{"shortcutIsReplacedByTheNextVertex", {0, 5, 4, 0.001}, 3},
                      Candidate{"shortcutIsReplacedByAnyVertex", {0, 0.005, 5}, 1},
                      Candidate{"noShortcutOnceThereIsACandidate", {0.02, 0.005, 0.001}, 2},
                      Candidate{"aloneOnThePlaneIsPassedOver", {0, 5, 6}, 1}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ScanShells, NotesWhatBelongsToEachShell) {
    const std::vector<ShellScan> scans =
        scan({{1, 2, 3}, {4, -1, 3}, {2, 2, 9}, {5, 5, 5}, {-3, 0, 0}, {-2, 0, 0}},
             {{0, 1, 2}, {3, 0, 4}, {1, 0, 5}}, {});
    ASSERT_EQ(scans.size(), 2U);
    EXPECT_EQ(scans[0].seed, 0);
    EXPECT_EQ(scans[0].faceCount, 2);
    EXPECT_EQ(scans[0].vertexCount, 4);
    EXPECT_EQ(scans[0].box.minimum, (PlainVector{-2, -1, 0}));
    EXPECT_EQ(scans[0].box.maximum, (PlainVector{4, 2, 9}));
    EXPECT_EQ(scans[1].seed, 1);
    EXPECT_EQ(scans[1].vertexCount, 3) << "a vertex may belong to two shells";
    EXPECT_EQ(scans[1].markedFace, -1);
}

TEST(ScanShells, AMarkedShellIsNotScannedAndKeepsTheCandidateBefore) {
    const Faces faces{{0, 1, 2}, {3, 4, 5}, {4, 3, 6}};
    const std::vector<PlainVector> points{{1, 1, 1}, {2, 1, 1}, {3, 1, 1}, {1, 1, 1},
                                          {2, 2, 2}, {3, 3, 3}, {4, 4, 4}};
    const std::vector<ShellScan> scans = scan(points, faces, {2, 1});
    EXPECT_EQ(scans[1].markedFace, 2) << "the first start counts, not the lowest face";
    EXPECT_EQ(scans[1].candidate, 0);
    EXPECT_EQ(scans[1].faceCount, 2);
    EXPECT_EQ(scans[1].vertexCount, 0);
    EXPECT_EQ(scans[1].box.maximum, PlainVector{});
    EXPECT_EQ(scan(points, faces, {0})[0].candidate, -1);
}

ShellScan shell(int faceCount, double x, double size = 1.0, int markedFace = -1) {
    ShellScan scan;
    scan.faceCount = faceCount;
    scan.markedFace = markedFace;
    scan.box.minimum = {x, 0, 0};
    scan.box.maximum = {x + size, size, size};
    return scan;
}

TEST(PairCounts, PairsEqualCountsInOrderAndLeavesOutMarkedShells) {
    const std::vector<ShellScan> scans{shell(7, 0),       shell(4, 0), shell(4, 0), shell(9, 0), shell(4, 0),
                                       shell(7, 0, 1, 5), shell(4, 0), shell(9, 0), shell(9, 0)};
    const ShellCounts counts = pairCounts(scans);
    EXPECT_EQ(counts.pairs, Ints({4, 9, 4}));
    EXPECT_EQ(counts.singles, Ints({7, 9}));
}

TEST(ShellGroups, HoldThoseThatContainTheMirroredCentre) {
    //                                 0            1            2            3: marked, at the origin
    const std::vector<ShellScan> scans{shell(4, 2),  shell(4, 5),  shell(6, -3),   shell(4, 0, 0.0, 8),
                                       shell(4, -3), shell(4, -6), shell(4, -7, 2)};
    ShellGroups groups(scans, 0);
    EXPECT_EQ(groups.take(4), Ints({0, 4})) << "not 2: another count";
    EXPECT_EQ(groups.take(4), Ints({1, 5, 6}));
    EXPECT_EQ(groups.take(4), Ints({3}));
    EXPECT_EQ(groups.take(4), Ints());
    EXPECT_EQ(groups.take(5), Ints());
    // Across another axis.
    ShellGroups other(scans, 1);
    EXPECT_EQ(other.take(4), Ints({0}));
}

TEST(ShellGroups, BoxesIncludeTheirSides) {
    const std::vector<ShellScan> scans{shell(4, 2), shell(4, -2.5), shell(4, -3.5), shell(4, -4.6)};
    EXPECT_EQ(ShellGroups(scans, 0).take(4), Ints({0, 1, 2}));
}

TEST(BoxIndex, FindsWhatALookAtEveryBoxFinds) {
    std::vector<PlainBox> boxes{{{-9, -9, -9}, {9, 9, 9}}};
    for (int k = 0; k < 60; ++k) {
        const double x = (k * 7 % 20) - 10.0;
        const double y = k * 11 % 13 - 6.0;
        boxes.push_back({{x, y, 0.0}, {x + k % 4, y + k % 3, 2.0}});
    }
    const double nan = std::nan("");
    boxes.push_back({{nan, nan, nan}, {nan, nan, nan}});
    const BoxIndex index(boxes);
    std::size_t mostFound = 0;
    for (const PlainVector& point : {PlainVector{0, 0, 1}, PlainVector{-10, 3, 2}, PlainVector{20, 0, 0},
                                     PlainVector{9, 6, 5}, PlainVector{4, 1, 0}, PlainVector{nan, 0, 0}}) {
        Ints expected;
        for (std::size_t box = 0; box < boxes.size(); ++box) {
            if (boxes[box].contains(point)) expected.push_back(static_cast<int>(box));
        }
        EXPECT_EQ(index.find(point), expected);
        mostFound = std::max(mostFound, expected.size());
    }
    EXPECT_GT(mostFound, 2U);
    EXPECT_EQ(BoxIndex({}).find({0, 0, 0}), Ints());
    EXPECT_TRUE(boxes[0].contains(PlainVector{9, -9, 0})) << "the sides belong to it";
    EXPECT_FALSE(boxes[0].contains(PlainVector{0, 0, 9.5}));
}

}  // namespace
