#include "graph/removalLog.h"

#include <algorithm>

namespace host::graph {

namespace {

/// Whether a plug is an element, or is below it. The key of an array means all of its elements.
bool isPartOf(const PlugKey& key, const PlugKey& element) {
    const auto& path = key.attribute->path();
    if (std::find(path.begin(), path.end(), element.attribute) == path.end()) return false;
    const bool isWholeArray = element.depth < element.attribute->arrayDepth();
    const int needed = element.depth + (isWholeArray ? 1 : 0);
    return key.depth >= needed &&
           std::equal(element.indices.begin(), element.indices.begin() + element.depth, key.indices.begin());
}

}  // namespace

bool RemovalLog::hasLost(const Plug& plug, std::uint32_t moment, bool isNetworked) const {
    const auto found = removals_.find(plug.node().get());
    if (found == removals_.end()) return false;
    return std::any_of(found->second.rbegin(), found->second.rend(), [&](const Removal& removal) {
        if (removal.moment < moment) return false;
        if (removal.kind == Kind::Node) return true;
        if (removal.kind == Kind::Element) return isPartOf(plug.key(), removal.key);
        return isNetworked && plug.key() == removal.key;
    });
}

}  // namespace host::graph
