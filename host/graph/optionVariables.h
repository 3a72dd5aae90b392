#pragma once

#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace host::graph {

/// The user's option variables: named values outside the scene and outside undo.
class OptionVariables {
  public:
    using Value = std::variant<int, double, std::string, std::vector<int>, std::vector<double>,
                               std::vector<std::string>>;

    /// Replaces a variable of the same name, of any type.
    void set(const std::string& name, Value value) { values_[name] = std::move(value); }
    const Value* find(const std::string& name) const {
        const auto found = values_.find(name);
        return found == values_.end() ? nullptr : &found->second;
    }
    bool remove(const std::string& name) { return values_.erase(name) > 0; }
    void clear() { values_.clear(); }
    const std::map<std::string, Value>& all() const { return values_; }

  private:
    std::map<std::string, Value> values_;
};

}  // namespace host::graph
