#pragma once

#include <cassert>
#include <string_view>

#include "geometry/math.h"
#include "graph/graph.h"

/// Small steps around plugs that every node type takes.
namespace host::nodes {

/// Child of a compound plug by its long or short name, which must exist.
inline graph::Plug childPlug(const graph::Plug& compound, std::string_view name) {
    const graph::Attribute* child = compound.attribute().child(name);
    assert(child != nullptr);
    return compound.child(*child);
}

/// Three numbers below a compound plug of three.
geometry::Vec3 tripleAt(graph::Graph& graph, const graph::Plug& compound);
void setTripleAt(graph::Graph& graph, const graph::Plug& compound, const geometry::Vec3& value);

/// Numbers of a flat array plug (Attribute::flatWidth); null while there is no element. For reading many
/// elements at once; connections into elements are not followed.
const graph::NumberMulti* numbersOf(const graph::Plug& arrayPlug);

/// Text of a string plug, empty when it was never set.
std::string textAt(graph::Graph& graph, const graph::Plug& plug);

graph::DataPtr matrixData(const geometry::Matrix4& matrix);
/// The identity when there is no matrix.
geometry::Matrix4 matrixOf(const graph::DataPtr& data);

}  // namespace host::nodes
