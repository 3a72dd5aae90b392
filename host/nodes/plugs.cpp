#include "nodes/plugs.h"

#include <algorithm>

namespace host::nodes {

geometry::Vec3 tripleAt(graph::Graph& graph, const graph::Plug& compound) {
    return {graph.number(compound.child(0)), graph.number(compound.child(1)),
            graph.number(compound.child(2))};
}

geometry::RotateOrder rotateOrderAt(graph::Graph& graph, const graph::Plug& plug) {
    const double value = graph.number(plug);
    // A number from a connection may be out of range.
    return value >= 0.0 && value <= 5.0 ? static_cast<geometry::RotateOrder>(static_cast<int>(value))
                                        : geometry::RotateOrder::Xyz;
}

void setTripleAt(graph::Graph& graph, const graph::Plug& compound, const geometry::Vec3& value) {
    for (int axis = 0; axis < 3; ++axis)
        graph.setNumber(compound.child(axis), value[axis]);
}

const graph::NumberMulti* numbersOf(const graph::Plug& arrayPlug) {
    const graph::Slot* slot = arrayPlug.node()->slot(arrayPlug.key());
    if (slot == nullptr) return nullptr;
    const auto* numbers = std::get_if<std::unique_ptr<graph::NumberMulti>>(&slot->content);
    return numbers != nullptr && (*numbers)->size() > 0 ? numbers->get() : nullptr;
}

int choiceAt(graph::Graph& graph, const graph::Plug& plug) {
    constexpr double kMost = 1e6;
    const double value = graph.number(plug);
    return value >= 0.0 && value <= kMost ? static_cast<int>(value) : -1;
}

std::string textAt(graph::Graph& graph, const graph::Plug& plug) {
    const auto text = graph::dataAs<graph::StringData>(graph.data(plug));
    return text != nullptr ? text->value : std::string();
}

graph::DataPtr matrixData(const geometry::Matrix4& matrix) {
    graph::Matrix16 values{};
    for (std::size_t k = 0; k < values.size(); ++k)
        values[k] = matrix.m[k / 4][k % 4];
    return std::make_shared<graph::MatrixData>(values);
}

geometry::Matrix4 matrixOf(const graph::DataPtr& data) {
    geometry::Matrix4 matrix;
    const auto values = graph::dataAs<graph::MatrixData>(data);
    if (values == nullptr) return matrix;
    for (std::size_t k = 0; k < values->value.size(); ++k)
        matrix.m[k / 4][k % 4] = values->value[k];
    return matrix;
}

}  // namespace host::nodes
