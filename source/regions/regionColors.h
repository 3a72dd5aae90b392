#pragma once

#include <array>

#include "regions/regionWeights.h"

/// How a region map looks on a mesh. Plain numbers: no host.

enum class RegionStyle {
    kBlackAndWhite,  ///< the sum of the weights from black, 0, to white, 1
    kColored,        ///< a colour for each region, mixed by the weights; what is not assigned is black
    kRamp            ///< the sum of the weights from blue, 0, over cyan, green and yellow to red, 1
};

constexpr int kRegionStyleCount = 3;

/// Red, green and blue, from 0 to 1.
using RegionColor = std::array<float, 3>;

/// The colour of a vertex with these weights.
RegionColor regionColor(const RegionWeights& weights, RegionStyle style);

/// Whether weights fill a vertex in part: it is assigned, but not all of it.
bool isPartial(const RegionWeights& weights);
