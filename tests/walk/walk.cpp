#include "walk/walk.h"

#include <cstdlib>
#include <functional>
#include <map>
#include <utility>

#include "graph/names.h"
#include "nodes/meshNode.h"
#include "support/dumpDifference.h"

namespace delven::walk {

namespace {

constexpr const char* kInexact = "  // undo leaves something";
constexpr const char* kUnclean = ", failing too";

/// "vtx[3] | vtx[4]" for "vtx[3:4]" in the lines of component lists.
std::string withSingleVertices(const std::string& dump) {
    static const std::string kList = " = componentList";
    std::string text;
    std::size_t copied = 0;
    for (std::size_t at = dump.find(kList); at != std::string::npos; at = dump.find(kList, at + 1)) {
        const std::size_t end = dump.find('\n', at);
        for (std::size_t colon = dump.find(':', at); colon < end; colon = dump.find(':', colon + 1)) {
            const std::size_t bracket = dump.rfind('[', colon);
            const int first = std::atoi(dump.c_str() + bracket + 1);
            const int last = std::atoi(dump.c_str() + colon + 1);
            constexpr int kSmallMesh = 100;
            if (last < first || last - first > kSmallMesh) continue;
            text.append(dump, copied, bracket - copied);
            for (int k = first; k < last; ++k)
                text += '[' + std::to_string(k) + "] | vtx";
            text += '[' + std::to_string(last);
            copied = colon + 1 + std::to_string(last).size();
        }
    }
    return text.append(dump, copied, std::string::npos);
}

/// Without what a target mesh left in the item that it fed.
std::string withoutRests(const std::string& dump) {
    static const std::string kRest = ".inputGeomTarget = mesh";
    std::string text;
    std::size_t copied = 0;
    for (std::size_t at = dump.find(kRest); at != std::string::npos; at = dump.find(kRest, copied)) {
        text.append(dump, copied, dump.rfind('\n', at) - copied);
        copied = dump.find('\n', at);
    }
    return text.append(dump, copied, std::string::npos);
}

bool hasDeltas(host::graph::Graph& graph, const std::string& item) {
    const auto list = graph.data(host::graph::findPlug(graph, item + ".ict").plug);
    const auto points = graph.data(host::graph::findPlug(graph, item + ".ipt").plug);
    const auto components = host::graph::dataAs<host::graph::ComponentListData>(list);
    const auto deltas = host::graph::dataAs<host::graph::PointArrayData>(points);
    return components != nullptr && components->size() > 0 && deltas != nullptr && !deltas->value.empty();
}

/// Whether each target has a full item, and each item deltas.
bool haveDeltas(host::graph::Graph& graph, const host::graph::Node& deformer) {
    const std::string name = graph.uniqueName(deformer);
    const auto elements = [&](const std::string& plug) {
        return graph.elements(host::graph::findPlug(graph, plug).plug);
    };
    std::vector<int> targets = elements(name + ".it[0].itg");
    for (const int target : elements(name + ".w"))
        targets.push_back(target);
    for (const int target : targets) {
        const std::string items = name + ".it[0].itg[" + std::to_string(target) + "].iti";
        if (!hasDeltas(graph, items + "[6000]")) return false;
        for (const int item : elements(items)) {
            if (!hasDeltas(graph, items + '[' + std::to_string(item) + ']')) return false;
        }
    }
    return true;
}

/// Whether some node feeds itself, through others perhaps. Sets feed nothing that is evaluated.
bool hasCycle(const host::graph::Graph& graph) {
    enum class Mark { kAhead, kDone };
    std::map<const host::graph::Node*, Mark> marks;
    const std::function<bool(const host::graph::Node&)> leadsBack = [&](const host::graph::Node& node) {
        const auto [at, isNew] = marks.emplace(&node, Mark::kAhead);
        if (!isNew) return at->second == Mark::kAhead;
        for (const auto& [key, links] : node.outgoing()) {
            for (const auto& link : links) {
                if (!link.node->isA("objectSet") && leadsBack(*link.node)) return true;
            }
        }
        marks[&node] = Mark::kDone;
        return false;
    };
    for (const auto& node : graph.nodes()) {
        if (leadsBack(*node)) return true;
    }
    return false;
}

bool isOurs(const Line& line) {
    return line.text.find("dv_") != std::string::npos;
}

bool isTweaked(host::graph::Graph& graph, const host::graph::NodeRef& mesh) {
    return host::nodes::isIntermediate(graph, *mesh) && graph.elementCount(mesh->plug("pnts")) > 0;
}

}  // namespace

std::string Line::written() const {
    return text + (isExact ? "" : kInexact) + (failsCleanly ? "" : kUnclean);
}

Line Line::read(const std::string& written) {
    const std::size_t remark = written.find(kInexact);
    return {written.substr(0, remark), remark == std::string::npos,
            written.find(kUnclean) == std::string::npos};
}

std::optional<Finding> Walk::run(const Line& line) {
    const auto before = hasLiveItem() ? originals() : Originals();
    std::optional<Finding> finding = runLine(line);
    // Live deltas are those to the original as it was when the target mesh changed last.
    if (!isBlurred_ && !before.empty() && hasLiveItem()) {
        for (const auto& [node, points] : originals()) {
            const auto old = before.find(node);
            isBlurred_ = isBlurred_ || (old != before.end() && old->second != points);
        }
        if (isBlurred_) forgetHistory();
    }
    return finding;
}

Walk::Originals Walk::originals() {
    Originals found;
    auto& graph = scene_.graph();
    for (const auto& shape : graph.nodesOfType("mesh")) {
        if (!host::nodes::isIntermediate(graph, *shape)) continue;
        if (const auto mesh = host::nodes::meshOf(graph, shape)) mesh->describe(found[shape->id()]);
    }
    return found;
}

std::optional<Finding> Walk::runLine(const Line& line) {
    noteDeltas(line);
    if (checks_ == Checks::kNone) {
        const bool exact = !isBlurredFor(line) && line.isExact;
        const std::size_t start = depth();
        runScript(line.text);
        if (takesCycleBack(start) || !exact) forgetHistory();
        state();  // evaluates when the first run does
        return std::nullopt;
    }
    if (line.text == "undo" || line.text == "redo") return walkHistory(line);
    return runStep(line);
}

std::optional<Finding> Walk::runStep(const Line& line) {
    const std::string before = state();
    const std::size_t start = depth();
    const bool isClear = !isBlurredFor(line);
    const bool exact = line.isExact && isClear;
    const Outcome outcome = runScript(line.text);
    if (!outcome.ok) ++failures_;
    if (takesCycleBack(start)) {
        forgetHistory();
        return exact && !hadCycle_ ? compare("undo of a cycle", line, before, state()) : std::nullopt;
    }
    std::string after = state();
    const bool isQueued = depth() != start;
    if (!exact || hadCycle_) {
        forgetHistory();
        const bool hasFailed = !outcome.ok || !outcome.errors.empty();
        if (!hasFailed || !line.failsCleanly || isQueued || !isClear || hadCycle_) return std::nullopt;
        return compare("a change by a line that fails", line, before, after);
    }
    if (depth() < start) {
        forgetHistory();  // the line emptied the queue
        return std::nullopt;
    }
    const std::size_t entries = depth() - start;
    if (entries == 0) {
        return compare(outcome.ok ? "a change without undo" : "a change by a line that fails", line, before,
                       after);
    }
    repeat("undo", entries);
    if (const auto finding =
            compare(outcome.ok ? "undo" : "undo of a line that fails", line, before, state()))
        return finding;
    repeat("redo", entries);
    if (const auto finding = compare("redo", line, after, state())) return finding;
    keepState(start, before);
    states_.resize(start + 1);  // what came between the entries is not known
    keepState(start + entries, std::move(after));
    return std::nullopt;
}

/// Undoes what the last line did if nodes feed themselves by it. @return whether they did
bool Walk::takesCycleBack(std::size_t start) {
    if (!hasCycle(scene_.graph())) return false;
    if (depth() > start) repeat("undo", depth() - start);
    hadCycle_ = hadCycle_ || hasCycle(scene_.graph());
    return true;
}

std::optional<Finding> Walk::walkHistory(const Line& line) {
    const std::size_t start = depth();
    const std::string before = state();
    runScript(line.text);
    const std::string now = state();
    if (depth() == start) return compare("nothing to " + line.text, line, before, now);
    if (depth() >= states_.size() || states_[depth()].empty()) return std::nullopt;
    return compare(line.text + " further back", line, states_[depth()], now);
}

std::optional<Finding> Walk::findStaleValue() {
    auto& graph = scene_.graph();
    const std::string before = state();
    for (const auto& node : graph.nodes())
        graph.markDirty(*node);
    return compare("a stale value", {"(everything is evaluated anew)"}, state(), before);
}

std::optional<Finding> Walk::compare(const std::string& kind, const Line& line, const std::string& expected,
                                     const std::string& found) const {
    if (expected == found) return std::nullopt;
    return Finding{kind, line.text + '\n' + delven::test::dumpDifference(expected, found)};
}

Outcome Walk::runScript(const std::string& text) {
    Outcome outcome = scene_.run(text);
    transcript_ +=
        text + (outcome.ok ? "\n= " : "\nfails ") + outcome.value.toString() + '\n' + outcome.printed;
    for (const auto* messages : {&outcome.infos, &outcome.warnings, &outcome.errors}) {
        for (const std::string& message : *messages)
            transcript_ += "  " + message + '\n';
    }
    return outcome;
}

std::string Walk::state() {
    std::string text;
    auto& graph = scene_.graph();
    for (const auto& shape : graph.nodesOfType("mesh")) {
        const auto mesh = host::nodes::meshOf(graph, shape);
        text += "points " + graph.fullPath(*shape);
        if (mesh != nullptr) mesh->describe(text);
        text += '\n';
    }
    // Last: evaluating stores the deltas of live targets.
    return withSingleVertices(withoutRests(text + scene_.dump()));
}

void Walk::keepState(std::size_t depth, std::string state) {
    if (states_.size() <= depth) states_.resize(depth + 1);
    states_[depth] = std::move(state);
}

void Walk::forgetHistory() {
    scene_.run("flushUndo");
    states_.clear();
}

std::size_t Walk::depth() {
    return scene_.graph().undoQueue().size();
}

void Walk::noteDeltas(const Line& line) {
    const bool writesDeltas = isOurs(line) || line.text.find("].ict ") != std::string::npos ||
                              line.text.find("].ipt ") != std::string::npos;
    isBlurred_ = isBlurred_ || (writesDeltas && hasLiveItem());
}

bool Walk::isBlurredFor(const Line& line) {
    if (isBlurred_ || hadCycle_ || !isOurs(line)) return isBlurred_ || hadCycle_;
    auto& graph = scene_.graph();
    for (const auto& mesh : graph.nodesOfType("mesh")) {
        if (isTweaked(graph, mesh)) return true;
    }
    for (const auto& deformer : graph.nodesOfType("blendShape")) {
        if (!haveDeltas(graph, *deformer)) return true;
    }
    return false;
}

bool Walk::hasLiveItem() {
    for (const auto& deformer : scene_.graph().nodesOfType("blendShape")) {
        for (const auto& [key, link] : deformer->incoming()) {
            if (key.attribute->longName() == "inputGeomTarget") return true;
        }
    }
    return false;
}

void Walk::repeat(const std::string& word, std::size_t times) {
    for (std::size_t k = 0; k < times; ++k)
        scene_.run(word);
}

}  // namespace delven::walk
