#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>

#include <string>
#include <string_view>
#include <vector>

#include "files/fileForm.h"

/// Stored weights: vertices and their weights, aligned by position. A vertex that is not listed
/// weighs 1.
struct WeightList {
    MIntArray vertices;
    MDoubleArray values;

    bool isEmpty() const { return vertices.length() == 0; }
    void append(int vertex, double value);
    /// Appends a weight, unless it is so near 1 that the absence of an element says the same.
    void appendUnlessOne(int vertex, double value);
    /// One weight per vertex from 0 up to a count, 1 where none is listed; others are left out.
    std::vector<double> dense(unsigned int vertexCount) const;
};

/// Whether a weight is so near 1 that it is stored as no element.
bool isNearOne(double weight);

/// The elements of a weight list, by ascending vertex.
WeightList readWeights(MPlug plug);

/// Looks weights up by vertex, fast for vertices that come in ascending order.
class WeightLookup {
  public:
    /// @param weights  by ascending vertex; must outlive the look-up
    explicit WeightLookup(const WeightList& weights) : weights_(weights) {}

    /// @return 1 for a vertex that is not listed
    double operator()(int vertex);

  private:
    const WeightList& weights_;
    unsigned int at_ = 0;  // where the next vertex probably is
};

/// The text of a weight file that holds a list (weightFile.h).
std::string weightFileText(const WeightList& weights, FileForm form);

/// The weights that the text of a weight file holds, in its order.
WeightList parseWeightFile(std::string_view text, FileForm form);
