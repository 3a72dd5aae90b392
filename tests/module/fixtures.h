#pragma once

#include <string>

#include "support/scene.h"

/// A grid of 4 x 3 quads (20 vertices) as "base" with two targets that are deltas in the deformer "bs"
/// only: target 0 "smile" moves vertices 3, 7 and 12, target 4 "blink" has the in-between 5500 and the
/// full item 6000.
void addBlendShape(Scene& scene);

/// Name of what the first extraction from "base" makes: the third copy in a row, named as the host names
/// copies.
std::string extractedName(int item);

/// Puts a tweak node "tweak1" before the blend shape of addBlendShape, chained as deformers were before there
/// were component tags: each takes its geometry from a groupParts node ("parts1" that of the tweak node).
/// Where the host makes such chains itself, its nodes get these names.
void addLegacyChain(Scene& scene);

/// The deltas of one item as "index x y z" lines, or "" when it has none.
std::string deltas(Scene& scene, int target, int item);
