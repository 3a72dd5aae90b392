#include "nodes/sceneTime.h"

#include <cmath>

namespace host::nodes {

namespace {

void markCurves(graph::Graph& graph) {
    for (const graph::NodeRef& curve : graph.nodesOfType("animCurve")) {
        if (!graph.source(curve->plug("input"))) graph.markDirty(*curve);
    }
}

}  // namespace

double wholeSteps(double seconds) {
    constexpr double kStepsPerSecond = 141120000.0;
    return std::round(seconds * kStepsPerSecond) / kStepsPerSecond;
}

graph::Plug timePlug(graph::Graph& graph) {
    return graph.nodesNamed("time1").front()->plug("outTime");
}

double currentTime(graph::Graph& graph) {
    return graph.number(timePlug(graph));
}

void setCurrentTime(graph::Graph& graph, double seconds) {
    graph.setNumber(timePlug(graph), wholeSteps(seconds));
    timeChanged(graph);
}

void timeChanged(graph::Graph& graph) {
    markCurves(graph);
    graph.record(markCurves, markCurves);
}

TimeScope::TimeScope(graph::Graph& graph, double seconds) : graph_(graph), before_(currentTime(graph)) {
    const graph::RecordingScope silent(graph_, nullptr);
    setCurrentTime(graph_, seconds);
}

TimeScope::~TimeScope() {
    const graph::RecordingScope silent(graph_, nullptr);
    graph_.setNumber(timePlug(graph_), before_);
    timeChanged(graph_);
}

}  // namespace host::nodes
