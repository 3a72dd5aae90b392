#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "fixtures.h"
#include "support/meshZoo.h"

/// What the tests of dv_polyMapVertexOrder share.
namespace vertexOrder {

using Ints = std::vector<int>;
using Strings = std::vector<std::string>;
using zoo::Mesh;

inline Mesh meshOf(std::vector<float> points, const std::vector<Ints>& faces) {
    Ints counts;
    Ints corners;
    for (const Ints& face : faces) {
        counts.push_back(static_cast<int>(face.size()));
        corners.insert(corners.end(), face.begin(), face.end());
    }
    return host::geometry::createMesh(std::move(points), counts, std::move(corners)).mesh;
}

/// Two quads on either side of the edge 1-4, which lies on the plane x = 0.
inline Mesh twoQuads(float offset = 0.0F) {
    return meshOf({-1 + offset, 0, 0, offset, 0, 0, 1 + offset, 0, 0, -1 + offset, 0, 1, offset, 0, 1,
                   1 + offset, 0, 1},
                  {{0, 3, 4, 1}, {1, 4, 5, 2}});
}

/// A mesh "base" and the commands on it.
class MapVertexOrder : public ::testing::Test {
  protected:
    void add(const Mesh& mesh, const std::string& name = "base") {
        mesh_ = mesh;
        scene_.addMesh(name, mesh);
        scene_.mel("select -clear");
    }

    Outcome call(const std::string& arguments) { return scene_.run("dv_polyMapVertexOrder " + arguments); }

    /// A call that succeeds without a message.
    int result(const std::string& arguments) {
        return scene_.mel("dv_polyMapVertexOrder " + arguments).toInt();
    }

    bool hasMap(const std::string& shape = "baseShape") {
        return scene_.mel("attributeQuery -node " + shape + " -exists dvVertexOrderMap").toInt() != 0;
    }
    Ints map(const std::string& shape = "baseShape") {
        return scene_.mel("getAttr " + shape + ".dvVertexOrderMap").toIntArray();
    }
    void setMap(const Ints& map) {
        std::string text =
            "setAttr baseShape.dvVertexOrderMap -type Int32Array " + std::to_string(map.size());
        for (const int entry : map)
            text += ' ' + std::to_string(entry);
        if (!hasMap()) scene_.mel("addAttr -ln dvVertexOrderMap -sn dvvom -h 1 -dt Int32Array baseShape");
        scene_.mel(text);
    }

    std::string edge(int a, int b) const {
        return "base.e[" + std::to_string(mesh_.topology().findEdge(a, b)) + "]";
    }
    Strings selected() { return scene_.mel("ls -selection -flatten").toStringArray(); }

    Scene scene_;
    Mesh mesh_;
};

inline const Strings kClosingWarning{"Not all vertices have been mapped. See script editor for details."};

inline Strings closingLines(const std::string& axis, const std::string& tolerance) {
    return {"One or more errors occurred while mapping the mesh.",
            "To receive more info on the failed components reload the unmapped mesh and run the following "
            "command:",
            "dv_polyMapVertexOrder -axis " + axis + " -tolerance " + tolerance + " -verbose 1;",
            "For full details set the verbose flag to 2."};
}

inline Strings operator+(Strings left, const Strings& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

}  // namespace vertexOrder
