#include "graph/aliasTable.h"

#include <algorithm>

namespace host::graph {

const PlugKey* AliasTable::find(std::string_view alias) const {
    const auto found = keys_.find(alias);
    return found != keys_.end() ? &found->second : nullptr;
}

std::size_t AliasTable::position(const PlugKey& key) const {
    const auto found = positions_.find(key);
    return found != positions_.end() ? found->second : entries_.size();
}

std::string AliasTable::aliasOf(const PlugKey& key) const {
    const std::size_t at = position(key);
    return at < entries_.size() ? entries_[at].first : std::string();
}

void AliasTable::insert(std::size_t position, const std::string& alias, const PlugKey& key) {
    const std::size_t first = std::min(position, entries_.size());
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(first), {alias, key});
    keys_.emplace(alias, key);
    for (std::size_t at = first; at < entries_.size(); ++at)
        positions_[entries_[at].second] = at;
}

void AliasTable::rename(const PlugKey& key, const std::string& alias) {
    const std::size_t at = position(key);
    if (at == entries_.size()) return;
    forget(entries_[at]);
    entries_[at].first = alias;
    keys_.emplace(alias, key);
}

void AliasTable::erase(const PlugKey& key) {
    const std::size_t first = position(key);
    if (first == entries_.size()) return;
    forget(entries_[first]);
    positions_.erase(key);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(first));
    for (std::size_t at = first; at < entries_.size(); ++at)
        positions_[entries_[at].second] = at;
}

/// Removes an alias from the look-up by alias.
void AliasTable::forget(const Entry& entry) {
    const auto [first, last] = keys_.equal_range(entry.first);
    keys_.erase(std::find_if(first, last, [&](const auto& named) { return named.second == entry.second; }));
}

}  // namespace host::graph
