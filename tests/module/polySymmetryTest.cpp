// dv_polySymmetry checks meshes for mirror images, extends maps by what it finds, and applies maps.

#include <algorithm>
#include <cmath>
#include <set>

#include "vertexOrderFixture.h"

namespace {

using namespace vertexOrder;

const std::string kVariable = "DELVENMirrorToleranceValue";

class PolySymmetry : public MapVertexOrder {
  protected:
    Outcome check(const std::string& arguments) { return scene_.run("dv_polySymmetry " + arguments); }

    /// A call that succeeds without error or warning.
    int checked(const std::string& arguments) { return scene_.mel("dv_polySymmetry " + arguments).toInt(); }
    void expectRefused(const std::string& arguments, const std::string& error) {
        const std::string before = scene_.dump();
        const Outcome outcome = check(arguments);
        EXPECT_FALSE(outcome.ok) << arguments;
        EXPECT_EQ(outcome.errors, Strings{error}) << arguments;
        EXPECT_EQ(scene_.changes(before), "") << arguments;
    }

    void place(int vertex, const std::string& point) {
        scene_.mel("xform -objectSpace -translation " + point + " base.vtx[" + std::to_string(vertex) + "]");
    }
    double tolerance() { return scene_.mel("optionVar -query " + kVariable).toFloat(); }
    bool hasTolerance() { return scene_.mel("optionVar -exists " + kVariable).toInt() != 0; }
};

/// What a check must find, by comparing every vertex with every other.
struct Expected {
    Expected(const Mesh& checked, int checkedAxis, bool isPositiveSource)
        : mesh(checked), axis(checkedAxis), target(isPositiveSource ? -1 : 1) {
        for (int face = 0; face < mesh.faceCount(); ++face) {
            for (const int vertex : mesh.topology().faceVertices(face))
                corners.insert(vertex);
        }
        for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex)
            look(vertex);
    }

    int side(int vertex) const {
        const double rounded = std::round(mesh.point(vertex)[axis] * 1e5);
        return rounded > 0.0 ? 1 : rounded < 0.0 ? -1 : 0;
    }

    void look(int vertex) {
        if (side(vertex) != target) {
            double nearest = -1.0;
            for (const auto& edge : mesh.topology().edges()) {
                if (edge[0] != vertex && edge[1] != vertex) continue;
                const int neighbour = edge[0] == vertex ? edge[1] : edge[0];
                if (side(neighbour) == target) return;
                const double apart = host::geometry::length(mesh.point(vertex) - mesh.point(neighbour));
                const double rounded = std::round(apart * 1e5) / 1e5;
                if (nearest < 0.0 || rounded < nearest) nearest = rounded;
            }
            if (nearest >= 0.0 && (distance == 0.0 || nearest < distance)) distance = nearest;
        }
        host::geometry::Vec3 mirrored = mesh.point(vertex);
        mirrored[axis] = -mirrored[axis];
        const bool hasPartner = std::any_of(corners.begin(), corners.end(), [&](int corner) {
            return host::geometry::length(mesh.point(corner) - mirrored) <= 0.001;
        });
        if (!hasPartner) asymmetric.push_back("base.vtx[" + std::to_string(vertex) + "]");
    }

    const Mesh& mesh;
    int axis;
    int target;
    std::set<int> corners;
    Strings asymmetric;
    double distance = 0.0;
};

class SymmetryOfEveryMesh : public PolySymmetry, public ::testing::WithParamInterface<zoo::NamedMesh> {};

TEST_P(SymmetryOfEveryMesh, IsWhatComparingAllVerticesFinds) {
    add(GetParam().mesh);
    if (mesh_.vertexCount() == 0) {
        EXPECT_EQ(check("base").errors, Strings{"baseShape has no points."});
        return;
    }
    const std::string before = scene_.dump();
    for (const int axis : {0, 1, 2}) {
        for (const bool isPositiveSource : {true, false}) {
            scene_.mel("select base");
            const Outcome outcome = check(std::string("-ax ") + "xyz"[axis] + " -dir " +
                                          (isPositiveSource ? "1" : "0") + " base");
            EXPECT_TRUE(outcome.ok);
            const Expected expected(mesh_, axis, isPositiveSource);
            // Nothing is closest on a mesh without faces.
            const bool hasFaces = mesh_.faceCount() > 0;
            const Strings asymmetric = hasFaces ? expected.asymmetric : Strings();
            EXPECT_EQ(outcome.errors, Strings(hasFaces ? 0 : static_cast<std::size_t>(mesh_.vertexCount()),
                                              "Failed to get closest point."));
            EXPECT_EQ(outcome.value.toInt(), asymmetric.empty() ? 1 : 0);
            EXPECT_EQ(outcome.infos, Strings{asymmetric.empty() ? "The mesh is symmetrical"
                                                                : "Asymmetrical vertices found: " +
                                                                      std::to_string(asymmetric.size())});
            EXPECT_EQ(selected(), asymmetric.empty() ? Strings{"base"} : asymmetric);
            EXPECT_NEAR(tolerance(), expected.distance / 10.0, 1e-12);
            scene_.mel("select -clear");
            EXPECT_EQ(scene_.changes(before), "") << "the copy is gone";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Zoo, SymmetryOfEveryMesh, ::testing::ValuesIn(zoo::allMeshes()),
                         [](const auto& test) { return test.param.name; });

TEST_F(PolySymmetry, FiveDecimalsTellTheSides) {
    add(twoQuads());
    place(1, "0.000004 0 0");
    EXPECT_EQ(checked("-dir 0 -tol 0.000000001 base"), 1) << "on the plane: not looked up";
    place(1, "0.000005 0 0");
    EXPECT_EQ(checked("-dir 0 -tol 0.000000001 base"), 0);
    EXPECT_EQ(selected(), Strings{"base.vtx[1]"});
    place(1, "-0.000004 0 0");
    EXPECT_EQ(checked("-dir 1 -tol 0.000000001 base"), 1);
    place(1, "-0.000005 0 0");
    EXPECT_EQ(checked("-dir 1 -tol 0.000000001 base"), 0);
}

TEST_F(PolySymmetry, TheToleranceIsMeasuredOutsideTheTransform) {
    add(twoQuads());
    place(2, "1 0.002 0");
    scene_.mel("setAttr base.scale 2 4 6; group -name upper base; setAttr upper.scale 100 100 100");
    EXPECT_EQ(checked("-tol 0.0078 base"), 0);
    EXPECT_EQ(checked("-tol 0.0082 base"), 1);
}

TEST_F(PolySymmetry, CopiesTheMeshOnlyWherePositionsDoNotTellThePartners) {
    add(twoQuads());
    const auto nodesChanged = [this](const std::string& tolerance) {
        const auto before = scene_.graph().nameVersion();
        EXPECT_EQ(checked("-tol " + tolerance + " base"), 1);
        return scene_.graph().nameVersion() != before;
    };
    EXPECT_FALSE(nodesChanged("0.001"));
    // All corners of a face are at one place.
    EXPECT_TRUE(nodesChanged("3"));
}

TEST_F(PolySymmetry, SuggestsATenthOfTheShortestDistance) {
    add(meshOf({-1, 0, 0, 0, 0, 0, 0.5F, 0, 0, 2, 0, 0, -1, 0, 3, 0, 0, 3, 0.5F, 0, 3, 2, 0, 3},
               {{0, 4, 5, 1}, {1, 5, 6, 2}, {2, 6, 7, 3}}));
    checked("base");
    EXPECT_DOUBLE_EQ(tolerance(), 0.05) << "between 1 and 2, of which 2 is looked up";
    checked("-dir 0 base");
    EXPECT_DOUBLE_EQ(tolerance(), 0.1) << "between 0 and 1, of which 0 is looked up";
    scene_.mel("move -relative -objectSpace -5 0 0 base.vtx[*]");
    checked("base");
    EXPECT_EQ(tolerance(), 0.0) << "all on the target side";
}

/// Two shells over the plane, the second one asymmetric, and a vertex without face.
class SymmetryOfAShell : public PolySymmetry {
  protected:
    void SetUp() override {
        add(meshOf({-1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 1, 0, 0, 1, 1, 0, 1,  //
                    -1, 0, 4, 0, 0, 4, 3, 0, 4, -1, 0, 5, 0, 0, 5, 1, 0, 5,  //
                    0,  9, 0},
                   {{0, 3, 4, 1}, {1, 4, 5, 2}, {6, 9, 10, 7}, {7, 10, 11, 8}}));
    }

    const Strings kSecond{"base.vtx[6]", "base.vtx[8]"};
};

TEST_F(SymmetryOfAShell, IsThatOfTheFirstElement) {
    for (const std::string& element : {std::string("base.vtx[0]"), edge(0, 3), std::string("base.f[1]"),
                                       std::string("base.vtx[2] base.vtx[7]")})
        EXPECT_EQ(checked(element), 1) << element;
    for (const std::string& element : {std::string("base.vtx[7]"), edge(7, 10), std::string("base.f[3]")}) {
        scene_.mel("select " + element);
        EXPECT_EQ(checked(""), 0) << element;
        EXPECT_EQ(selected(), kSecond) << element;
    }
    EXPECT_EQ(checked("base"), 0);
    EXPECT_EQ(selected(), kSecond + Strings{"base.vtx[12]"});
    EXPECT_EQ(checked("base.vtx[12]"), 0) << "no face, no shell";
    EXPECT_EQ(selected(), kSecond + Strings{"base.vtx[12]"});
}

TEST_F(SymmetryOfAShell, IsAllThatAMapIsExtendedBy) {
    setMap({9, 9, 9, 9, 9, 9, 8, 8, 8, 8, 8, 8, 8});
    EXPECT_EQ(checked("-atm base.f[0]"), 1);
    EXPECT_EQ(map(), Ints({2, -1, 0, 5, -1, 3, 8, 8, 8, 8, 8, 8, 8}));
    scene_.mel("select base");
    const Outcome outcome = check("-addToMap base.f[2]");
    EXPECT_EQ(outcome.value.toInt(), 0);
    EXPECT_EQ(outcome.infos, Strings()) << "silent, too";
    EXPECT_EQ(selected(), Strings{"base"});
    EXPECT_EQ(map(), Ints({2, -1, 0, 5, -1, 3, -1, -1, -1, 11, -1, 9, 8}));
}

TEST_F(PolySymmetry, AMapIsMadeOrKeepsWhatIsNotLookedUp) {
    add(twoQuads());
    EXPECT_EQ(checked("-atm base"), 1);
    EXPECT_EQ(map(), Ints({2, -1, 0, 5, -1, 3})) << "vertices of the plane are next to the target side";
    scene_.mel("undo");
    EXPECT_EQ(map(), Ints({2, -1, 0, 5, -1, 3}));
    setMap({-1, 1, -1, -1, 4, -1});
    EXPECT_EQ(checked("-atm base"), 1);
    EXPECT_EQ(map(), Ints({2, 1, 0, 5, 4, 3}));
    EXPECT_TRUE(hasTolerance());
}

TEST_F(PolySymmetry, AMapHoldsPairsOfWhichOneIsLookedUp) {
    // No vertex on the plane: of the two columns beside it one is next to the target side.
    add(zoo::openGrid(3, 1));
    EXPECT_EQ(checked("-atm base"), 1);
    EXPECT_EQ(map(), Ints({3, 2, 1, 0, 7, 6, 5, 4}));
}

TEST_F(PolySymmetry, AMapOfAnotherLengthIsNotExtended) {
    add(twoQuads());
    for (const Ints& entries : {Ints(5, -1), Ints()}) {
        setMap(entries);
        expectRefused("-atm base",
                      "Unable to extend the order mapping because the vertex count has changed.");
    }
    EXPECT_FALSE(hasTolerance());
    EXPECT_EQ(checked("base"), 1) << "a check alone does not care";
}

class ApplyMap : public PolySymmetry {
  protected:
    const std::string kMissing = "Vertex order map attribute is not available.";
};

TEST_F(ApplyMap, GivesTheTargetSideTheMirrorImageOfTheOther) {
    add(zoo::sphereWithPoles(), "source");
    add(zoo::sphereWithPoles());
    scene_.mel("move -relative -objectSpace 0.1 0.02 0.05 base.vtx[3] base.vtx[17] base.vtx[33]");
    const std::vector<double> sculpted = scene_.points("base");
    for (const std::size_t axis : {0U, 1U, 2U}) {
        const std::string text(1, "xyz"[axis]);
        scene_.mel("dv_polyMapVertexOrder -a " + text + " source");
        const Ints partners = map("sourceShape");
        for (const bool isPositiveSource : {true, false}) {
            std::vector<double> expected = sculpted;
            for (std::size_t k = 0; k < expected.size(); ++k) {
                const double side = sculpted[k - k % 3 + axis] * (isPositiveSource ? -1.0 : 1.0);
                const auto partner = static_cast<std::size_t>(partners[k / 3]);
                if (side > 5e-6) expected[k] = sculpted[3 * partner + k % 3] * (k % 3 == axis ? -1.0 : 1.0);
            }
            ASSERT_NE(expected, sculpted);
            EXPECT_EQ(checked("-ax " + text + (isPositiveSource ? "" : " -dir 0") + " -aom source base"), 1);
            EXPECT_EQ(scene_.points("base"), expected) << text;
            scene_.mel("undo; redo");
            EXPECT_EQ(scene_.points("base"), expected) << text;
            scene_.mel("undo");
            EXPECT_EQ(scene_.points("base"), sculpted) << text;
        }
    }
    EXPECT_FALSE(hasTolerance());
}

TEST_F(ApplyMap, PartnersOnTheTargetSideCountWhereTheyAreByThen) {
    add(twoQuads());
    setMap({3, 1, -1, 5, -99, 6});
    place(3, "-2 0 1");
    EXPECT_EQ(checked("-aom base base"), 1);
    // 0 takes the mirror image of 3, which is still to move; what is no vertex moves nothing.
    EXPECT_EQ(scene_.points("base"),
              std::vector<double>({2, 0, 1, 0, 0, 0, 1, 0, 0, -1, 0, 1, 0, 0, 1, 1, 0, 1}));
}

TEST_F(ApplyMap, TheLastFurtherObjectIsTheSource) {
    add(twoQuads(), "source");
    scene_.mel("dv_polyMapVertexOrder source");
    add(twoQuads());
    place(2, "1 0 -3");
    scene_.mel("select base");
    EXPECT_EQ(checked("-applyOrderMap sourceShape"), 1);
    EXPECT_EQ(scene_.points("base")[2], -3);
    scene_.mel("undo");
    expectRefused("-aom base base source", kMissing);
    EXPECT_EQ(checked("-aom \"\" base source"), 1) << "no name, but an object";
}

TEST_F(ApplyMap, NeedsAMapForTheMesh) {
    add(zoo::openGrid(), "other");
    add(twoQuads());
    expectRefused("-aom other base", kMissing);
    scene_.mel("dv_polyMapVertexOrder other");
    expectRefused("-aom other base",
                  "The vertex order map has 20 entries for 6 vertices. Create it again with "
                  "dv_polyMapVertexOrder.");
    setMap({2, 1, 0, 5, 4, 3});
    scene_.mel("select -clear");
    expectRefused("-aom base", kMissing);  // the mesh itself, but no source
    expectRefused("-aom lambert1 base", "lambert1 is not a mesh object.");
    EXPECT_EQ(checked("-aom base base"), 1);
}

TEST_F(PolySymmetry, UndoOfACheckSetsThePointsThatItSaw) {
    add(twoQuads());
    const std::vector<double> seen = scene_.points("base");
    checked("base");
    scene_.mel(
        "undoInfo -stateWithoutFlush off; move -relative -objectSpace 0 1 0 base.vtx[2];"
        "undoInfo -stateWithoutFlush on; undo");
    EXPECT_EQ(scene_.points("base"), seen);
}

/// Deletes what a command that is still queued works on.
class SymmetryOfALostMesh : public ApplyMap {
  protected:
    void SetUp() override {
        add(twoQuads(), "source");
        scene_.mel("dv_polyMapVertexOrder source");
        add(twoQuads());
    }
    void lose(const std::string& mesh) {
        scene_.mel("undoInfo -stateWithoutFlush off; delete " + mesh + "; undoInfo -stateWithoutFlush on");
        before_ = scene_.dump();
    }
    std::string reportOf(const std::string& command) {
        return standardErrorOf([&] { scene_.run(command); });
    }

    std::string before_;
};

TEST_F(SymmetryOfALostMesh, UndoReportsIt) {
    checked("base");
    lose("base");
    const std::string report = reportOf("undo");
    EXPECT_NE(report.find("polySymmetry"), std::string::npos) << report;
    EXPECT_NE(report.find("683"), std::string::npos) << report;
    EXPECT_EQ(scene_.changes(before_), "");
    scene_.mel("flushUndo; dv_polySymmetry -h");
    EXPECT_EQ(reportOf("undo; redo"), "") << "help works on nothing";
}

TEST_F(SymmetryOfALostMesh, RedoSaysSo) {
    for (const std::string& lost : {std::string("source"), std::string("base")}) {
        scene_.mel("flushUndo; dv_polySymmetry " + std::string(lost == "source" ? "-aom source " : "") +
                   "base; undo");
        lose(lost);
        EXPECT_EQ(scene_.run("redo").errors.front(), lost == "source" ? kMissing : "No mesh provided.");
        EXPECT_EQ(scene_.changes(before_), "");
    }
}

TEST_F(PolySymmetry, MeshesOfOneNameAreToldApart) {
    add(twoQuads());
    scene_.mel("group -name a base");
    add(twoQuads());
    scene_.mel("move -relative -objectSpace 0 1 0 |base.vtx[2]");
    EXPECT_EQ(checked("|base.f[0]"), 0);
    EXPECT_EQ(checked("-atm |a|base.f[0]"), 1);
    EXPECT_TRUE(hasMap("|a|base|baseShape"));
    EXPECT_FALSE(hasMap("|base|baseShape"));
}

}  // namespace
