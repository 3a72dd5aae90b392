#include "graph/undo.h"

#include <algorithm>

#include "graph/graph.h"

namespace host::graph {

namespace {

template <typename Entries>
std::unique_ptr<UndoEntry> takeLast(Entries& entries) {
    std::unique_ptr<UndoEntry> entry = std::move(entries.back());
    entries.pop_back();
    return entry;
}

}  // namespace

bool ChangeList::undo(Graph& graph) {
    const RecordingScope silent(graph, nullptr);
    for (auto change = changes_.rbegin(); change != changes_.rend(); ++change)
        change->first(graph);
    graph.warnOfMissing();
    return true;
}

bool ChangeList::redo(Graph& graph) {
    const RecordingScope silent(graph, nullptr);
    for (auto& change : changes_)
        change.second(graph);
    graph.warnOfMissing();
    return true;
}

bool EntryGroup::undo(Graph& graph) {
    bool ok = true;
    for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry)
        ok = (*entry)->undo(graph) && ok;
    return ok;
}

bool EntryGroup::redo(Graph& graph) {
    bool ok = true;
    for (auto& entry : entries_)
        ok = entry->redo(graph) && ok;
    return ok;
}

std::string EntryGroup::owner() const {
    for (const auto& entry : entries_) {
        if (std::string name = entry->owner(); !name.empty()) return name;
    }
    return {};
}

void UndoQueue::push(std::unique_ptr<UndoEntry> entry) {
    if (!isEnabled_) return;
    undone_.clear();
    if (chunk_ == nullptr) return keep(std::move(entry));
    if (chunk_->name().empty()) chunk_->setName(entry->name());
    chunk_->add(std::move(entry));
}

void UndoQueue::keep(std::unique_ptr<UndoEntry> entry) {
    done_.push_back(std::move(entry));
    dropOldest();
}

void UndoQueue::dropOldest() {
    while (limit_ > 0 && done_.size() > limit_)
        done_.pop_front();
}

void UndoQueue::setLimit(std::size_t limit) {
    limit_ = limit;
    dropOldest();
}

std::string UndoQueue::undoName() const {
    if (chunk_ != nullptr && !chunk_->empty()) return chunk_->name();
    return done_.empty() ? std::string() : done_.back()->name();
}

std::vector<std::string> UndoQueue::names() const {
    std::vector<std::string> names;
    names.reserve(done_.size());
    for (const auto& entry : done_)
        names.push_back(entry->name());
    return names;
}

bool UndoQueue::undo(Graph& graph) {
    while (chunkDepth_ > 0)
        closeChunk();
    if (done_.empty()) return false;
    // The entry leaves the queue before it runs: what it runs must not find it there.
    std::unique_ptr<UndoEntry> entry = takeLast(done_);
    entry->undo(graph);
    undone_.push_back(std::move(entry));
    return true;
}

bool UndoQueue::redo(Graph& graph) {
    if (undone_.empty()) return false;
    std::unique_ptr<UndoEntry> entry = takeLast(undone_);
    entry->redo(graph);
    keep(std::move(entry));
    return true;
}

void UndoQueue::openChunk(const std::string& name) {
    if (chunkDepth_++ > 0) return;
    chunk_ = std::make_unique<EntryGroup>();
    chunk_->setName(name);
}

void UndoQueue::closeChunk() {
    if (chunkDepth_ == 0 || --chunkDepth_ > 0) return;
    std::unique_ptr<EntryGroup> chunk = std::move(chunk_);
    if (!chunk->empty()) keep(std::move(chunk));
}

void UndoQueue::clear() {
    done_.clear();
    undone_.clear();
    if (chunk_ != nullptr) chunk_->clear();
}

void UndoQueue::flushOwner(const std::string& owner) {
    const auto belongs = [&](const std::unique_ptr<UndoEntry>& entry) { return entry->owner() == owner; };
    if (std::any_of(done_.begin(), done_.end(), belongs) ||
        std::any_of(undone_.begin(), undone_.end(), belongs) ||
        (chunk_ != nullptr && chunk_->owner() == owner))
        clear();
}

}  // namespace host::graph
