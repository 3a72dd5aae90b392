#pragma once

#include <map>
#include <utility>
#include <vector>

#include "symmetry/meshTopology.h"

/// Connectivity of a mesh given by its faces; edges are numbered in the order of their first use.
inline MeshConnectivity plainMesh(int vertexCount, const std::vector<std::vector<int>>& faces) {
    MeshConnectivity mesh;
    mesh.vertexCount = vertexCount;
    std::map<std::pair<int, int>, int> edges;
    std::vector<std::vector<int>> edgeFaces;
    for (std::size_t face = 0; face < faces.size(); ++face) {
        const std::vector<int>& corners = faces[face];
        for (std::size_t k = 0; k < corners.size(); ++k) {
            const int a = corners[k];
            const int b = corners[(k + 1) % corners.size()];
            const auto [at, isNew] = edges.try_emplace(std::minmax(a, b), static_cast<int>(edges.size()));
            if (isNew) {
                mesh.ends.push_back({a, b});
                edgeFaces.emplace_back();
            }
            mesh.faceVertices.values.push_back(a);
            mesh.faceEdges.values.push_back(at->second);
            edgeFaces[static_cast<std::size_t>(at->second)].push_back(static_cast<int>(face));
        }
        mesh.faceVertices.endList();
        mesh.faceEdges.endList();
    }
    for (const std::vector<int>& list : edgeFaces) {
        mesh.edgeFaces.values.insert(mesh.edgeFaces.values.end(), list.begin(), list.end());
        mesh.edgeFaces.endList();
    }
    return mesh;
}
