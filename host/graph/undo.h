#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace host::graph {

class Graph;

/// One step that can be undone and redone.
class UndoEntry {
  public:
    virtual ~UndoEntry() = default;
    UndoEntry() = default;
    UndoEntry(const UndoEntry&) = delete;
    UndoEntry& operator=(const UndoEntry&) = delete;

    /// @return false if the step reported a failure; the entry moves to the other side all the same
    virtual bool undo(Graph& graph) = 0;
    virtual bool redo(Graph& graph) = 0;
    /// Owner tag. Unloading a plug-in empties the queue if it holds an entry with its tag
    /// (UndoQueue::flushOwner).
    virtual std::string owner() const { return {}; }

    /// What a user calls the step: the command line, or the name of a chunk.
    const std::string& name() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }

  private:
    std::string name_;
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
    /// Adds an entry and drops all entries that could have been redone. While the queue is disabled, the
    /// entry is dropped. While a chunk is open, the entry goes into the chunk.
    void push(std::unique_ptr<UndoEntry> entry);
    /// Undoing first closes all open chunks: it undoes everything since the outermost one was opened.
    /// @return false if there is nothing to undo (redo)
    bool undo(Graph& graph);
    bool redo(Graph& graph);

    bool canUndo() const { return !done_.empty() || (chunk_ != nullptr && !chunk_->empty()); }
    bool canRedo() const { return !undone_.empty(); }
    /// The name of the entry that undo (redo) takes next; empty if there is none.
    std::string undoName() const;
    std::string redoName() const { return undone_.empty() ? std::string() : undone_.back()->name(); }
    /// Of the entries done, the first one first.
    std::vector<std::string> names() const;
    std::size_t size() const { return done_.size(); }
    /// How many entries are kept; 0 for all. Of more, the oldest ones are dropped.
    std::size_t limit() const { return limit_; }
    void setLimit(std::size_t limit);
    /// While disabled, new entries are dropped. Disabling keeps the existing ones.
    void setEnabled(bool enabled) { isEnabled_ = enabled; }
    bool isEnabled() const { return isEnabled_; }
    /// Chunks may nest. Closing the outermost one makes one entry of everything in between.
    /// @param name  of the entry, if this is the outermost chunk; empty for the name of the first step in it
    void openChunk(const std::string& name = {});
    void closeChunk();
    /// How many chunks are open, one inside the other.
    int openChunks() const { return chunkDepth_; }
    /// Drops all entries, also those of an open chunk. The chunk stays open.
    void clear();
    /// Empties the queue if it holds an entry of this owner.
    void flushOwner(const std::string& owner);

  private:
    void keep(std::unique_ptr<UndoEntry> entry);
    void dropOldest();

    std::deque<std::unique_ptr<UndoEntry>> done_;
    std::vector<std::unique_ptr<UndoEntry>> undone_;
    std::unique_ptr<EntryGroup> chunk_;
    std::size_t limit_ = 0;
    int chunkDepth_ = 0;
    bool isEnabled_ = true;
};

}  // namespace host::graph
