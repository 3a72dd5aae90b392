#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "files/fileForm.h"
#include "regions/regionWeights.h"

/// Text of files that hold a whole region map, with its settings, in either of two layouts. Text only: no
/// host, no files. A file with one region is a weight file (weightFile.h).

/// What a file holds. The arrays are of one length.
struct RegionFile {
    std::string settings;
    std::array<std::vector<double>, kRegionCount> weights;
    int malformedLine = 0;  // the first one, counted from 1; 0 when there is none, and for JSON

    std::size_t vertexCount() const { return weights[0].size(); }
};

/// Reads the text of a file. Vertices come in the order of the file, whatever indices it gives them. An entry
/// without six weights, or with one beyond single precision, is passed over; a JSON number that cannot be
/// read is 0, a plain one spoils its line. Blank lines count for nothing.
/// @param vertexCount  the number of entries to expect; no more than a hint
RegionFile parseRegionFile(std::string_view text, FileForm form, std::size_t vertexCount = 0);

/// Writes the text of a file, piece by piece: six significant digits.
/// @param settings  a line; one with quotes or line ends comes back cut short
void writeRegionFile(std::string_view settings, const RegionArrays& map, FileForm form,
                     const std::function<void(std::string_view)>& write);
