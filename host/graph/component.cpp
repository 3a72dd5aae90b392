#include "graph/component.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <utility>

#include "text/numbers.h"

namespace host::graph {

namespace {

struct KindWord {
    ComponentKind kind;
    std::string_view word;
};
constexpr std::array kWords{KindWord{ComponentKind::Vertex, "vtx"}, KindWord{ComponentKind::Edge, "e"},
                            KindWord{ComponentKind::Face, "f"}, KindWord{ComponentKind::ControlVertex, "cv"}};

/// Whether a run that begins at `first` can join an earlier run that ends at `last`: they overlap or are
/// adjacent. The largest int may be an element, so nothing is added to an end.
bool touches(int last, int first) {
    return first - 1 <= last;
}

/// Sorts, drops overlaps and joins runs that touch.
std::vector<Run> normalized(std::vector<Run> runs) {
    std::sort(runs.begin(), runs.end(), [](Run a, Run b) { return a.first < b.first; });
    std::vector<Run> result;
    for (const Run run : runs) {
        if (run.last < run.first) continue;
        if (!result.empty() && touches(result.back().last, run.first)) {
            result.back().last = std::max(result.back().last, run.last);
        } else {
            result.push_back(run);
        }
    }
    return result;
}

std::vector<Run> difference(const std::vector<Run>& from, const std::vector<Run>& what) {
    std::vector<Run> result;
    std::size_t next = 0;
    for (Run run : from) {
        while (next < what.size() && what[next].last < run.first)
            ++next;
        bool isLeft = true;
        for (std::size_t k = next; k < what.size() && what[k].first <= run.last; ++k) {
            if (what[k].first > run.first) result.push_back({run.first, what[k].first - 1});
            isLeft = what[k].last < run.last;
            if (!isLeft) break;
            run.first = what[k].last + 1;
        }
        if (isLeft) result.push_back(run);
    }
    return result;
}

}  // namespace

std::string_view componentWord(ComponentKind kind) {
    return kWords[static_cast<std::size_t>(kind)].word;
}

std::optional<ComponentKind> componentKindOf(std::string_view word) {
    for (const KindWord& entry : kWords) {
        if (entry.word == word) return entry.kind;
    }
    return std::nullopt;
}

Component Component::fromIndices(ComponentKind kind, std::vector<int> indices) {
    Component result(kind);
    std::sort(indices.begin(), indices.end());
    std::vector<Run> runs;
    for (const int index : indices) {
        if (!runs.empty() && touches(runs.back().last, index)) {
            runs.back().last = index;
        } else {
            runs.push_back({index, index});
        }
    }
    result.assign(std::move(runs));
    return result;
}

Component Component::complete(ComponentKind kind, int count) {
    Component result(kind);
    if (count > 0) result.assign({{0, count - 1}});
    result.complete_ = true;
    return result;
}

int Component::element(int position) const {
    if (runs_.empty()) return single_.first + position;
    const auto next = std::upper_bound(starts_.begin(), starts_.end(), position);
    const auto k = static_cast<std::size_t>(std::distance(starts_.begin(), next) - 1);
    return runs_[k].first + (position - starts_[k]);
}

std::vector<int> Component::elements() const {
    std::vector<int> result;
    result.reserve(static_cast<std::size_t>(count_));
    for (int k = 0; k < runCount(); ++k) {
        const Run part = run(k);
        for (std::int64_t element = part.first; element <= part.last; ++element)
            result.push_back(static_cast<int>(element));
    }
    return result;
}

bool Component::contains(int element) const {
    if (count_ == 0) return false;
    if (runs_.empty()) return single_.first <= element && element <= single_.last;
    const auto next = std::upper_bound(runs_.begin(), runs_.end(), element,
                                       [](int value, const Run& run) { return value < run.first; });
    return next != runs_.begin() && std::prev(next)->last >= element;
}

int Component::runCount() const {
    if (count_ == 0) return 0;
    return runs_.empty() ? 1 : static_cast<int>(runs_.size());
}

Run Component::run(int position) const {
    return runs_.empty() ? single_ : runs_[static_cast<std::size_t>(position)];
}

void Component::add(const std::vector<int>& indices) {
    merge(fromIndices(kind_, indices));
}

void Component::add(Run run) {
    merge(Component(kind_, run));
}

void Component::merge(const Component& other) {
    if (other.empty()) return;
    // Adding in ascending order, element after element, is how lists are usually built: extend in place.
    if (count_ > 0 && other.runs_.empty()) {
        Run& last = runs_.empty() ? single_ : runs_.back();
        if (other.single_.first - 1 == last.last) {
            last.last = other.single_.last;
            count_ += other.count_;
            return;
        }
    }
    std::vector<Run> runs = runList();
    for (int k = 0; k < other.runCount(); ++k)
        runs.push_back(other.run(k));
    assign(normalized(std::move(runs)));
}

void Component::remove(const Component& other) {
    assign(difference(runList(), other.runList()));
}

void Component::toggle(const Component& other) {
    const std::vector<Run> mine = runList();
    const std::vector<Run> theirs = other.runList();
    std::vector<Run> runs = difference(mine, theirs);
    const std::vector<Run> added = difference(theirs, mine);
    runs.insert(runs.end(), added.begin(), added.end());
    assign(normalized(std::move(runs)));
}

bool Component::operator==(const Component& other) const {
    return kind_ == other.kind_ && complete_ == other.complete_ && runList() == other.runList();
}

void Component::assign(std::vector<Run> sortedRuns) {
    runs_.clear();
    starts_.clear();
    count_ = 0;
    single_ = {};
    if (sortedRuns.size() == 1) {
        single_ = sortedRuns.front();
        count_ = single_.last - single_.first + 1;
        return;
    }
    runs_ = std::move(sortedRuns);
    starts_.reserve(runs_.size());
    for (const Run run : runs_) {
        starts_.push_back(count_);
        count_ += run.last - run.first + 1;
    }
}

std::vector<Run> Component::runList() const {
    if (count_ > 0 && runs_.empty()) return {single_};
    return runs_;
}

std::string runText(ComponentKind kind, Run run) {
    std::string text(componentWord(kind));
    text += '[';
    text += std::to_string(run.first);
    if (run.last != run.first) {
        text += ':';
        text += std::to_string(run.last);
    }
    text += ']';
    return text;
}

std::optional<ComponentWord> parseComponentWord(std::string_view text) {
    const std::size_t open = text.find('[');
    if (open == std::string_view::npos || text.back() != ']') return std::nullopt;
    const std::optional<ComponentKind> kind = componentKindOf(text.substr(0, open));
    if (!kind) return std::nullopt;
    ComponentWord word;
    word.kind = *kind;
    const std::string_view indices = text.substr(open + 1, text.size() - open - 2);
    if (indices == "*") {
        word.all = true;
        word.run = {0, -1};
        return word;
    }
    const auto range = text::readIndexRange(indices);
    if (!range) return std::nullopt;
    word.run = {range->first, range->last};
    return word;
}

std::optional<ComponentWord> parseMeshComponentWord(std::string_view text) {
    std::optional<ComponentWord> word = parseComponentWord(text);
    if (word && word->kind == ComponentKind::ControlVertex) word.reset();
    return word;
}

}  // namespace host::graph
