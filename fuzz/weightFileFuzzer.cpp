#include "weights/weightFile.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "require.h"

namespace {

/// A file as an export writes it.
std::string rewritten(std::string_view text, bool isJson) {
    std::vector<std::pair<int, double>> weights;
    readWeightFile(text, isJson, [&](int vertex, double value) {
        require(vertex >= 0, "no vertex before the first");
        weights.emplace_back(vertex, writable(value));
    });
    WeightFileWriter writer(isJson);
    for (std::size_t k = 0; k < weights.size(); ++k)
        writer.add(weights[k].first, weights[k].second, k + 1 == weights.size());
    return writer.finish();
}

}  // namespace

/// Any text is read, in both layouts. What was read is written and read again: the same text comes of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const bool isJson : {true, false}) {
        const std::string first = rewritten(text, isJson);
        require(rewritten(first, isJson) == first, "reading back gave something else");
    }
    return 0;
}
