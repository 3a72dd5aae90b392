#pragma once

#include <maya/MDagPath.h>

#include <vector>

/// Distance up to which the mirrored place of a vertex counts as that of another.
constexpr double kPartnerTolerance = 0.001;

/// What a command on a symmetric mesh may cost at the largest size, as a part of its floor with the host's
/// search.
constexpr double kLookUpLimit = 0.12;

/// What looking up all mirror partners by position costs at least: builds the host's structure on a mirrored
/// copy, asks it once per vertex and reads the corners of the face that it answers with.
/// @return per vertex its partner over x = 0, -1 for none
std::vector<int> findPartnersBare(const MDagPath& mesh);
