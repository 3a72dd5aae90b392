#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "files/fileForm.h"
#include "regions/regionWeights.h"

/// Text of files that hold a whole region map with its settings, in one of two layouts. Text only: no host,
/// no files. A file with a single region is a weight file (weightFile.h).

/// The content of a file. All arrays have the same length.
struct RegionFile {
    std::string settings;
    std::array<std::vector<double>, kRegionCount> weights;
    int malformedLine = 0;  // the first, counted from 1; 0 if there is none, and for JSON

    std::size_t vertexCount() const { return weights[0].size(); }
};

/// Reads the text of a file. Vertices are numbered in the order of the file; the indices in the file are
/// ignored. An entry is skipped if it has not exactly six weights, or a weight too large for single
/// precision. A number that cannot be read is 0 in JSON, and makes its line malformed in plain text. Blank
/// lines are ignored.
/// @param vertexCount  the expected number of entries; only a hint
RegionFile parseRegionFile(std::string_view text, FileForm form, std::size_t vertexCount = 0);

/// Writes the text of a file in pieces. Six significant digits.
/// @param settings  one line; if it contains quotes or line ends, reading the file gives only a part of it
void writeRegionFile(std::string_view settings, const RegionArrays& map, FileForm form,
                     const std::function<void(std::string_view)>& write);
