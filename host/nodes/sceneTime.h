#pragma once

#include "graph/graph.h"

/// The current time of the scene: the value of time1.outTime, in seconds.
namespace host::nodes {

/// A time rounded to the finest step that the host keeps. That step divides every frame rate, so whole
/// frames, and simple parts of them, stay exact.
double wholeSteps(double seconds);

graph::Plug timePlug(graph::Graph& graph);
double currentTime(graph::Graph& graph);
/// Sets the time, rounded to whole steps. Afterwards everything that depends on the time is dirty.
void setCurrentTime(graph::Graph& graph, double seconds);
/// The curves that follow the time without a connection (graph::NodeBehaviour::dependents).
std::vector<graph::Node*> curvesOfTime(const graph::Graph& graph);

/// Another current time for a scope, which changes nothing in the scene and is not recorded. time1.outTime
/// must not have a source.
class TimeScope {
  public:
    TimeScope(graph::Graph& graph, double seconds);
    ~TimeScope();
    TimeScope(const TimeScope&) = delete;
    TimeScope& operator=(const TimeScope&) = delete;

  private:
    graph::Graph& graph_;
    double before_;
};

}  // namespace host::nodes
