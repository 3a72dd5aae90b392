#include "host/nodesFixture.h"

namespace {

using namespace nodestest;
using geometry::Matrix4;
using geometry::Vec3;

constexpr double kHalfPi = geometry::kPi / 2;

class Transforms : public testing::Test {
  protected:
    NodeRef below(const char* type, const std::string& name, const NodeRef& parent) {
        return scene.createNode(*scene.types().find(type), name, parent.get());
    }
    void set(const std::string& plug, const Vec3& value) { nodes::setTripleAt(scene, scene.at(plug), value); }
    Vec3 image(const NodeRef& node, const Vec3& point) {
        return geometry::transformPoint(point, nodes::worldMatrix(scene, node));
    }
    static void expectNear(const Vec3& value, const Vec3& wanted) {
        EXPECT_LT(geometry::length(value - wanted), 1e-12) << testing::PrintToString(value);
    }

    Scene scene;
    NodeRef top = scene.make("transform", "top");
};

TEST_F(Transforms, AJointsRotationsFollowInOrder) {
    const NodeRef joint = below("joint", "bone", top);
    set("bone.ra", {kHalfPi, 0, 0});
    set("bone.r", {0, 0, kHalfPi});
    set("bone.jo", {0, kHalfPi, 0});
    set("bone.s", {1, 3, 1});
    set("bone.is", {2, 1, 1});
    set("bone.t", {0, 0, 7});
    // Scale: (0 3 0). Axis, about x: (0 0 3). Rotation, about z: the same. Orient, about y: (3 0 0). Half of
    // it for the parent's scale of 2.
    expectNear(image(joint, vec(0, 1, 0)), vec(1.5, 0, 7));
    // (1 0 0). About x: the same. About z: (0 1 0). About y: the same.
    expectNear(image(joint, vec(1, 0, 0)), vec(0, 1, 7));
}

TEST_F(Transforms, LimitsActWhereTheyAreEnabled) {
    set("top.t", {5, -5, 5});
    set("top.mxtl", {2, 2, 2});
    set("top.mntl", {-1, -1, -1});
    scene.set("top.xtxe", 1);
    scene.set("top.mtye", 1);
    expectNear(image(top, {}), vec(2, -1, 5));
    EXPECT_EQ(scene.get("top.tx"), 5) << "the attribute keeps its value";
    scene.set("top.xtxe", 0);
    expectNear(image(top, {}), vec(5, -1, 5));
    set("top.t", {});
    set("top.r", {0, 0, 2});
    set("top.mxrl", {0, 0, kHalfPi});
    scene.set("top.xrze", 1);
    set("top.s", {0.5, 4, 1});
    set("top.mnsl", {2, 2, 2});
    scene.set("top.msxe", 1);
    expectNear(image(top, vec(1, 1, 0)), vec(-4, 2, 0));
}

TEST_F(Transforms, AnOffsetMatrixIsBetweenTheTransformAndItsParent) {
    const NodeRef node = below("transform", "node", top);
    set("top.t", {10, 0, 0});
    set("node.t", {1, 0, 0});
    const NodeRef driver = scene.make("transform", "driver");
    scene.join("driver.matrix", "node.offsetParentMatrix");
    set("driver.t", {0, 5, 0});
    set("driver.s", {2, 2, 2});
    expectNear(image(node, {}), vec(12, 5, 0));
    expectNear(nodes::parentMatrix(scene, node).row(3), vec(10, 5, 0));
    expectNear(nodes::localMatrix(scene, node).row(3), vec(1, 0, 0));
    set("driver.t", {0, 6, 0});
    expectNear(image(node, {}), vec(12, 6, 0));
    scene.set("node.inheritsTransform", 0);
    expectNear(image(node, {}), vec(2, 6, 0));
}

TEST_F(Transforms, ACameraIsAShapeWithoutMeshOrDeformers) {
    const NodeRef camera = below("camera", "camera", top);
    EXPECT_EQ(scene.shapeOf(top), camera);
    EXPECT_EQ(nodes::meshOf(scene, camera), nullptr);
    EXPECT_TRUE(nodes::deformersOf(scene, camera).empty());
    EXPECT_EQ(scene.componentCount(camera, graph::ComponentKind::Vertex), 0);
}

// --- schema ------------------------------------------------------------------------------------------------

TEST(Schema, EveryAttributeOfATypeIsFoundByBothOfItsNames) {
    const Scene scene;
    for (const graph::NodeType* type : scene.types().all()) {
        for (const graph::Attribute* attribute : type->attributes()) {
            EXPECT_EQ(type->find(attribute->longName()), attribute) << type->name() << attribute->longName();
            EXPECT_EQ(type->find(attribute->shortName()), attribute)
                << type->name() << attribute->shortName();
        }
    }
}

struct Names {
    const char* type;
    const char* longName;
    const char* shortName;
};

/// Names that do not follow from a pattern, as scenes of the real host have them.
TEST(Schema, KnowsTheShortNamesThatScenesUse) {
    const Scene scene;
    for (const auto& [type, longName, shortName] :
         std::initializer_list<Names>{{"transform", "minTransXLimit", "mtxl"},
                                      {"transform", "maxTransYLimitEnable", "xtye"},
                                      {"transform", "minRotZLimit", "mrzl"},
                                      {"transform", "maxScaleXLimitEnable", "xsxe"},
                                      {"transform", "rotatePivotTranslateX", "rptx"},
                                      {"joint", "bindPose", "bps"},
                                      {"joint", "overrideEnabled", "ove"},
                                      {"joint", "objectColorG", "obcg"},
                                      {"mesh", "objectColor", "oc"},
                                      {"parentConstraint", "restRotateY", "rry"},
                                      {"parentConstraint", "restTranslateZ", "rtz"},
                                      {"parentConstraint", "targetOffsetRotate", "tor"},
                                      {"parentConstraint", "interpType", "int"},
                                      {"aimConstraint", "worldUpVectorX", "wux"},
                                      {"camera", "focalLength", "fl"},
                                      {"lightLinker", "shadowObject", "solk"},
                                      {"renderLayerManager", "renderLayerId", "rlmi"},
                                      {"nodeGraphEditorInfo", "nodeVisualState", "nvs"},
                                      {"dagPose", "xformMatrix", "xm"}}) {
        const graph::Attribute* attribute = scene.types().find(type)->find(shortName);
        ASSERT_NE(attribute, nullptr) << type << ' ' << shortName;
        EXPECT_EQ(attribute->longName(), longName) << type;
    }
}

}  // namespace
