#pragma once

#include <utility>

namespace host::graph {

/// Gives a variable another value until the end of a scope, also if an exception ends it.
template <typename T>
class ScopedValue {
  public:
    ScopedValue(T& variable, T value) : variable_(variable), previous_(std::exchange(variable, value)) {}
    ~ScopedValue() { variable_ = previous_; }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

  private:
    T& variable_;
    T previous_;
};

}  // namespace host::graph
