#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>

#include <string>
#include <string_view>
#include <vector>

#include "files/fileForm.h"

/// Stored weights: vertices and their weights, aligned by position. A vertex that is not listed has weight 1.
struct WeightList {
    MIntArray vertices;
    MDoubleArray values;

    bool isEmpty() const { return vertices.length() == 0; }
    void append(int vertex, double value);
    /// Appends a weight, unless it is near 1 (isNearOne).
    void appendUnlessOne(int vertex, double value);
    /// The weights of vertices 0 to vertexCount - 1; 1 for a vertex that is not listed. Other vertices are
    /// left out.
    std::vector<double> dense(unsigned int vertexCount) const;
};

/// Whether a weight is nearer to 1 than 0.00001, so that a missing element means the same.
bool isNearOne(double weight);

/// The elements of a weight list, in ascending order of the vertices.
WeightList readWeights(MPlug plug);

/// Looks up weights by vertex. Fast if the vertices come in ascending order.
class WeightLookup {
  public:
    /// @param weights  in ascending order of the vertices; must outlive this object
    explicit WeightLookup(const WeightList& weights) : weights_(weights) {}

    /// @return 1 for a vertex that is not listed
    double operator()(int vertex);

  private:
    const WeightList& weights_;
    unsigned int at_ = 0;  // probable position of the next vertex
};

/// The text of a weight file (weightFile.h) with these weights.
std::string weightFileText(const WeightList& weights, FileForm form);

/// The weights in the text of a weight file, in the order of the text.
WeightList parseWeightFile(std::string_view text, FileForm form);
