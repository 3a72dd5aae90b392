#include "symmetry/positionCheck.h"

#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MItMeshEdge.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>

#include "symmetry/symmetryPlane.h"

namespace {

/// What the edges show about every vertex and its neighbours.
struct Neighbours {
    std::vector<int> sides;               // the side of each vertex, as planeSide returns it
    std::vector<unsigned char> sidesMet;  // one bit per side on which the vertex has a neighbour
    std::vector<double> squaredDistance;  // to the nearest neighbour; infinity if there is none

    static unsigned char bitOf(int side) { return static_cast<unsigned char>(1 << (side + 1)); }
    bool has(int vertex, int side) const {
        return (sidesMet[static_cast<std::size_t>(vertex)] & bitOf(side)) != 0;
    }
    void add(int vertex, int neighbour, double squared) {
        const auto at = static_cast<std::size_t>(vertex);
        sidesMet[at] |= bitOf(sides[static_cast<std::size_t>(neighbour)]);
        squaredDistance[at] = std::min(squaredDistance[at], squared);
    }
};

/// Edge by edge, so that each edge is measured once.
Neighbours gatherNeighbours(const PositionPartners& search) {
    const std::vector<PlainPoint>& points = search.points();
    const std::size_t count = points.size();
    const auto axis = static_cast<std::size_t>(search.axis());
    Neighbours result;
    result.sides.reserve(count);
    for (std::size_t vertex = 0; vertex < count; ++vertex)
        result.sides.push_back(planeSide(points[vertex][axis]));
    result.sidesMet.assign(count, 0);
    result.squaredDistance.assign(count, std::numeric_limits<double>::infinity());
    const int edgeCount = MFnMesh(search.mesh()).numEdges();
    // On some hosts an iterator over a mesh without edges is not valid.
    if (edgeCount == 0) return result;
    MItMeshEdge edge(search.mesh());
    for (int k = 0; k < edgeCount; ++k, edge.next()) {
        const int a = edge.index(0);
        const int b = edge.index(1);
        const PlainVector along =
            difference(points[static_cast<std::size_t>(b)], points[static_cast<std::size_t>(a)]);
        const double squared = dot(along, along);
        result.add(a, b, squared);
        result.add(b, a, squared);
    }
    return result;
}

/// Keeps the smallest rounded distance. 0 means none yet, so a distance of 0 between two neighbours does not
/// count.
void noteDistance(double squaredDistance, double& smallest) {
    if (std::isinf(squaredDistance)) return;
    const double distance = round5(std::sqrt(squaredDistance));
    if (smallest == 0.0 || distance < smallest) smallest = distance;
}

}  // namespace

MStatus checkPositions(PositionPartners& search, int targetSide, const std::vector<int>& restricted,
                       SymmetryFindings& findings) {
    std::vector<int> vertices(restricted);
    if (vertices.empty()) {
        vertices.resize(search.points().size());
        std::iota(vertices.begin(), vertices.end(), 0);
    }
    const Neighbours neighbours = gatherNeighbours(search);
    for (const int vertex : vertices) {
        const auto at = static_cast<std::size_t>(vertex);
        if (neighbours.sides[at] != targetSide) {
            if (neighbours.has(vertex, targetSide)) continue;
            noteDistance(neighbours.squaredDistance[at], findings.neighbourDistance);
        }
        findings.tested.push_back(vertex);
    }
    return search.find(findings.tested, findings.partners);
}

void enterPartners(SymmetryFindings& findings, std::vector<int>& map) {
    for (std::size_t k = 0; k < findings.tested.size(); ++k) {
        const int vertex = findings.tested[k];
        const int partner = findings.partners[k];
        if (partner == kUndecided) {
            MGlobal::displayError("Failed to get closest point.");
        } else if (partner == kNoPartner) {
            findings.asymmetric.push_back(vertex);
        } else {
            map[static_cast<std::size_t>(vertex)] = partner;
            map[static_cast<std::size_t>(partner)] = vertex;
        }
    }
}
