#include "regions/regionColors.h"

#include <algorithm>
#include <cstddef>

#include "files/rounding.h"

namespace {

constexpr RegionColor kRegionColors[kRegionCount] = {
    {0.9F, 0.1F, 0.1F},  // red
    {0.1F, 0.7F, 0.2F},  // green
    {0.1F, 0.3F, 0.9F},  // blue
    {0.9F, 0.8F, 0.1F},  // yellow
    {0.7F, 0.2F, 0.8F},  // violet
    {0.1F, 0.8F, 0.9F},  // cyan
};

/// The colours of the ramp, at equal distances.
constexpr RegionColor kRamp[] = {
    {0.0F, 0.0F, 1.0F}, {0.0F, 1.0F, 1.0F}, {0.0F, 1.0F, 0.0F}, {1.0F, 1.0F, 0.0F}, {1.0F, 0.0F, 0.0F},
};

/// A value clamped to 0 to 1. NaN, for example from sums of huge weights, gives 0.
float clamped(float value) {
    return value > 0.0F ? std::min(value, 1.0F) : 0.0F;
}

RegionColor mixed(const RegionWeights& weights) {
    RegionColor color{};
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        const auto weight = static_cast<float>(weights[region]);
        if (weight == 0.0F) continue;
        for (std::size_t part = 0; part < color.size(); ++part)
            color[part] += weight * kRegionColors[region][part];
    }
    for (float& part : color)
        part = clamped(part);
    return color;
}

RegionColor onRamp(float value) {
    constexpr std::size_t kSteps = std::size(kRamp) - 1;
    const float position = value * static_cast<float>(kSteps);
    const std::size_t step = std::min(static_cast<std::size_t>(position), kSteps - 1);
    const float part = position - static_cast<float>(step);
    RegionColor color;
    for (std::size_t k = 0; k < color.size(); ++k)
        color[k] = kRamp[step][k] + part * (kRamp[step + 1][k] - kRamp[step][k]);
    return color;
}

}  // namespace

RegionColor regionColor(const RegionWeights& weights, RegionStyle style) {
    if (style == RegionStyle::kColored) return mixed(weights);
    const float sum = clamped(sumOf(weights));
    return style == RegionStyle::kRamp ? onRamp(sum) : RegionColor{sum, sum, sum};
}

bool isPartial(const RegionWeights& weights) {
    const float sum = sumOf(weights);
    // Most sums are 0 or 1; this test saves the rounding, which is slow.
    if (!(sum > 0.0F && sum < 1.0F)) return false;
    const float rounded = round5(sum);
    return rounded > 0.0F && rounded < 1.0F;
}
