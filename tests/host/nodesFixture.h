#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "graph/names.h"
#include "graph/sceneDump.h"
#include "nodes/blendShapeNode.h"
#include "nodes/deformers.h"
#include "nodes/meshColors.h"
#include "nodes/meshNode.h"
#include "nodes/plugs.h"
#include "nodes/registerTypes.h"
#include "nodes/sets.h"
#include "nodes/transformNode.h"
#include "support/dumpDifference.h"
#include "support/meshZoo.h"

namespace nodestest {

using namespace host;
using graph::NodeRef;
using graph::Plug;

/// A scene as the host starts with.
struct Scene : graph::Graph {
    Scene() {
        nodes::registerTypes(types());
        nodes::setUpScene(*this);
    }

    Plug at(const std::string& name) const {
        const graph::PlugMatch match = graph::findPlug(*this, name);
        EXPECT_TRUE(match.ok) << name;
        return match.plug;
    }
    NodeRef node(const std::string& name) const { return graph::findNode(*this, name); }
    NodeRef make(const char* type, const std::string& name = {}) {
        return createNode(*types().find(type), name);
    }
    void set(const std::string& plug, double value) { setNumber(at(plug), value); }
    double get(const std::string& plug) { return number(at(plug)); }
    /// connect by names
    void join(const std::string& source, const std::string& destination) {
        connect(at(source), at(destination));
    }

    /// `count` vertices on the x axis, at x = 0, 1, 2, ..., without a face; returns the shape.
    NodeRef row(const std::string& name, int count) {
        std::vector<float> points;
        for (int vertex = 0; vertex < count; ++vertex)
            points.insert(points.end(), {static_cast<float>(vertex), 0.0F, 0.0F});
        return nodes::createMesh(*this, geometry::createMesh(std::move(points), {}, {}).mesh, name, nullptr);
    }
    /// A copy of a shape with some points moved.
    NodeRef moved(const NodeRef& shape, const std::string& name,
                  const std::vector<std::pair<int, geometry::Vec3>>& offsets) {
        geometry::Mesh mesh = nodes::meshOf(*this, shape)->mesh;
        for (const auto& [vertex, offset] : offsets)
            mesh.setPoint(vertex, mesh.point(vertex) + offset);
        return nodes::createMesh(*this, mesh, name, nullptr);
    }
    std::vector<float> points(const NodeRef& shape) { return nodes::meshOf(*this, shape)->mesh.points(); }
    geometry::Vec3 point(const NodeRef& shape, int vertex) {
        return nodes::meshOf(*this, shape)->mesh.point(vertex);
    }
    void move(const NodeRef& shape, int vertex, const geometry::Vec3& offset) {
        geometry::Mesh mesh = nodes::meshOf(*this, shape)->mesh;
        mesh.setPoint(vertex, mesh.point(vertex) + offset);
        nodes::setMeshPoints(*this, shape, mesh.points());
    }
    /// Everything stored, and the evaluated points of every mesh.
    std::string dump() {
        std::string text;
        for (const NodeRef& shape : nodesOfType("mesh")) {
            text += "points " + shape->name();
            if (const nodes::MeshPtr mesh = nodes::meshOf(*this, shape)) {
                for (const float value : mesh->mesh.points())
                    text += ' ' + std::to_string(value);
            }
            text += '\n';
        }
        // Last: evaluating stores the deltas of live targets.
        return text + graph::sceneDump(*this);
    }
    /// Runs changes with a recorder, and takes them back and repeats them, comparing with dumps.
    template <typename Changes>
    std::string undoRedoFault(Changes&& changes) {
        graph::ChangeList list;
        const std::string before = dump();
        {
            const graph::RecordingScope scope(*this, &list);
            changes();
        }
        const std::string after = dump();
        for (int round = 0; round < 2; ++round) {
            list.undo(*this);
            if (dump() != before) return "undo: " + delven::test::dumpDifference(before, dump());
            list.redo(*this);
            if (dump() != after) return "redo: " + delven::test::dumpDifference(after, dump());
        }
        return {};
    }
};

inline geometry::Vec3 vec(double x, double y, double z) {
    return {x, y, z};
}

inline graph::DataPtr vertexList(const std::vector<graph::Run>& runs) {
    auto list = std::make_shared<graph::ComponentListData>();
    for (const graph::Run& run : runs)
        list->appendRun(graph::ComponentKind::Vertex, run.first, run.last);
    return list;
}

inline graph::DataPtr pointList(std::vector<graph::Point4> points) {
    return std::make_shared<graph::PointArrayData>(std::move(points));
}

}  // namespace nodestest

namespace host::geometry {
inline void PrintTo(const Vec3& v, std::ostream* stream) {
    *stream << '(' << v.x << ' ' << v.y << ' ' << v.z << ')';
}
}  // namespace host::geometry
