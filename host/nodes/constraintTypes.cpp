// The node types of constraints: their attributes. constraints.cpp computes them.

#include "geometry/math.h"
#include "nodes/constraints.h"
#include "nodes/schema.h"
#include "nodes/specs.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::enumeration;
using graph::number;
using graph::ValueKind;

/// The targets of a constraint. Every kind has the weight and the matrix of the target's parent.
AttributeSpec targets(std::vector<AttributeSpec> children) {
    children.push_back(matrix("targetParentMatrix", "tpm"));
    children.push_back(number("targetWeight", "tw").withDefault(1));
    return graph::compound("target", "tg", std::move(children)).array();
}

AttributeSpec distances(const char* longName, const char* shortName) {
    return graph::triple(longName, shortName, ValueKind::Distance);
}

AttributeSpec angles(const char* longName, const char* shortName) {
    return graph::triple(longName, shortName, ValueKind::Angle);
}

AttributeSpec factors(const char* longName, const char* shortName) {
    return graph::triple(longName, shortName, ValueKind::Double, 1.0);
}

AttributeSpec rotateOrder(const char* longName, const char* shortName) {
    return enumeration(longName, shortName, {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"});
}

AttributeSpec interpolation() {
    return enumeration("interpType", "int", {"No Flip", "Average", "Shortest", "Longest", "Cache"})
        .withDefault(1)
        .keyable();
}

AttributeSpec restTranslate() {
    return axisTriple("restTranslate", "rst", "restTranslate#", "rt#", ValueKind::Distance);
}

AttributeSpec restRotate() {
    return axisTriple("restRotate", "rsrr", "restRotate#", "rr#", ValueKind::Angle);
}

AttributeSpec vector(const char* longName, const char* shortName, const geometry::Vec3& value) {
    AttributeSpec spec = keyableChildren(graph::triple(longName, shortName));
    for (std::size_t axis = 0; axis < spec.children.size(); ++axis)
        spec.children[axis].defaultValue = value[static_cast<int>(axis)];
    return spec;
}

/// What a constraint reads of the constrained transform, besides the inverse of its parent's matrix.
AttributeSpec ownPivot() {
    return distances("constraintRotatePivot", "crp");
}

AttributeSpec ownPivotOffset() {
    return distances("constraintRotateTranslate", "crt");
}

graph::NodeTypeSpec pointConstraint() {
    return {"pointConstraint",
            "constraint",
            {targets({distances("targetTranslate", "tt"), distances("targetRotatePivot", "trp"),
                      distances("targetRotateTranslate", "trt")}),
             ownPivot(), ownPivotOffset(), keyableChildren(distances("offset", "o")),
             distances("constraintTranslate", "ct").output(), flag("constraintOffsetPolarity", "cop"),
             restTranslate()}};
}

graph::NodeTypeSpec orientConstraint() {
    return {"orientConstraint",
            "constraint",
            {targets({angles("targetRotate", "tr"), rotateOrder("targetRotateOrder", "tro"),
                      angles("targetJointOrient", "tjo")}),
             rotateOrder("constraintRotateOrder", "cro"), angles("constraintJointOrient", "cjo"),
             factors("inverseScale", "is"), keyableChildren(angles("offset", "o")),
             angles("constraintRotate", "cr").output(), interpolation(), angles("lastTargetRotation", "lr"),
             restRotate(), flag("useOldOffsetCalculation", "uooc")}};
}

graph::NodeTypeSpec parentConstraint() {
    return {"parentConstraint",
            "constraint",
            {targets({distances("targetTranslate", "tt"), distances("targetRotatePivot", "trp"),
                      distances("targetRotateTranslate", "trt"), angles("targetRotate", "tr"),
                      rotateOrder("targetRotateOrder", "tro"), angles("targetJointOrient", "tjo"),
                      factors("targetScale", "ts"), flag("targetScaleCompensate", "tsc"),
                      factors("targetInverseScale", "tis"), distances("targetOffsetTranslate", "tot"),
                      angles("targetOffsetRotate", "tor")}),
             ownPivot(), ownPivotOffset(), rotateOrder("constraintRotateOrder", "cro"),
             angles("constraintJointOrient", "cjo"), factors("inverseScale", "is"),
             distances("constraintTranslate", "ct").output(), angles("constraintRotate", "cr").output(),
             interpolation(), angles("lastTargetRotation", "lr"), restTranslate(), restRotate()}};
}

graph::NodeTypeSpec scaleConstraint() {
    return {"scaleConstraint",
            "constraint",
            {targets({factors("targetScale", "ts")}), keyableChildren(factors("offset", "o")),
             flag("constraintScaleCompensate", "tsc"), factors("inverseScale", "is"),
             factors("constraintScale", "cs").output(), factors("restScale", "rsts")}};
}

graph::NodeTypeSpec aimConstraint() {
    return {
        "aimConstraint",
        "constraint",
        {targets({distances("targetTranslate", "tt"), distances("targetRotatePivot", "trp"),
                  distances("targetRotateTranslate", "trt")}),
         // Where the constrained transform is. Here it is an input.
         distances("constraintTranslate", "ct"), ownPivot(), ownPivotOffset(),
         rotateOrder("constraintRotateOrder", "cro"), angles("constraintJointOrient", "cjo"),
         factors("inverseScale", "is"), keyableChildren(angles("offset", "o")),
         vector("aimVector", "a", {1, 0, 0}), vector("upVector", "u", {0, 1, 0}),
         vector("worldUpVector", "wu", {0, 1, 0}), matrix("worldUpMatrix", "wum"),
         enumeration("worldUpType", "wut", {"Scene Up", "Object Up", "Object Rotation Up", "Vector", "None"})
             .withDefault(3),
         angles("constraintRotate", "cr").output(), restRotate()}};
}

}  // namespace

void addConstraintTypes(graph::NodeTypes& types) {
    types.add({"constraint",
               "transform",
               {flag("enableRestPosition", "erp"), flag("lockOutput", "lo"),
                matrix("constraintParentInverseMatrix", "cpim")},
               {computeConstraint},
               true});
    for (auto* spec : {pointConstraint, orientConstraint, parentConstraint, scaleConstraint, aimConstraint})
        types.add(spec());
}

}  // namespace host::nodes
