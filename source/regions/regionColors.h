#pragma once

#include <array>

#include "regions/regionWeights.h"

/// The colours of a region map on a mesh. Plain numbers: no host.

enum class RegionStyle {
    kBlackAndWhite,  ///< the sum of the weights: black for 0 to white for 1
    kColored,        ///< a colour for each region, mixed by the weights; unassigned is black
    kRamp            ///< the sum of the weights: blue for 0, then cyan, green, yellow, red for 1
};

constexpr int kRegionStyleCount = 3;

/// Red, green and blue, from 0 to 1.
using RegionColor = std::array<float, 3>;

/// The colour of a vertex with these weights.
RegionColor regionColor(const RegionWeights& weights, RegionStyle style);

/// Whether a vertex is partly assigned: the rounded sum of its weights is between 0 and 1.
bool isPartial(const RegionWeights& weights);
