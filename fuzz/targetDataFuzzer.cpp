#include <cstdint>
#include <string>

#include "files/jsonText.h"
#include "files/targetDataFile.h"
#include "require.h"

namespace {

void checkAlias(const TargetItem& item) {
    const std::string alias = legalAlias(item.name, item.target);
    require(!alias.empty() && (alias[0] < '0' || alias[0] > '9'),
            "an alias begins with a letter or underscore");
    const std::size_t legal =
        alias.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_");
    require(legal == std::string::npos, "an alias is a legal name");
}

/// A file as an export writes it, one target object an item. Numbers that are no more than rounding
/// are left out: their few bits do not come back as the same digits.
std::string rewritten(std::string_view text, const TargetRemap* remap) {
    JsonWriter writer;
    writer.openObject();
    readTargetData(text, remap, [&](const TargetItem& item) {
        require(item.vertices.size() == item.points.size(), "a point for every vertex");
        require(item.target >= 0 && item.item >= 0, "no target or item before the first");
        checkAlias(item);
        writer.openObject(item.target);
        writer.writeStringMember("name", std::string(item.name));
        writer.openObject("data");
        writer.openObject(item.item);
        for (std::size_t k = 0; k < item.vertices.size(); ++k) {
            require(item.vertices[k] >= 0, "no vertex before the first");
            double point[3];
            for (std::size_t axis = 0; axis < 3; ++axis)
                point[axis] = writable(item.points[k][axis]);
            writer.writeIndexPoint(item.vertices[k], point);
        }
        for (int k = 0; k < 3; ++k)
            writer.closeObject();
    });
    writer.closeObject();
    return writer.text();
}

}  // namespace

/// Any text is read. What was read is written and read again: the same text comes of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const TargetRemap remap{{1, 0, 3}, {7, 3, 0}};
    rewritten(text, &remap);
    const std::string first = rewritten(text, nullptr);
    require(rewritten(first, nullptr) == first, "reading back gave something else");
    return 0;
}
