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
/// and adding one behind the others cost O(log n); other changes are linear.
class AliasTable {
  public:
    using Entry = std::pair<std::string, PlugKey>;

    std::vector<Entry>::const_iterator begin() const { return entries_.begin(); }
    std::vector<Entry>::const_iterator end() const { return entries_.end(); }
    std::size_t size() const { return entries_.size(); }

    /// The plug that an alias stands for; null when it stands for none.
    const PlugKey* find(std::string_view alias) const;
    /// Place of a plug's alias in the order; size() when it has none.
    std::size_t position(const PlugKey& key) const;
    /// The alias of a plug, empty when it has none.
    std::string aliasOf(const PlugKey& key) const;

    /// Gives a plug without alias one, at a place in the order.
    void insert(std::size_t position, const std::string& alias, const PlugKey& key);
    /// Gives a plug with an alias another in its place.
    void rename(const PlugKey& key, const std::string& alias);
    /// Takes the alias of a plug away, if it has one.
    void erase(const PlugKey& key);

  private:
    void forget(const Entry& entry);

    std::vector<Entry> entries_;
    std::map<PlugKey, std::size_t> positions_;
    std::multimap<std::string, PlugKey, std::less<>> keys_;  // who sets an alias sees to it that it is free
};

}  // namespace host::graph
