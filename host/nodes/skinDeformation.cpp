#include "nodes/skinDeformation.h"

#include <algorithm>
#include <array>

#include "geometry/orientation.h"
#include "geometry/quaternion.h"
#include "nodes/plugs.h"
#include "nodes/skinWeights.h"

namespace host::nodes {

namespace {

using geometry::Matrix4;
using geometry::Vec3;

enum class Method { ClassicLinear, DualQuaternion, WeightBlended };

constexpr double kPostNormalization = 2.0;

/// An affine matrix without its last column: three numbers per row.
using AffineMatrix = std::array<double, 12>;

AffineMatrix affine(const Matrix4& matrix) {
    AffineMatrix result{};
    for (std::size_t k = 0; k < result.size(); ++k)
        result[k] = matrix.m[k / 3][k % 3];
    return result;
}

Vec3 moved(const Vec3& point, const AffineMatrix& matrix) {
    Vec3 result;
    for (int axis = 0; axis < 3; ++axis) {
        const auto column = static_cast<std::size_t>(axis);
        result[axis] = point.x * matrix[column] + point.y * matrix[3 + column] +
                       point.z * matrix[6 + column] + matrix[9 + column];
    }
    return result;
}

void addWeighted(AffineMatrix& sum, const AffineMatrix& matrix, double weight) {
    for (std::size_t entry = 0; entry < sum.size(); ++entry)
        sum[entry] += weight * matrix[entry];
}

/// A motion as a stretch and a rigid motion after it.
struct RigidMotion {
    geometry::DualQuaternion rigid;
    AffineMatrix stretch{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
};

RigidMotion rigidMotion(const Matrix4& motion) {
    const Matrix4 rotation = geometry::rotationPart(motion);
    Matrix4 turned = motion;
    turned.m[3] = {0, 0, 0, 1};
    return {geometry::DualQuaternion::rigid(geometry::quaternionOf(rotation), motion.row(3)),
            affine(turned * rotation.transposed())};
}

/// A matrix without its scale and shear.
Matrix4 withoutScale(const Matrix4& matrix) {
    return geometry::rotationPart(matrix) * Matrix4::translation(matrix.row(3));
}

/// What is known of each influence, by position. Influences without a matrix do not move.
struct InfluenceMotions {
    std::vector<int> indices;
    std::vector<AffineMatrix> linear;  // from the geometry's object space through the influence and back
    std::vector<RigidMotion> rigid;    // in the world; empty unless the method needs it

    /// Position of an influence; -1 for an index that never got a matrix.
    int position(int index) const {
        // If there is no gap before an index, it is its own position.
        const auto guess = static_cast<std::size_t>(index);
        if (guess < indices.size() && indices[guess] == index) return index;
        const auto found = std::lower_bound(indices.begin(), indices.end(), index);
        return found != indices.end() && *found == index ? static_cast<int>(found - indices.begin()) : -1;
    }
};

/// Everything that is the same for all vertices.
struct Skinning {
    Method method = Method::ClassicLinear;
    bool normalizes = false;
    InfluenceMotions influences;
    AffineMatrix toWorld{};
    AffineMatrix fromWorld{};
    const graph::NumberMulti* blendWeights = nullptr;
};

/// The motion of an influence without the scale of its own, with dqsScale instead.
Matrix4 rescaled(const Matrix4& atBind, const Matrix4& current, const Vec3& scale) {
    return withoutScale(atBind.inverse().matrix).inverse().matrix * Matrix4::scaling(scale) *
           withoutScale(current);
}

Method methodOf(graph::Graph& graph, const graph::NodeRef& node) {
    const double value = graph.number(node->plug("skinningMethod"));
    // A number from a connection may be out of range.
    return value >= 0.0 && value <= 2.0 ? static_cast<Method>(static_cast<int>(value))
                                        : Method::ClassicLinear;
}

Skinning prepare(graph::Graph& graph, const graph::NodeRef& node, Method method) {
    Skinning skinning;
    skinning.method = method;
    skinning.normalizes = graph.number(node->plug("normalizeWeights")) == kPostNormalization;
    const Matrix4 toWorld = matrixOf(graph.data(node->plug("geomMatrix")));
    const Matrix4 fromWorld = toWorld.inverse().matrix;
    skinning.toWorld = affine(toWorld);
    skinning.fromWorld = affine(fromWorld);
    const bool isRigid = graph.number(node->plug("dqsSupportNonRigid")) == 0.0;
    const Vec3 scale = tripleAt(graph, node->plug("dqsScale"));
    const graph::Plug currents = node->plug("matrix");
    const graph::Plug binds = node->plug("bindPreMatrix");
    InfluenceMotions& influences = skinning.influences;
    influences.indices = graph.elements(currents);
    for (const int index : influences.indices) {
        const Matrix4 current = matrixOf(graph.data(currents.element(index)));
        const Matrix4 atBind = matrixOf(graph.data(binds.element(index)));
        influences.linear.push_back(affine(toWorld * (atBind * current) * fromWorld));
        if (method == Method::ClassicLinear) continue;
        influences.rigid.push_back(
            rigidMotion(isRigid ? rescaled(atBind, current, scale) : atBind * current));
    }
    if (method == Method::WeightBlended) skinning.blendWeights = numbersOf(node->plug("blendWeights"));
    return skinning;
}

/// The weights of one vertex. Their number is not 0, and neither is their sum.
struct WeightRow {
    const std::vector<int>& influences;
    const double* weights;
    double sum;
};

Vec3 movedLinearly(const Skinning& skinning, const WeightRow& row, const Vec3& point) {
    static constexpr AffineMatrix kIdentity{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
    AffineMatrix blended{};
    for (std::size_t k = 0; k < row.influences.size(); ++k) {
        const int at = skinning.influences.position(row.influences[k]);
        addWeighted(blended, at < 0 ? kIdentity : skinning.influences.linear[static_cast<std::size_t>(at)],
                    row.weights[k]);
    }
    if (skinning.normalizes) {
        for (double& entry : blended)
            entry /= row.sum;
    }
    return moved(point, blended);
}

/// A sum of dual quaternions is the same motion at any length, so the sum of the weights does not matter.
Vec3 movedRigidly(const Skinning& skinning, const WeightRow& row, const Vec3& point) {
    static const RigidMotion kStill;
    geometry::DualQuaternion blended{{0, 0, 0, 0}, {0, 0, 0, 0}};
    AffineMatrix stretch{};
    const geometry::Quaternion* side = nullptr;
    for (std::size_t k = 0; k < row.influences.size(); ++k) {
        if (row.weights[k] == 0.0) continue;
        const int at = skinning.influences.position(row.influences[k]);
        const RigidMotion& motion = at < 0 ? kStill : skinning.influences.rigid[static_cast<std::size_t>(at)];
        const double weight = row.weights[k] / row.sum;
        addWeighted(stretch, motion.stretch, weight);
        // Of the two quaternions of a rotation, that on the side of the first influence is the shorter way.
        if (side == nullptr) side = &motion.rigid.real;
        const double signedWeight = dot(*side, motion.rigid.real) < 0.0 ? -weight : weight;
        blended.real = blended.real + motion.rigid.real * signedWeight;
        blended.dual = blended.dual + motion.rigid.dual * signedWeight;
    }
    // Weights of both signs can cancel out.
    if (dot(blended.real, blended.real) < 1e-24) return point;
    return moved(geometry::transformPoint(moved(moved(point, skinning.toWorld), stretch), blended),
                 skinning.fromWorld);
}

Vec3 movedPoint(const Skinning& skinning, const WeightRow& row, int vertex, const Vec3& point) {
    if (skinning.method == Method::ClassicLinear) return movedLinearly(skinning, row, point);
    if (skinning.method == Method::DualQuaternion) return movedRigidly(skinning, row, point);
    double share = 0.0;
    if (skinning.blendWeights != nullptr) skinning.blendWeights->read(vertex, &share);
    const Vec3 linear = movedLinearly(skinning, row, point);
    return share == 0.0 ? linear : linear + share * (movedRigidly(skinning, row, point) - linear);
}

}  // namespace

void deformBySkin(Deformation& deformation) {
    graph::Graph& graph = deformation.graph;
    const graph::NodeRef& node = deformation.node;
    const Skinning skinning = prepare(graph, node, methodOf(graph, node));
    const int vertexCount = deformation.input.mesh.vertexCount();
    forEachWeightRow(node, [&](int vertex, const graph::NumberMulti& weights) {
        if (vertex < 0 || vertex >= vertexCount) return;
        WeightRow row{weights.indices(), weights.find(weights.indices().front()), 0.0};
        for (std::size_t k = 0; k < row.influences.size(); ++k)
            row.sum += row.weights[k];
        if (row.sum == 0.0) return;
        float* point = deformation.points.data() + 3 * static_cast<std::size_t>(vertex);
        const Vec3 from{static_cast<double>(point[0]), static_cast<double>(point[1]),
                        static_cast<double>(point[2])};
        const Vec3 to = movedPoint(skinning, row, vertex, from);
        for (int axis = 0; axis < 3; ++axis)
            point[axis] = static_cast<float>(from[axis] + deformation.envelope * (to[axis] - from[axis]));
    });
}

}  // namespace host::nodes
