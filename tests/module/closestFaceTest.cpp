#include "symmetry/closestFace.h"

#include <gtest/gtest.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>

#include <cmath>
#include <limits>

#include "fixtures.h"
#include "geometry/closestPoint.h"
#include "support/meshZoo.h"
#include "support/variants.h"
#include "symmetry/symmetryMesh.h"

namespace {

std::vector<zoo::NamedMesh> meshes() {
    using host::geometry::Matrix4;
    const zoo::Mesh grid = zoo::openGrid(20, 20);
    std::vector<zoo::NamedMesh> list = zoo::allMeshes();
    list.push_back({"grid", grid});
    // Equal distances everywhere: the first sheet wins.
    list.push_back({"sheetsInOnePlace", host::geometry::uniteMeshes({grid, grid}).mesh});
    // Corners of the second lie in lower faces of the first.
    list.push_back(
        {"sheetsShiftedInTheirPlane",
         host::geometry::uniteMeshes({grid, grid}, {Matrix4(), Matrix4::translation({0.5, 0, 0.25})}).mesh});
    zoo::Mesh broken = grid;
    broken.setPoint(0, {0, std::nan(""), 0});
    broken.setPoint(30, {std::numeric_limits<double>::infinity(), 0, 0});
    list.push_back({"placesThatAreNone", broken});
    list.push_back(
        {"sheetsOneAboveTheOther",
         host::geometry::uniteMeshes({grid, grid}, {Matrix4(), Matrix4::translation({0.5, 0.25, 0})}).mesh});
    return list;
}

double squaredDistance(const zoo::Mesh& mesh, int face, const MPoint& point) {
    const host::geometry::ClosestPointTree tree(mesh, std::vector<int>{face});
    return tree.query({point.x, point.y, point.z})->squaredDistance;
}

class ClosestFace : public ::testing::TestWithParam<zoo::NamedMesh> {};

/// Corners, places beside them, in faces, and far away.
std::vector<MPoint> questions(const SymmetryMesh& mesh) {
    std::vector<MPoint> points;
    for (int face = 0; face < mesh.topology().faceCount(); face += 1 + mesh.topology().faceCount() / 40) {
        for (const int vertex : mesh.topology().faceVertices(face))
            points.push_back(mesh.point(vertex));
        const MPoint corner = mesh.point(mesh.topology().faceVertices(face)[0]);
        const MPoint other = mesh.point(mesh.topology().faceVertices(face)[2]);
        for (const MPoint& point :
             {corner, corner + (other - corner) * 0.5, corner + (other - corner) * 0.3}) {
            points.push_back(mesh.mirrored(point));
            points.push_back(point + MVector(0, 1e-6, 0));
            points.push_back(point + MVector(0.01, 0.125, -0.02));
        }
    }
    points.emplace_back(100, -50, 3);
    return points;
}

TEST_P(ClosestFace, IsThatOfTheHostForTheWholeMesh) {
    Scene scene;
    scene.addMesh("base", GetParam().mesh);
    MSelectionList list;
    list.add("baseShape");
    MDagPath path;
    list.getDagPath(0, path);
    SymmetryMesh mesh(path, 0, 0.0001);
    if (mesh.topology().faceCount() == 0) return;
    // Boxes that hold everything cost time only.
    const std::vector<PlainBox> boxes(static_cast<std::size_t>(mesh.shells().count()),
                                      PlainBox{{-1e6, -1e6, -1e6}, {1e6, 1e6, 1e6}});
    const std::string before = scene.dump();
    MObject node = path.node();
    MMeshIntersector intersector;
    ASSERT_TRUE(intersector.create(node, MMatrix::identity));
    ClosestFaceSearch lasting(path, mesh.topology(), mesh.shells(), mesh.points(), boxes);
    for (const MPoint& point : questions(mesh)) {
        MPointOnMesh expected;
        if (!intersector.getClosestPoint(point, expected)) continue;
        // A new search, which does not have the host's structure yet, and one that changes over to it.
        ClosestFaceSearch fresh(path, mesh.topology(), mesh.shells(), mesh.points(), boxes);
        for (ClosestFaceSearch* search : {&fresh, &lasting}) {
            int face = -1;
            ASSERT_TRUE(search->find(point, face));
            if (face == expected.faceIndex()) continue;
            // Of equally close faces the module answers the first, the host the one that its rule says.
            EXPECT_NE(variant().faceTie, host::graph::FaceTie::First) << point;
            EXPECT_EQ(squaredDistance(GetParam().mesh, face, point),
                      squaredDistance(GetParam().mesh, expected.faceIndex(), point))
                << point;
        }
    }
    EXPECT_EQ(scene.dump(), before);
}

INSTANTIATE_TEST_SUITE_P(Zoo, ClosestFace, ::testing::ValuesIn(meshes()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
