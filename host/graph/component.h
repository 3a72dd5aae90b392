#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host::graph {

/// Curves are not covered, but lists may hold the numbers of their control vertices. No object has any.
enum class ComponentKind : std::uint8_t { Vertex, Edge, Face, ControlVertex };

/// The word before the brackets: "vtx", "e", "f" or "cv".
std::string_view componentWord(ComponentKind kind);
/// The kind that a word names, if it names one.
std::optional<ComponentKind> componentKindOf(std::string_view word);

/// A closed range of element numbers, first <= last.
struct Run {
    int first = 0;
    int last = 0;
    bool operator==(const Run& other) const { return first == other.first && last == other.last; }
};

/// A set of elements of one kind, kept as sorted, disjoint runs that do not touch. A single run, by far the
/// most frequent case, needs no heap memory.
class Component {
  public:
    explicit Component(ComponentKind kind) : kind_(kind) {}
    Component(ComponentKind kind, Run run) : kind_(kind), single_(run), count_(run.last - run.first + 1) {}

    static Component fromIndices(ComponentKind kind, std::vector<int> indices);
    /// Elements 0 .. count-1. A complete component stays complete, whatever is added to it.
    static Component complete(ComponentKind kind, int count);

    ComponentKind kind() const { return kind_; }
    bool isComplete() const { return complete_; }
    int count() const { return count_; }
    bool empty() const { return count_ == 0; }
    /// The element at a position in ascending order; O(log runs).
    int element(int position) const;
    std::vector<int> elements() const;
    bool contains(int element) const;

    int runCount() const;
    Run run(int position) const;

    void add(const std::vector<int>& indices);
    void add(Run run);
    void merge(const Component& other);
    void remove(const Component& other);
    /// Keeps the elements that are in exactly one of the two.
    void toggle(const Component& other);

    bool operator==(const Component& other) const;

  private:
    void assign(std::vector<Run> sortedRuns);
    std::vector<Run> runList() const;

    ComponentKind kind_;
    bool complete_ = false;
    Run single_{};             // the run while there is only one
    std::vector<Run> runs_;    // all runs when there are two or more
    std::vector<int> starts_;  // position of each run's first element
    int count_ = 0;
};

/// "vtx[3]" or "vtx[0:7]".
std::string runText(ComponentKind kind, Run run);

/// A component word as written in a script, without its object: "vtx[3]", "f[0:7]", "e[*]". For "[*]" the run
/// is 0 .. -1 and `all` is set.
struct ComponentWord {
    ComponentKind kind = ComponentKind::Vertex;
    Run run{};
    bool all = false;
};
/// Nothing if the text is not a component word.
std::optional<ComponentWord> parseComponentWord(std::string_view text);
/// The same without the kinds that no object has: their words may name an attribute.
std::optional<ComponentWord> parseMeshComponentWord(std::string_view text);

}  // namespace host::graph
