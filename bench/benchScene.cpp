#include "benchScene.h"

#include <maya/MFnMesh.h>
#include <maya/MSelectionList.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "common.h"

Grid::Grid(int vertices) {
    const int side = static_cast<int>(std::ceil(std::sqrt(vertices)));
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            points.append(MFloatPoint(static_cast<float>(column), 0.1F * static_cast<float>(row % 7),
                                      static_cast<float>(row)));
        }
    }
    for (int row = 0; row + 1 < side; ++row) {
        for (int column = 0; column + 1 < side; ++column) {
            const int corner = row * side + column;
            counts.append(4);
            for (const int vertex : {corner, corner + side, corner + side + 1, corner + 1})
                connects.append(vertex);
        }
    }
}

BenchScene& BenchScene::of(int vertices) {
    static std::unique_ptr<BenchScene> current;
    if (current == nullptr || current->size_ != vertices) {
        // One host at a time: the old one goes before the new one comes.
        current.reset();
        current.reset(new BenchScene(vertices));
    }
    return *current;
}

BenchScene::BenchScene(int size) : size_(size) {
    const Grid grid(size);
    const int count = static_cast<int>(grid.points.length());
    MFnMesh mesh;
    mesh.create(count, static_cast<int>(grid.counts.length()), grid.points, grid.counts, grid.connects);
    mel("rename polySurface1 base; blendShape -name bs base");
    blendShape = node("bs");
    original = node("baseShapeOrig");
    for (int vertex = 0; vertex < count; ++vertex) {
        vertices.append(vertex);
        deltas.append(MPoint(0.001 * vertex, 1.0, -0.5));
        weights.append((vertex % 1000) / 1000.0);
    }
    setTargetComponents(blendShape, 0, kFullItem, vertices);
    setTargetPoints(blendShape, 0, kFullItem, deltas);
}

std::string BenchScene::mel(const std::string& text) {
    const Outcome outcome = scene_.run(text);
    if (outcome.ok) return outcome.value.toString();
    std::fprintf(stderr, "%s\n%s\n", text.c_str(),
                 outcome.errors.empty() ? "failed" : outcome.errors.front().c_str());
    std::exit(1);
}

MObject BenchScene::node(const char* name) const {
    MSelectionList list;
    list.add(name);
    MObject found;
    list.getDependNode(0, found);
    return found;
}
