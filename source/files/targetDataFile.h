#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Target data files, written by dv_blendShapeExportData, read into plain arrays.
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
/// Only the depth of the braces and the keys matter. A target, item or vertex whose key is not an index is
/// skipped with everything in it. So a file of another kind or encoding changes nothing.

/// One item of a target in a file.
struct TargetItem {
    int target = 0;             // after remapping; not negative
    std::string name;           // of the target, as in the file; empty if the file has not given it yet
    int item = 0;               // not negative
    std::vector<int> vertices;  // not negative; in file order; may contain duplicates
    std::vector<std::array<double, 3>> points;  // one per vertex
    bool hasDropped = false;                    // entries were dropped: no usable vertex or point
};

/// Which targets of a file are taken, and the indices that they get.
///
/// The sources are used in their order: the first target in the file with the first source index is taken,
/// then the next with the second, and so on. All other targets are skipped.
struct TargetRemap {
    std::vector<int> sources;
    std::vector<int> destinations;  // one per source
};

/// What a file contains, except for the items, which are passed on one by one.
struct TargetDataContent {
    /// An entry for each target, taken or not, in file order, such as "3,5500:6000": its index (the new one
    /// if it is taken), a comma, and its items joined by colons.
    std::vector<std::string> entries;
    /// Number of indices of targets, items and vertices that are negative or larger than the largest int.
    /// Everything in them is skipped.
    int refusedCount = 0;
};

/// Reads the text of a target data file.
///
/// If a point has not exactly three finite numbers, its vertex is dropped, too. If the text ends inside an
/// item, the item is not taken; if it ends inside a target, the target is not listed.
/// @param remap  null to take every target under its own index
/// @param take   called for each complete item of a target that is taken, in file order
TargetDataContent readTargetData(std::string_view text, const TargetRemap* remap,
                                 const std::function<void(const TargetItem&)>& take);

/// An alias that is safe in a script, for any text in the file: the ASCII letters, digits and underscores of
/// the name, with an underscore before a digit at the beginning. "weight_" and the index if nothing is left.
std::string legalAlias(std::string_view name, int target);
