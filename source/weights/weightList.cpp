#include "weights/weightList.h"

#include <cmath>

#include "weights/weightFile.h"

namespace {

constexpr double kNearOne = 1e-5;

/// Position of the first number that is not less than `value`; the count if there is none. The numbers must
/// be ascending.
unsigned int lowerBound(const MIntArray& numbers, int value) {
    unsigned int first = 0;
    unsigned int last = numbers.length();
    while (first < last) {
        const unsigned int middle = first + (last - first) / 2;
        if (numbers[middle] < value) {
            first = middle + 1;
        } else {
            last = middle;
        }
    }
    return first;
}

}  // namespace

void WeightList::append(int vertex, double value) {
    vertices.append(vertex);
    values.append(value);
}

void WeightList::appendUnlessOne(int vertex, double value) {
    if (!isNearOne(value)) append(vertex, value);
}

std::vector<double> WeightList::dense(unsigned int vertexCount) const {
    std::vector<double> weights(vertexCount, 1.0);
    for (unsigned int k = 0; k < vertices.length(); ++k) {
        const auto vertex = static_cast<unsigned int>(vertices[k]);
        if (vertex < vertexCount) weights[vertex] = values[k];
    }
    return weights;
}

bool isNearOne(double weight) {
    return std::abs(weight - 1.0) < kNearOne;
}

WeightList readWeights(MPlug plug) {
    WeightList weights;
    MStatus status;
    plug.getExistingArrayAttributeIndices(weights.vertices, &status);
    if (!status) return {};
    const unsigned int count = weights.vertices.length();
    weights.values.setLength(count);
    for (unsigned int k = 0; k < count; ++k)
        weights.values[k] = plug.elementByPhysicalIndex(k).asFloat();
    return weights;
}

double WeightLookup::operator()(int vertex) {
    const MIntArray& vertices = weights_.vertices;
    if (at_ >= vertices.length() || vertices[at_] != vertex) at_ = lowerBound(vertices, vertex);
    if (at_ >= vertices.length() || vertices[at_] != vertex) return 1.0;
    return weights_.values[at_++];
}

std::string weightFileText(const WeightList& weights, FileForm form) {
    WeightFileWriter writer(form);
    const unsigned int count = weights.vertices.length();
    for (unsigned int k = 0; k < count; ++k)
        writer.add(weights.vertices[k], weights.values[k]);
    return writer.finish();
}

WeightList parseWeightFile(std::string_view text, FileForm form) {
    WeightList weights;
    readWeightFile(text, form, [&](int vertex, double value) { weights.append(vertex, value); });
    return weights;
}
