#include "graph/numberMulti.h"

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <utility>

namespace host::graph {

namespace {

/// One lock for all multis: only the first read after writes out of order takes it.
std::mutex& settleMutex() {
    static std::mutex mutex;
    return mutex;
}

}  // namespace

NumberMulti::NumberMulti(const NumberMulti& other) : width_(other.width_) {
    other.settle();
    indices_ = other.indices_;
    values_ = other.values_;
}

int NumberMulti::size() const {
    if (!unsettled_.load(std::memory_order_acquire)) return static_cast<int>(indices_.size());
    const std::lock_guard<std::mutex> lock(settleMutex());
    return static_cast<int>(indices_.size() - removed_.size() + pending_.size());
}

bool NumberMulti::contains(int index) const {
    if (!unsettled_.load(std::memory_order_acquire)) return position(index) >= 0;
    // This does not merge: code that writes in any order asks before each write.
    const std::lock_guard<std::mutex> lock(settleMutex());
    return findUnsettled(index) != nullptr;
}

bool NumberMulti::read(int index, double* to) const {
    const std::lock_guard<std::mutex> lock(settleMutex());
    const double* values = findUnsettled(index);
    if (values == nullptr) return false;
    std::copy_n(values, width_, to);
    return true;
}

const double* NumberMulti::findUnsettled(int index) const {
    const auto waiting = pending_.find(index);
    if (waiting != pending_.end()) return pendingValues_.data() + waiting->second;
    const int at = position(index);
    if (at < 0 || removed_.count(index) != 0) return nullptr;
    return values_.data() + static_cast<std::ptrdiff_t>(at) * width_;
}

const double* NumberMulti::find(int index) const {
    settle();
    const int at = position(index);
    return at < 0 ? nullptr : values_.data() + static_cast<std::ptrdiff_t>(at) * width_;
}

int NumberMulti::logicalIndex(int at) const {
    settle();
    return indices_[static_cast<std::size_t>(at)];
}

const std::vector<int>& NumberMulti::indices() const {
    settle();
    return indices_;
}

int NumberMulti::position(int index) const {
    // Lists without gaps are common: there the index is the position.
    const auto guess = static_cast<std::size_t>(index);
    if (index >= 0 && guess < indices_.size() && indices_[guess] == index) return index;
    const auto found = std::lower_bound(indices_.begin(), indices_.end(), index);
    if (found == indices_.end() || *found != index) return -1;
    return static_cast<int>(found - indices_.begin());
}

bool NumberMulti::write(int index, int part, double value, const double* defaults) {
    const auto width = static_cast<std::size_t>(width_);
    const auto offset = static_cast<std::size_t>(part);
    if (const int at = position(index); at >= 0) {
        double* values = values_.data() + static_cast<std::size_t>(at) * width;
        const bool isNew = removed_.erase(index) != 0;
        if (isNew) std::copy_n(defaults, width, values);
        values[offset] = value;
        return isNew;
    }
    if (indices_.empty() || index > indices_.back()) {
        indices_.push_back(index);
        values_.insert(values_.end(), defaults, defaults + width);
        values_[values_.size() - width + offset] = value;
        return true;
    }
    const auto [waiting, isNew] = pending_.try_emplace(index, pendingValues_.size());
    if (isNew) pendingValues_.insert(pendingValues_.end(), defaults, defaults + width);
    pendingValues_[waiting->second + offset] = value;
    unsettled_.store(true, std::memory_order_release);
    return isNew;
}

bool NumberMulti::remove(int index) {
    if (pending_.erase(index) != 0) return true;
    if (position(index) < 0 || !removed_.insert(index).second) return false;
    unsettled_.store(true, std::memory_order_release);
    return true;
}

void NumberMulti::clear() {
    indices_.clear();
    values_.clear();
    pending_.clear();
    pendingValues_.clear();
    removed_.clear();
    unsettled_.store(false, std::memory_order_relaxed);
}

void NumberMulti::settle() const {
    if (!unsettled_.load(std::memory_order_acquire)) return;
    const std::lock_guard<std::mutex> lock(settleMutex());
    if (!unsettled_.load(std::memory_order_acquire)) return;
    // Merging changes the order of the storage, not the content.
    const_cast<NumberMulti*>(this)->merge();
}

void NumberMulti::merge() {
    std::vector<std::pair<int, std::size_t>> added(pending_.begin(), pending_.end());
    std::sort(added.begin(), added.end());
    std::vector<int> indices;
    std::vector<double> values;
    indices.reserve(indices_.size() + added.size());
    values.reserve(values_.size() + pendingValues_.size());
    const auto width = static_cast<std::size_t>(width_);
    std::size_t next = 0;
    const auto takeExisting = [&] {
        const double* from = values_.data() + next * width;
        const int index = indices_[next++];
        if (removed_.count(index) != 0) return;
        indices.push_back(index);
        values.insert(values.end(), from, from + width);
    };
    for (const auto& [index, at] : added) {
        while (next < indices_.size() && indices_[next] < index)
            takeExisting();
        indices.push_back(index);
        values.insert(values.end(), pendingValues_.data() + at, pendingValues_.data() + at + width);
    }
    while (next < indices_.size())
        takeExisting();
    indices_ = std::move(indices);
    values_ = std::move(values);
    pending_.clear();
    pendingValues_.clear();
    removed_.clear();
    unsettled_.store(false, std::memory_order_release);
}

}  // namespace host::graph
