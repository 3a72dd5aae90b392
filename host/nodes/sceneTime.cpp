#include "nodes/sceneTime.h"

#include <cmath>

namespace host::nodes {

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
}

std::vector<graph::Node*> curvesOfTime(const graph::Graph& graph) {
    std::vector<graph::Node*> curves;
    for (const graph::NodeRef& curve : graph.nodesOfType("animCurve")) {
        if (!graph.source(curve->plug("input"))) curves.push_back(curve.get());
    }
    return curves;
}

TimeScope::TimeScope(graph::Graph& graph, double seconds) : graph_(graph), before_(currentTime(graph)) {
    graph_.setPassing(timePlug(graph_), wholeSteps(seconds));
}

TimeScope::~TimeScope() {
    graph_.setPassing(timePlug(graph_), before_);
}

}  // namespace host::nodes
