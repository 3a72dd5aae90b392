#include "weights/weightFile.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "require.h"

namespace {

/// A file as an export writes it.
std::string rewritten(std::string_view text, FileForm form) {
    std::vector<std::pair<int, double>> weights;
    readWeightFile(text, form, [&](int vertex, double value) {
        require(vertex >= 0, "no vertex before the first");
        weights.emplace_back(vertex, writable(value));
    });
    WeightFileWriter writer(form);
    for (const auto& [vertex, value] : weights)
        writer.add(vertex, value);
    return writer.finish();
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
