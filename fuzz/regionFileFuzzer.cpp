#include "regions/regionFile.h"

#include <cstdint>
#include <string>

#include "require.h"

namespace {

/// A file as an export writes it.
std::string rewritten(std::string_view text, FileForm form) {
    RegionFile file = parseRegionFile(text, form);
    RegionArrays map;
    map.vertexCount = file.vertexCount();
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        require(file.weights[region].size() == map.vertexCount, "each vertex has a weight in each region");
        for (double& weight : file.weights[region])
            weight = writable(weight);
        map.regions[region] = file.weights[region].data();
    }
    std::string result;
    writeRegionFile(file.settings, map, form, [&](std::string_view piece) { result += piece; });
    return result;
}

}  // namespace

/// Any text is read, in both layouts. What was read is written and read again: the same text comes of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const FileForm form : {FileForm::kJson, FileForm::kPlain}) {
        const std::string first = rewritten(text, form);
        require(rewritten(first, form) == first, "reading back gave something else");
    }
    return 0;
}
