#pragma once

#include <cassert>
#include <string_view>

#include "geometry/math.h"
#include "graph/graph.h"

/// Short helpers for plugs that all node types use.
namespace host::nodes {

/// Child of a compound plug by its long or short name. The child must exist.
inline graph::Plug childPlug(const graph::Plug& compound, std::string_view name) {
    const graph::Attribute* child = compound.attribute().child(name);
    assert(child != nullptr);
    return compound.child(*child);
}

/// The three numbers of a compound plug.
geometry::Vec3 tripleAt(graph::Graph& graph, const graph::Plug& compound);
/// A rotate order from a plug; xyz if the number is none.
geometry::RotateOrder rotateOrderAt(graph::Graph& graph, const graph::Plug& plug);
void setTripleAt(graph::Graph& graph, const graph::Plug& compound, const geometry::Vec3& value);

/// Numbers of a flat array plug (Attribute::flatWidth); null while it has no element. For reading many
/// elements at once. Connections into elements are not followed.
const graph::NumberMulti* numbersOf(const graph::Plug& arrayPlug);

/// Number of the chosen field of an enum plug. What a connection brings in may be anything: -1 if it is far
/// from every field.
int choiceAt(graph::Graph& graph, const graph::Plug& plug);

/// Text of a string plug; empty if it was never set.
std::string textAt(graph::Graph& graph, const graph::Plug& plug);

graph::DataPtr matrixData(const geometry::Matrix4& matrix);
/// The identity if there is no matrix.
geometry::Matrix4 matrixOf(const graph::DataPtr& data);

}  // namespace host::nodes
