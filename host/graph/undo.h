#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace host::graph {

class Graph;

/// One step that can be taken back.
class UndoEntry {
  public:
    virtual ~UndoEntry() = default;
    UndoEntry() = default;
    UndoEntry(const UndoEntry&) = delete;
    UndoEntry& operator=(const UndoEntry&) = delete;

    /// @return false when the step reported a failure; the entry changes sides all the same
    virtual bool undo(Graph& graph) = 0;
    virtual bool redo(Graph& graph) = 0;
    /// Owner tag: entries of an unloaded plug-in's commands are dropped by it.
    virtual std::string owner() const { return {}; }
};

/// The recorded changes of one built-in command, each with its inverse.
class ChangeList final : public UndoEntry {
  public:
    using Step = std::function<void(Graph&)>;

    void add(Step undo, Step redo) { changes_.emplace_back(std::move(undo), std::move(redo)); }
    bool empty() const { return changes_.empty(); }
    bool undo(Graph& graph) override;
    bool redo(Graph& graph) override;

  private:
    std::vector<std::pair<Step, Step>> changes_;
};

/// Several entries that are undone and redone as one.
class EntryGroup final : public UndoEntry {
  public:
    void add(std::unique_ptr<UndoEntry> entry) { entries_.push_back(std::move(entry)); }
    bool empty() const { return entries_.empty(); }
    void clear() { entries_.clear(); }
    bool undo(Graph& graph) override;
    bool redo(Graph& graph) override;
    std::string owner() const override;

  private:
    std::vector<std::unique_ptr<UndoEntry>> entries_;
};

/// The undo queue of a scene: entries done (the last one is undone first) and entries undone.
class UndoQueue {
  public:
    /// Adds an entry and forgets what could have been redone. Dropped while the queue is disabled;
    /// collected while a chunk is open.
    void push(std::unique_ptr<UndoEntry> entry);
    /// Undoing closes what chunks are open first: it takes back all that came since the outermost opening.
    /// @return false when there is nothing to undo (redo)
    bool undo(Graph& graph);
    bool redo(Graph& graph);

    bool canUndo() const { return !done_.empty() || (chunk_ != nullptr && !chunk_->empty()); }
    bool canRedo() const { return !undone_.empty(); }
    std::size_t size() const { return done_.size(); }
    /// While disabled nothing is kept; disabling keeps what is there.
    void setEnabled(bool enabled) { isEnabled_ = enabled; }
    bool isEnabled() const { return isEnabled_; }
    /// Chunks may nest; the outermost closing makes one entry of all that came between.
    void openChunk();
    void closeChunk();
    /// How many chunks are open, one in the other.
    int openChunks() const { return chunkDepth_; }
    /// Forgets all entries, those of an open chunk too; the chunk stays open.
    void clear();
    /// Empties the queue when it holds an entry of this owner.
    void flushOwner(const std::string& owner);

  private:
    std::vector<std::unique_ptr<UndoEntry>> done_;
    std::vector<std::unique_ptr<UndoEntry>> undone_;
    std::unique_ptr<EntryGroup> chunk_;
    int chunkDepth_ = 0;
    bool isEnabled_ = true;
};

}  // namespace host::graph
