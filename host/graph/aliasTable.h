#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "graph/plug.h"

namespace host::graph {

/// The aliases of a node's plugs, in the order in which they were set. Looking one up, by alias or by plug,
/// and adding one at the end cost O(log n). Other changes are linear.
class AliasTable {
  public:
    using Entry = std::pair<std::string, PlugKey>;

    std::vector<Entry>::const_iterator begin() const { return entries_.begin(); }
    std::vector<Entry>::const_iterator end() const { return entries_.end(); }
    std::size_t size() const { return entries_.size(); }

    /// The plug that has this alias; null if no plug has it.
    const PlugKey* find(std::string_view alias) const;
    /// Position of a plug's alias in the order; size() if the plug has no alias.
    std::size_t position(const PlugKey& key) const;
    /// The alias of a plug; empty if it has none.
    std::string aliasOf(const PlugKey& key) const;

    /// Gives an alias to a plug that has none, at a position in the order.
    void insert(std::size_t position, const std::string& alias, const PlugKey& key);
    /// Replaces the alias of a plug that has one. The position stays.
    void rename(const PlugKey& key, const std::string& alias);
    /// Removes the alias of a plug, if it has one.
    void erase(const PlugKey& key);

  private:
    void forget(const Entry& entry);

    std::vector<Entry> entries_;
    std::map<PlugKey, std::size_t> positions_;
    // The caller that sets an alias makes sure that it is free.
    std::multimap<std::string, PlugKey, std::less<>> keys_;
};

}  // namespace host::graph
