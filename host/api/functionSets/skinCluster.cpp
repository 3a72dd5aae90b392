#include <maya/MFnSkinCluster.h>
#include <maya/MSelectionList.h>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/objectAccess.h"
#include "api/handles/pathAccess.h"
#include "api/handles/session.h"
#include "nodes/skinClusterNode.h"
#include "nodes/skinWeights.h"

using host::api::answer;
using host::api::Answer;
using host::api::incompatible;
using host::api::missingObject;
using host::api::noElement;
using host::api::ObjectAccess;
using host::api::PathAccess;
using host::api::report;
using host::api::scene;
using host::graph::NodeRef;
using host::nodes::WeightRole;
using host::nodes::WeightRows;

namespace {

/// What a call reads or writes.
struct Request {
    NodeRef skinCluster;
    std::vector<int> vertices;
    std::vector<int> influences;  // logical indices of all influences, ascending
};

std::vector<int> influenceIndices(const NodeRef& skinCluster) {
    std::vector<int> indices;
    for (const host::nodes::Influence& influence : host::nodes::influencesOf(skinCluster))
        indices.push_back(influence.index);
    return indices;
}

MStatus resolve(const MObject& object, const MDagPath& path, const MObject& components, Request& request) {
    request.skinCluster = ObjectAccess::node(object);
    if (request.skinCluster == nullptr) return missingObject();
    const NodeRef node = PathAccess::node(path);
    const NodeRef shape = node != nullptr ? scene().shapeOf(node) : nullptr;
    if (shape == nullptr || shape != host::nodes::skinnedShape(scene(), request.skinCluster))
        return incompatible();
    const host::graph::Component* vertices = ObjectAccess::component(components);
    if (vertices == nullptr || vertices->kind() != host::graph::ComponentKind::Vertex) return incompatible();
    request.vertices = vertices->elements();
    const int vertexCount = scene().componentCount(shape, host::graph::ComponentKind::Vertex);
    if (!request.vertices.empty() && request.vertices.back() >= vertexCount) return noElement();
    request.influences = influenceIndices(request.skinCluster);
    return MStatus::kSuccess;
}

/// Position of a logical index among the influences; -1 if it is not among them.
int placeOf(const std::vector<int>& influences, int index) {
    // If there is no gap before an index, it is its own position.
    const auto guess = static_cast<std::size_t>(index);
    if (guess < influences.size() && influences[guess] == index) return index;
    const auto found = std::lower_bound(influences.begin(), influences.end(), index);
    return found != influences.end() && *found == index ? static_cast<int>(found - influences.begin()) : -1;
}

/// Writes stored rows as one number per vertex and column.
/// @param columns  the column of each influence, -1 for influences that the call leaves out
void spread(const WeightRows& rows, const std::vector<int>& influences, const std::vector<int>& columns,
            std::size_t width, MDoubleArray& weights) {
    weights.setLength(static_cast<unsigned int>(rows.vertices.size() * width));
    std::fill(weights.begin(), weights.end(), 0.0);
    for (std::size_t row = 0; row < rows.vertices.size(); ++row) {
        for (std::size_t k = rows.starts[row]; k < rows.starts[row + 1]; ++k) {
            const int place = placeOf(influences, rows.influences[k]);
            const int column = place >= 0 ? columns[static_cast<std::size_t>(place)] : -1;
            if (column < 0) continue;
            weights[static_cast<unsigned int>(row * width + static_cast<std::size_t>(column))] =
                rows.weights[k];
        }
    }
}

void spreadAll(const WeightRows& rows, const std::vector<int>& influences, MDoubleArray& weights) {
    std::vector<int> columns;
    for (std::size_t k = 0; k < influences.size(); ++k)
        columns.push_back(static_cast<int>(k));
    spread(rows, influences, columns, columns.size(), weights);
}

MStatus readColumns(const Request& request, const std::vector<int>& places, MDoubleArray& weights) {
    std::vector<int> columns(request.influences.size(), -1);
    for (std::size_t k = 0; k < places.size(); ++k) {
        if (places[k] < 0 || places[k] >= static_cast<int>(columns.size())) return noElement();
        columns[static_cast<std::size_t>(places[k])] = static_cast<int>(k);
    }
    spread(host::nodes::weightRows(request.skinCluster, request.vertices), request.influences, columns,
           places.size(), weights);
    return MStatus::kSuccess;
}

/// Writes given columns over stored rows.
class RowWriter {
  public:
    RowWriter(Request request, const std::vector<int>& places, bool normalizes)
        : request_(std::move(request)),
          places_(places),
          normalizes_(normalizes && host::nodes::normalizesEdits(scene(), request_.skinCluster)),
          isAll_(true),
          roles_(request_.influences.size(), WeightRole::Free) {
        for (std::size_t k = 0; k < roles_.size(); ++k) {
            if (host::nodes::isInfluenceLocked(scene(), request_.skinCluster, request_.influences[k]))
                roles_[k] = WeightRole::Locked;
        }
        for (const int place : places_)
            roles_[static_cast<std::size_t>(place)] = WeightRole::Given;
        for (const WeightRole role : roles_)
            isAll_ = isAll_ && role == WeightRole::Given;
    }

    /// @param values  one per vertex and given influence
    void write(const WeightRows& before, const double* values) {
        for (std::size_t row = 0; row < before.vertices.size(); ++row, values += places_.size())
            appendRow(before, row, values);
        host::nodes::setWeightRows(scene(), request_.skinCluster, after_);
    }

  private:
    void appendRow(const WeightRows& before, std::size_t row, const double* values) {
        weights_.assign(roles_.size(), 0.0);
        strays_.clear();
        for (std::size_t k = before.starts[row]; k < before.starts[row + 1]; ++k) {
            const int place = placeOf(request_.influences, before.influences[k]);
            if (place >= 0) {
                weights_[static_cast<std::size_t>(place)] = before.weights[k];
            } else {
                strays_.emplace_back(before.influences[k], before.weights[k]);
            }
        }
        for (std::size_t k = 0; k < places_.size(); ++k)
            weights_[static_cast<std::size_t>(places_[k])] = values[k];
        if (normalizes_) normalize(before.vertices[row]);
        for (std::size_t k = 0; k < weights_.size(); ++k) {
            if (weights_[k] != 0.0) strays_.emplace_back(request_.influences[k], weights_[k]);
        }
        // Stored weights of removed influences stay, in their place among the others.
        std::sort(strays_.begin(), strays_.end());
        for (const auto& [influence, weight] : strays_) {
            after_.influences.push_back(influence);
            after_.weights.push_back(weight);
        }
        after_.endRow(before.vertices[row]);
    }

    void normalize(int vertex) {
        if (!isAll_) {
            host::nodes::normalizeWeights(weights_, roles_, [&] { return distances(vertex); });
            return;
        }
        double sum = 0.0;
        for (const double weight : weights_)
            sum += weight;
        if (sum == 0.0) return;
        for (double& weight : weights_)
            weight /= sum;
    }

    /// Distances of a vertex from each influence. The bind pose also has removed influences.
    std::vector<double> distances(int vertex) {
        if (pose_.influences.empty()) pose_ = host::nodes::bindPoseOf(scene(), request_.skinCluster);
        const std::vector<int> elements = scene().elements(request_.skinCluster->plug("matrix"));
        const std::vector<double> all = pose_.distances(vertex);
        std::vector<double> result;
        for (std::size_t k = 0; k < elements.size(); ++k) {
            if (placeOf(request_.influences, elements[k]) >= 0) result.push_back(all[k]);
        }
        return result;
    }

    Request request_;
    const std::vector<int>& places_;
    bool normalizes_;
    bool isAll_;  // whether all influences are given
    std::vector<WeightRole> roles_;
    host::nodes::BindPose pose_{};
    WeightRows after_{};
    std::vector<double> weights_{};
    std::vector<std::pair<int, double>> strays_{};
};

MStatus writeColumns(Request request, const std::vector<int>& places, const double* values, bool normalizes,
                     MDoubleArray* oldValues) {
    std::vector<bool> isGiven(request.influences.size(), false);
    for (const int place : places) {
        if (place < 0 || place >= static_cast<int>(isGiven.size())) return noElement();
        if (isGiven[static_cast<std::size_t>(place)]) return MStatus::kInvalidParameter;
        isGiven[static_cast<std::size_t>(place)] = true;
    }
    const WeightRows before = host::nodes::weightRows(request.skinCluster, request.vertices);
    if (oldValues != nullptr) spreadAll(before, request.influences, *oldValues);
    RowWriter(std::move(request), places, normalizes).write(before, values);
    return MStatus::kSuccess;
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

MFnSkinCluster::MFnSkinCluster() = default;
MFnSkinCluster::~MFnSkinCluster() = default;

MFnSkinCluster::MFnSkinCluster(MObject& object, MStatus* status) {
    report(status, MFnBase::setObject(object));
}

MFn::Type MFnSkinCluster::type() const {
    return MFn::kSkinClusterFilter;
}

unsigned int MFnSkinCluster::influenceObjects(MDagPathArray& paths, MStatus* status) const {
    paths.clear();
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) {
        for (const host::nodes::Influence& influence : host::nodes::influencesOf(node))
            paths.append(PathAccess::path(influence.node));
        return paths.length();
    });
}

unsigned int MFnSkinCluster::indexForInfluenceObject(const MDagPath& path, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) -> Answer<unsigned int> {
        const NodeRef influence = PathAccess::node(path);
        if (influence == nullptr) return missingObject();
        const int index = host::nodes::influenceIndex(node, influence);
        if (index < 0) return incompatible();
        return static_cast<unsigned int>(index);
    });
}

MStatus MFnSkinCluster::getPointsAffectedByInfluence(const MDagPath& path, MSelectionList& result,
                                                     MDoubleArray& weights) {
    result.clear();
    weights.clear();
    MStatus status;
    const auto index = static_cast<int>(indexForInfluenceObject(path, &status));
    if (!status) return status;
    const NodeRef node = ObjectAccess::node(object_);
    const NodeRef shape = host::nodes::skinnedShape(scene(), node);
    if (shape == nullptr) return MStatus::kFailure;
    std::vector<int> vertices;
    host::nodes::forEachWeightRow(node, [&](int vertex, const host::graph::NumberMulti& row) {
        const double* weight = row.find(index);
        if (weight == nullptr || *weight == 0.0) return;
        vertices.push_back(vertex);
        weights.append(*weight);
    });
    if (vertices.empty()) return MStatus::kSuccess;
    const auto component =
        host::graph::Component::fromIndices(host::graph::ComponentKind::Vertex, std::move(vertices));
    return result.add(PathAccess::path(shape), ObjectAccess::object(component));
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components, MDoubleArray& weights,
                                   unsigned int& influenceCount) const {
    Request request;
    const MStatus status = resolve(object_, path, components, request);
    if (!status) return status;
    influenceCount = static_cast<unsigned int>(request.influences.size());
    spreadAll(host::nodes::weightRows(request.skinCluster, request.vertices), request.influences, weights);
    return MStatus::kSuccess;
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components,
                                   unsigned int influenceIndex, MDoubleArray& weights) const {
    Request request;
    const MStatus status = resolve(object_, path, components, request);
    return status ? readColumns(request, {static_cast<int>(influenceIndex)}, weights) : status;
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components,
                                   MIntArray& influenceIndices, MDoubleArray& weights) const {
    Request request;
    const MStatus status = resolve(object_, path, components, request);
    if (!status) return status;
    return readColumns(request, host::api::numbersOf<int>(influenceIndices), weights);
}

MStatus MFnSkinCluster::setWeights(const MDagPath& path, const MObject& components,
                                   unsigned int influenceIndex, double value, bool normalize,
                                   MDoubleArray* oldValues) {
    Request request;
    const MStatus status = resolve(object_, path, components, request);
    if (!status) return status;
    const std::vector<double> values(request.vertices.size(), value);
    return writeColumns(std::move(request), {static_cast<int>(influenceIndex)}, values.data(), normalize,
                        oldValues);
}

MStatus MFnSkinCluster::setWeights(const MDagPath& path, const MObject& components,
                                   MIntArray& influenceIndices, MDoubleArray& values, bool normalize,
                                   MDoubleArray* oldValues) {
    Request request;
    const MStatus status = resolve(object_, path, components, request);
    if (!status) return status;
    const std::vector<int> places = host::api::numbersOf<int>(influenceIndices);
    if (std::size_t{values.length()} != request.vertices.size() * places.size())
        return MStatus::kInvalidParameter;
    // The caller may use one array for the old and the new weights.
    const std::vector<double> wanted = host::api::numbersOf<double>(values);
    return writeColumns(std::move(request), places, wanted.data(), normalize, oldValues);
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
