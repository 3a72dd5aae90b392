#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Target data files: what a file of dv_blendShapeExportData holds, read on plain arrays.
///
///     {
///         "3": {                              the target index, and its data:
///             "name": "smile",
///             "data": {
///                 "6000": {                   the item index
///                     "12": [0, 0.5, 0]       a vertex and its delta
///                 }
///             }
///         }
///     }
///
/// Only the depth of the braces and the keys count. Whatever has no key that is an index (a target,
/// an item, a vertex) is passed over with all that is in it, so a file of another kind or encoding
/// changes nothing.

/// One item of a target as a file holds it.
struct TargetItem {
    int target = 0;    // after remapping; not negative, no more than the item
    std::string name;  // of the target, as written in the file; empty when it has not come up yet
    int item = 0;
    std::vector<int> vertices;                  // not negative; in file order, which may repeat some
    std::vector<std::array<double, 3>> points;  // one a vertex
    bool hasDropped = false;                    // entries without a usable vertex or point
};

/// Which targets of a file are taken, and the indices they get.
///
/// The sources are used up in their order: each waits for the target of its index and lets the
/// others pass.
struct TargetRemap {
    std::vector<int> sources;
    std::vector<int> destinations;  // as many
};

/// What a file holds, as far as it is not given away item by item.
struct TargetDataContent {
    /// An entry for each target, taken or not, in file order: its index (the new one if it is taken), a comma
    /// and its items joined by colons, such as "3,5500:6000".
    std::vector<std::string> entries;
    /// Indices of targets, items and vertices that are negative or beyond the largest int. What stands under
    /// them is passed over.
    int refusedCount = 0;
};

/// Reads the text of a target data file.
///
/// A point that has not exactly three finite numbers drops its vertex too. An item that the text ends in
/// is not taken, and a target that it ends in is not listed.
/// @param remap  null to take every target under its own index
/// @param take   called for each complete item of a target that is taken, in file order
TargetDataContent readTargetData(std::string_view text, const TargetRemap* remap,
                                 const std::function<void(const TargetItem&)>& take);

/// An alias that a script can be composed with, whatever the file says: of the name just the
/// letters, digits and underscores of ASCII, with an underscore before a leading digit; "weight_"
/// and the index when none is left.
std::string legalAlias(std::string_view name, int target);
