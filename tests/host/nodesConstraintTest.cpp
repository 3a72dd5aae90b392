#include <cmath>

#include "host/nodesFixture.h"

namespace {

using namespace nodestest;
using geometry::Matrix4;
using geometry::Vec3;

constexpr double kDegree = geometry::kPi / 180;

/// Constraints wired as saved scenes have them.
class Constraints : public testing::Test {
  protected:
    NodeRef below(const char* type, const std::string& name, const NodeRef& parent) {
        return scene.createNode(*scene.types().find(type), name, parent.get());
    }
    void set(const std::string& plug, const Vec3& value) { nodes::setTripleAt(scene, scene.at(plug), value); }
    Matrix4 world(const NodeRef& node) { return nodes::worldMatrix(scene, node); }
    Vec3 place(const NodeRef& node) { return world(node).row(3); }
    static void expectNear(const Vec3& value, const Vec3& wanted) {
        EXPECT_LT(geometry::length(value - wanted), 1e-9)
            << testing::PrintToString(value) << " is not " << testing::PrintToString(wanted);
    }

    /// Connects plugs of these names where both nodes have them.
    void joinIfThere(const std::string& source, const NodeRef& node, const graph::Plug& destination) {
        const graph::Plug from = node->plug(source);
        if (from && destination) scene.connect(from.isArray() ? from.element(0) : from, destination);
    }
    NodeRef constrain(const char* type, const NodeRef& constrained, const std::vector<NodeRef>& targets) {
        const NodeRef node = below(type, "constraint", constrained);
        for (const auto& [source, destination] :
             {std::pair("pim", "cpim"), {"ro", "cro"}, {"rp", "crp"}, {"rpt", "crt"}, {"jo", "cjo"}})
            joinIfThere(source, constrained, node->plug(destination));
        for (std::size_t k = 0; k < targets.size(); ++k) {
            const graph::Plug element = node->plug("tg").element(static_cast<int>(k));
            for (const char* name : {"t", "rp", "rpt->trt", "r", "ro", "jo", "s", "ssc->tsc", "is", "pm"}) {
                std::string source(name);
                std::string destination = 't' + source;
                if (const auto arrow = source.find("->"); arrow != std::string::npos) {
                    destination = source.substr(arrow + 2);
                    source.resize(arrow);
                }
                const graph::Attribute* child = element.attribute().child(destination);
                if (child != nullptr) joinIfThere(source, targets[k], element.child(*child));
            }
            graph::AttributeSpec weight =
                graph::number(targets[k]->name() + 'W' + std::to_string(k), 'w' + std::to_string(k));
            scene.addAttribute(*node, std::move(weight).withDefault(1));
            scene.connect(node->plug('w' + std::to_string(k)),
                          element.child(*element.attribute().child("tw")));
        }
        // As its position an aim constraint reads the translation that it does not compute.
        if (std::string(type) == "aimConstraint") joinIfThere("t", constrained, node->plug("ct"));
        for (const auto& [output, channel] : {std::pair("ct", "t"), {"cr", "r"}, {"cs", "s"}}) {
            const graph::Plug from = node->plug(output);
            if (!from || !from.attribute().isOutput()) continue;
            for (int axis = 0; axis < 3; ++axis)
                scene.connect(from.child(axis), constrained->plug(channel).child(axis));
        }
        return node;
    }

    Scene scene;
    NodeRef room = scene.make("transform", "room");
    NodeRef led = below("transform", "led", room);
    NodeRef hall = scene.make("transform", "hall");
    NodeRef first = below("transform", "first", hall);
    NodeRef second = below("transform", "second", hall);
};

TEST_F(Constraints, AParentConstraintIsTheTargetsWorldMatrixAfterTheOffset) {
    led = below("joint", "bone", room);
    set("room.t", {3, 1, 2});
    set("room.r", {0.4, 0.5, 0.6});
    set("room.s", {3, 3, 3});
    set("bone.jo", {0.3, -0.4, 0.1});
    scene.set("bone.ro", 4);
    set("hall.r", {1, -0.5, 0.2});
    set("hall.s", {2, 2, 2});
    set("first.t", {1, 2, 3});
    set("first.r", {0.7, 0.2, -0.9});
    scene.set("first.ro", 2);
    const NodeRef node = constrain("parentConstraint", led, {first});
    set("constraint.tg[0].tot", {4, 5, 6});
    set("constraint.tg[0].tor", {0.2, 0.3, 0.4});
    const Matrix4 offset = geometry::rotationMatrix(Vec3{0.2, 0.3, 0.4}) * Matrix4::translation({4, 5, 6});
    const auto expectFollows = [&] {
        const Matrix4 wanted = offset * world(first);
        const Matrix4 got = world(led);
        expectNear(got.row(3), wanted.row(3));
        // The target is scaled by 2 in the world, the joint by 3: scale is not taken over.
        for (int axis = 0; axis < 3; ++axis)
            expectNear(got.row(axis) * (1.0 / 3), wanted.row(axis) * 0.5);
    };
    expectFollows();
    set("hall.t", {-7, 8, 9});
    set("first.r", {0.1, 0.9, 2});
    set("room.r", {0, 1, 0});
    expectFollows();
    set("first.rp", {1, 1, 0});
    set("first.sp", {1, 1, 0});
    set("constraint.tg[0].tot", {});
    expectNear(place(led), geometry::transformPoint(vec(1, 1, 0), world(first)));
}

TEST_F(Constraints, APointConstraintBringsPivotToWeightedMeanOfPivots) {
    set("room.t", {0, 0, 10});
    set("room.r", {0, 0, geometry::kPi / 2});
    set("room.s", {1, 2, 1});
    set("led.rp", {1, 0, 0});
    set("first.t", {4, 0, 0});
    set("second.t", {0, 8, 0});
    set("second.rp", {0, 0, 4});
    constrain("pointConstraint", led, {first, second});
    const auto pivot = [&] { return geometry::transformPoint(vec(1, 0, 0), world(led)); };
    expectNear(pivot(), vec(2, 4, 2));
    scene.set("constraint.w1", 3);
    expectNear(pivot(), vec(1, 6, 3));
    scene.set("constraint.w0", 0);
    expectNear(pivot(), vec(0, 8, 4));
    // The offset is in the parent's space: y there is -x in the world, by 2.
    set("constraint.offset", {0, 1, 0});
    expectNear(pivot(), vec(-2, 8, 4));
}

TEST_F(Constraints, WithoutAnyWeightItRestsOrDoesNothing) {
    set("led.t", {7, 8, 9});
    set("first.t", {1, 0, 0});
    constrain("pointConstraint", led, {first});
    set("constraint.rst", {1, 2, 3});
    expectNear(place(led), vec(1, 0, 0));
    scene.set("constraint.w0", 0);
    expectNear(place(led), vec(7, 8, 9));
    set("led.t", {6, 5, 4});
    expectNear(place(led), vec(6, 5, 4));
    scene.set("constraint.enableRestPosition", 1);
    expectNear(place(led), vec(1, 2, 3));
    scene.set("constraint.w0", 0.01);
    expectNear(place(led), vec(1, 0, 0));
    for (const char* switchedOff : {"constraint.nodeState", "constraint.lockOutput"}) {
        scene.set(switchedOff, 1);
        expectNear(place(led), vec(6, 5, 4));
        scene.set(switchedOff, 0);
        expectNear(place(led), vec(1, 0, 0));
    }
}

TEST_F(Constraints, AnOrientConstraintBlendsAndOffsetsRotations) {
    led = below("joint", "bone", room);
    set("room.s", {5, 1, 2});
    set("room.r", {0, 0, 30 * kDegree});
    set("bone.jo", {90 * kDegree, 0, 0});
    set("first.r", {0, 0, 20 * kDegree});
    set("second.r", {0, 0, 120 * kDegree});
    constrain("orientConstraint", led, {first, second});
    const auto expectTurn = [&](double degrees) {
        // In the room, 30 degrees less.
        const Matrix4 wanted = geometry::rotationMatrix(Vec3{0, 0, (degrees - 30) * kDegree});
        EXPECT_TRUE(geometry::isEquivalent(nodes::localMatrix(scene, led), wanted, 1e-9)) << degrees;
    };
    expectTurn(70);
    scene.set("constraint.w1", 3);
    scene.set("constraint.interpType", 2);
    expectTurn(95);
    scene.set("constraint.interpType", 3);
    expectTurn(20 - 0.75 * 260);
    scene.set("constraint.interpType", 2);
    set("constraint.offset", {0, 0, 10 * kDegree});
    expectTurn(105);
}

TEST_F(Constraints, AScaleConstraintTakesTheScaleThatTheParentsLeave) {
    set("hall.s", {3, 3, 3});
    set("room.s", {2, 1, 0.5});
    set("first.s", {1, 2, -4});
    set("second.s", {3, 2, 4});
    constrain("scaleConstraint", led, {first, second});
    const auto scale = [&] { return nodes::transformParts(scene, led).scale; };
    expectNear(scale(), vec(3, 6, 0));
    scene.set("constraint.w0", 0);
    expectNear(scale(), vec(4.5, 6, 24));
    set("constraint.offset", {2, 1, 1});
    expectNear(scale(), vec(9, 6, 24));
    scene.set("constraint.tsc", 1);
    set("constraint.is", {2, 1, 0.5});
    expectNear(scale(), vec(18, 6, 12));
}

struct Up {
    const char* name;
    int type;
    Vec3 direction;  // to which the y axis leans, in the world
};

void PrintTo(const Up& value, std::ostream* stream) {
    *stream << value.name;
}

class Aims : public Constraints, public testing::WithParamInterface<Up> {};

TEST_P(Aims, ExactlyBelowAnUnevenParent) {
    set("room.t", {1, 2, 3});
    set("room.s", {1, 3, 2});
    set("room.r", {0.3, 0.2, 0.1});
    set("led.t", {2, 0, 1});
    set("first.t", {5, -6, 4});
    set("second.t", {5, 6, -1});
    const NodeRef sky = scene.make("transform", "sky");
    set("sky.t", {-20, 5, 1});
    set("sky.r", {0, 0, geometry::kPi / 2});
    constrain("aimConstraint", led, {first, second});
    scene.set("constraint.worldUpType", GetParam().type);
    set("constraint.worldUpVector", {0, 0, 1});
    if (GetParam().type == 2) set("constraint.worldUpVector", {1, 0, 0});
    scene.join("sky.worldMatrix[0]", "constraint.worldUpMatrix");
    for (const double height : {6.0, -2.0}) {
        set("second.t", {5, height, -1});
        const Vec3 target = (place(first) + place(second)) * 0.5;
        const Vec3 direction = target - place(led);
        const Vec3 up = GetParam().type == 1 ? place(sky) - place(led) : GetParam().direction;
        const Matrix4 got = world(led);
        expectNear(geometry::normalized(got.row(0)), geometry::normalized(direction));
        const Vec3 side = geometry::normalized(geometry::cross(direction, up));
        EXPECT_NEAR(geometry::dot(got.row(1), side), 0, 1e-9);
        EXPECT_GT(geometry::dot(geometry::cross(direction, got.row(1)), side), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(UpTypes, Aims,
                         testing::Values(Up{"scene", 0, {0, 1, 0}}, Up{"object", 1, {}},
                                         // The object's x axis: turned by 90 degrees about z, it is y.
                                         Up{"objectRotation", 2, {0, 1, 0}}, Up{"vector", 3, {0, 0, 1}}),
                         [](const auto& parameter) { return parameter.param.name; });

TEST_F(Constraints, AnAimHasOffsetOrientAndNoTwistOfItsOwn) {
    led = below("joint", "bone", room);
    set("bone.jo", {0, 0, 25 * kDegree});
    set("first.t", {0, 0, -3});
    constrain("aimConstraint", led, {first});
    scene.set("constraint.worldUpType", 4);
    // x to -z: by 90 degrees about y.
    expectNear(geometry::transformVector(vec(1, 2, 3), world(led)), vec(3, 2, -1));
    set("constraint.offset", {90 * kDegree, 0, 0});
    expectNear(geometry::transformVector(vec(1, 2, 3), world(led)), vec(2, -3, -1));
}

TEST_F(Constraints, AChainOfManyFollowsItsFirstTarget) {
    NodeRef at = first;
    for (int k = 0; k < 3000; ++k) {
        const NodeRef next = scene.make("transform", "link" + std::to_string(k));
        const NodeRef node = below("pointConstraint", "follow" + std::to_string(k), next);
        scene.connect(at->plug("t"), node->plug("tg").element(0).child(*node->type().find("tt")));
        for (int axis = 0; axis < 3; ++axis)
            scene.connect(node->plug("ct").child(axis), next->plug("t").child(axis));
        at = next;
    }
    set("first.t", {1, 2, 3});
    expectNear(place(at), vec(1, 2, 3));
    set("first.t", {4, 2, 3});
    expectNear(place(at), vec(4, 2, 3));
}

}  // namespace
