#include "graph/data.h"

#include <cstdint>

namespace host::graph {

void ComponentListData::reserve(std::size_t entries) {
    kinds_.reserve(entries);
    starts_.reserve(entries + 1);
    runs_.reserve(entries);
}

void ComponentListData::append(const Component& component) {
    kinds_.push_back(component.kind());
    for (int k = 0; k < component.runCount(); ++k)
        runs_.push_back(component.run(k));
    starts_.push_back(static_cast<int>(runs_.size()));
}

void ComponentListData::appendRun(ComponentKind kind, int first, int last) {
    kinds_.push_back(kind);
    runs_.push_back({first, last});
    starts_.push_back(static_cast<int>(runs_.size()));
}

std::pair<const Run*, const Run*> ComponentListData::runs(int position) const {
    const auto at = static_cast<std::size_t>(position);
    return {runs_.data() + starts_[at], runs_.data() + starts_[at + 1]};
}

Component ComponentListData::entry(int position) const {
    const auto [first, last] = runs(position);
    if (last - first == 1) return Component(kind(position), *first);
    Component component(kind(position));
    for (const Run* run = first; run != last; ++run)
        component.add(*run);
    return component;
}

std::vector<int> ComponentListData::flattened() const {
    std::size_t total = 0;
    for (const Run run : runs_)
        total += static_cast<std::size_t>(run.last - run.first + 1);
    std::vector<int> result;
    result.reserve(total);
    for (const Run run : runs_) {
        // The largest int may be an element: the count is one more than that.
        for (std::int64_t element = run.first; element <= run.last; ++element)
            result.push_back(static_cast<int>(element));
    }
    return result;
}

void ComponentListData::describe(std::string& text) const {
    for (int k = 0; k < size(); ++k) {
        text += k == 0 ? " " : " | ";
        const auto [first, last] = runs(k);
        for (const Run* run = first; run != last; ++run)
            text += runText(kind(k), *run);
    }
}

}  // namespace host::graph
