#include "nodes/sceneTime.h"

#include <cmath>

namespace host::nodes {

graph::Plug timePlug(graph::Graph& graph) {
    return graph.nodesNamed("time1").front()->plug("outTime");
}

double currentTime(graph::Graph& graph) {
    return graph.number(timePlug(graph));
}

void setCurrentTime(graph::Graph& graph, double seconds) {
    constexpr double kTicksPerSecond = 141120000.0;
    graph.setNumber(timePlug(graph), std::round(seconds * kTicksPerSecond) / kTicksPerSecond);
}

}  // namespace host::nodes
