// Scenes that the real host saved, from a folder outside the repository (tests/README.md): nothing is lost,
// and what we compute from them is what the real host stored beside it.

#include <cmath>
#include <cstdlib>

#include "geometry/math.h"
#include "host/sceneFixture.h"
#include "nodes/transformNode.h"

namespace scenetest {
namespace {

namespace fs = std::filesystem;
using host::graph::NodeRef;

fs::path scenesFolder() {
    const char* folder = std::getenv("DELVEN_DATA_FOLDER");
    return folder != nullptr ? fs::path(folder) / "scenes" : fs::path();
}

/// Shows only the lines that differ: scenes are long.
void expectSame(const std::string& saved, const std::string& text, const std::string& name) {
    if (saved == text) return;
    EXPECT_EQ(missingLines(saved, text), missingLines(text, saved)) << name;
    ADD_FAILURE() << name << " differs";
}

class SceneData : public testing::Test {
  protected:
    void SetUp() override {
        if (!fs::is_directory(scenesFolder())) GTEST_SKIP() << "DELVEN_DATA_FOLDER names no folder";
    }

    /// Opens a scene of the folder, as a copy.
    void open(const std::string& name) { host_.open(textOf(name)); }
    static std::string textOf(const std::string& name) {
        return host::geometry::readTextFile((scenesFolder() / name).string()).text;
    }
    static std::vector<std::string> allScenes() {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(scenesFolder())) {
            if (entry.path().extension() == ".ma")
                names.push_back(fs::relative(entry.path(), scenesFolder()).generic_string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    NodeRef node(const std::string& name) { return host::graph::findNode(host_.graph, name); }
    std::vector<double> numbers(const std::string& command) {
        return host_.run(command).value.toFloatArray();
    }
    /// Object-space points of a mesh.
    std::vector<float> points(const std::string& shape) {
        const auto mesh = host::nodes::meshOf(host_.graph, node(shape));
        EXPECT_NE(mesh, nullptr) << shape;
        return mesh != nullptr ? mesh->mesh.points() : std::vector<float>();
    }

    SceneHost host_;
};

TEST_F(SceneData, EveryByteOfEveryScene) {
    for (const std::string& name : allScenes()) {
        const std::string text = textOf(name);
        SceneHost host;
        host.open(text);
        EXPECT_TRUE(host.saved() == text) << name;
        host.dump();
        host.touchEverything();
        expectSame(host.saved(), text, name);
    }
}

TEST_F(SceneData, EveryByteWhereKnownTypesAreUnknown) {
    for (const std::string& name : allScenes()) {
        std::string text = textOf(name);
        for (const std::string type :
             {"transform", "mesh", "joint", "blendShape", "skinCluster", "objectSet", "camera"}) {
            const std::string from = "createNode " + type + ' ';
            for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos;)
                text.replace(at, from.size(), "createNode x" + type + ' ');
        }
        SceneHost host;
        host.open(text);
        host.dump();
        host.touchEverything();
        expectSame(host.saved(), text, name);
    }
}

/// The same two targets, once as live meshes and once as stored deltas.
TEST_F(SceneData, DeltasOfLiveTargetsAreThoseThatTheHostStored) {
    std::vector<std::vector<double>> deltas[2];
    std::vector<std::string> components[2];
    for (int k = 0; k < 2; ++k) {
        open(k == 0 ? "maya2gltf/CubeToSphereStored.ma" : "maya2gltf/CubeToSphereLive.ma");
        points("pCubeShape1");
        for (int target = 0; target < 2; ++target) {
            const std::string item = "blendShape1.it[0].itg[" + std::to_string(target) + "].iti[6000].i";
            deltas[k].push_back(numbers("getAttr \"" + item + "pt\""));
            components[k].push_back(host_.ok("getAttr \"" + item + "ct\""));
        }
    }
    EXPECT_EQ(deltas[0].front().size(), 98U * 4U);
    EXPECT_EQ(deltas[0], deltas[1]);
    EXPECT_EQ(components[0], components[1]);
}

TEST_F(SceneData, ABlendShapeAtOneTargetIsThatTarget) {
    open("maya2gltf/CubeToSphereLive.ma");
    const auto sources =
        host_.run("listConnections -s 1 -d 0 -sh 1 blendShape1.it[0].itg[0].iti[6000].igt").value;
    host_.ok("setAttr blendShape1.w[0] 1; setAttr blendShape1.w[1] 0");
    EXPECT_EQ(points("pCubeShape1"), points(sources.toStringArray().front()));
}

class JointScene : public SceneData,
                   public testing::WithParamInterface<std::pair<const char*, const char*>> {};

/// Joints that nothing moved since they were bound: where they are is where they were.
TEST_P(JointScene, WorldMatricesAreTheSavedBindPoses) {
    open(GetParam().first);
    int count = 0;
    for (const NodeRef& joint : host_.graph.nodesOfType("joint")) {
        if (joint->name().rfind(GetParam().second, 0) != 0) continue;
        const std::vector<double> saved = numbers("getAttr " + joint->name() + ".bps");
        const std::vector<double> now = numbers("getAttr " + joint->name() + ".worldMatrix[0]");
        ASSERT_EQ(saved.size(), 16U);
        for (std::size_t k = 0; k < 16; ++k)
            EXPECT_NEAR(now[k], saved[k], 1e-12 * std::max(1.0, std::abs(saved[k])))
                << joint->name() << ' ' << k;
        ++count;
    }
    EXPECT_GE(count, 3);
}

INSTANTIATE_TEST_SUITE_P(Scenes, JointScene,
                         testing::Values(std::pair("ffda/CylinderTest.ma", "joint"),
                                         std::pair("maya-usd/UsdExportSkeletonAtSceneRoot.ma", "joint"),
                                         std::pair("maya2gltf/ThreeJoints_RootJoint_Unbound.ma", "joint"),
                                         std::pair("omtk/test_interactivefk02.ma", "jnt_layer")));

class SkinScene : public SceneData,
                  public testing::WithParamInterface<std::pair<const char*, const char*>> {};

TEST_P(SkinScene, AtTheBindPoseASkinChangesNothing) {
    open(GetParam().first);
    const std::string skin = GetParam().second;
    const NodeRef cluster = node(skin);
    ASSERT_NE(cluster, nullptr);
    const auto meshAt = [&](const host::graph::Plug& plug) {
        return host::graph::dataAs<host::nodes::MeshData>(host_.graph.data(plug));
    };
    const auto in = meshAt(cluster->plug("input").element(0).child(0));
    const auto out = meshAt(cluster->plug("outputGeometry").element(0));
    ASSERT_NE(in, nullptr);
    ASSERT_NE(out, nullptr);
    ASSERT_EQ(in->mesh.points().size(), out->mesh.points().size());
    for (std::size_t k = 0; k < in->mesh.points().size(); ++k)
        EXPECT_NEAR(in->mesh.points()[k], out->mesh.points()[k], 1e-6) << k;
}

INSTANTIATE_TEST_SUITE_P(
    Scenes, SkinScene,
    testing::Values(std::pair("maya-usd/UsdExportSkeletonAtSceneRoot.ma", "skinCluster1"),
                    std::pair("maya2gltf/ThreeJoints_RootJoint_Unbound.ma", "skinCluster1")));

/// A cube of side 1 about the origin, bound to one joint at the origin and moved with it since.
///
/// point' = point * gm * sum over the joints (weight * pm * joint), with rows as points. The file has
/// gm = 1, one joint of weight 1 for each of the eight vertices, pm[0] = 1, and a joint without parent,
/// rotation, scale and orientation: joint = translation by t = (0, 0, 0.46056276425134846). The transform of
/// the mesh is the identity. So point' = point + t: x and y stay, and z is
///     0.5 + 0.46056276425134846 =  0.96056276425134846 in front,
///    -0.5 + 0.46056276425134846 = -0.03943723574865154 behind.
TEST_F(SceneData, AMovedJointMovesThePointsThatFollowIt) {
    open("maya2gltf/SingleJointCubeTop.ma");
    constexpr double kFront = 0.96056276425134846;
    constexpr double kBehind = -0.03943723574865154;
    const std::vector<double> moved{-0.5, -0.5, kFront,  0.5, -0.5, kFront,   //
                                    -0.5, 0.5,  kFront,  0.5, 0.5,  kFront,   //
                                    -0.5, 0.5,  kBehind, 0.5, 0.5,  kBehind,  //
                                    -0.5, -0.5, kBehind, 0.5, -0.5, kBehind};
    const std::vector<float> now = points("skinned_cubeShape");
    ASSERT_EQ(now.size(), moved.size());
    // Half a unit of the last place of the host's single precision, below 1.
    constexpr double kTolerance = 3e-8;
    for (std::size_t k = 0; k < moved.size(); ++k)
        EXPECT_NEAR(static_cast<double>(now[k]), moved[k], kTolerance) << k;
}

}  // namespace
}  // namespace scenetest
