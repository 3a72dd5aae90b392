// The vertex order map of a head-like mesh, and of a thousand shells beside two of the same size.

#include <maya/MDagPath.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMesh.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "benchScene.h"
#include "rows.h"
#include "sheets.h"
#include "table.h"

namespace {

/// What the rows are measured on.
enum class Kind { kHead, kTwoShells, kThousandShells };

/// Sheets one after the other. All but those over the plane come in pairs, which are numbered alike.
std::vector<Sheet> sheetsOf(Kind kind, int vertices) {
    if (kind == Kind::kHead) return headSheets(vertices);
    std::vector<Sheet> sheets;
    const int pairCount = kind == Kind::kTwoShells ? 1 : 500;
    const int side = static_cast<int>(std::sqrt(vertices / (2.0 * pairCount)));
    for (int pair = 0; pair < pairCount; ++pair)
        addSheetPair(sheets, side, side, 2.0F * static_cast<float>(pair));
    return sheets;
}

/// The mesh of a kind in the scene of a size, and the plug of its map.
struct MapMesh {
    MapMesh(Kind kind, int vertices) {
        BenchScene& scene = BenchScene::of(vertices);
        const std::string name = "mapped" + std::to_string(static_cast<int>(kind));
        if (scene.mel("objExists " + name) == "0") make(scene, name, kind, vertices);
        MSelectionList list;
        list.add((name + "Shape").c_str());
        list.add((name + "Shape.dvVertexOrderMap").c_str());
        list.getDagPath(0, path);
        list.getPlug(1, map);
    }

    MDagPath path;
    MPlug map;

  private:
    /// One such mesh at a time: the largest fill the memory.
    static void make(BenchScene& scene, const std::string& name, Kind kind, int vertices) {
        scene.mel("string $old[] = `ls \"mapped?\"`; if (size($old) > 0) delete $old; flushUndo");
        SheetShape(sheetsOf(kind, vertices)).makeMesh(name);
        scene.mel("addAttr -ln dvVertexOrderMap -sn dvvom -h 1 -dt Int32Array " + name + "Shape; flushUndo");
    }
};

void mapVertices(benchmark::State& state, int size, Kind kind) {
    state.PauseTiming();
    BenchScene& scene = BenchScene::of(size);
    const std::string mesh = MapMesh(kind, size).path.fullPathName().asChar();
    state.ResumeTiming();
    scene.mel("dv_polyMapVertexOrder " + mesh);
    state.PauseTiming();
    if (scene.mel("dv_polyMapVertexOrder -ck " + mesh) != "0") state.SkipWithError("a vertex has no partner");
    state.ResumeTiming();
}

/// Connectivity as the floor keeps it.
struct FlatMesh {
    explicit FlatMesh(const MDagPath& path) {
        const MFnMesh mesh(path);
        vertexCount = mesh.numVertices();
        MIntArray list;
        faceOffsets.reserve(static_cast<std::size_t>(mesh.numPolygons()) + 1);
        faceEdges.reserve(static_cast<std::size_t>(mesh.numFaceVertices()));
        for (MItMeshPolygon face(path); !face.isDone(); face.next()) {
            face.getEdges(list);
            for (const int edge : list)
                faceEdges.push_back(edge);
            faceOffsets.push_back(static_cast<int>(faceEdges.size()));
        }
        ends.reserve(static_cast<std::size_t>(mesh.numEdges()));
        edgeFaces.reserve(static_cast<std::size_t>(mesh.numEdges()));
        for (MItMeshEdge edge(path); !edge.isDone(); edge.next()) {
            ends.push_back({edge.index(0), edge.index(1)});
            edge.getConnectedFaces(list);
            edgeFaces.push_back({list[0], list.length() > 1 ? list[1] : -1});
        }
    }

    int vertexCount = 0;
    std::vector<int> faceOffsets{0};
    std::vector<int> faceEdges;
    std::vector<std::array<int, 2>> ends;
    std::vector<std::array<int, 2>> edgeFaces;
};

/// A face that is met on both sides, with the edge that led there.
struct Front {
    std::array<int, 2> face;
    std::array<int, 2> edge;
    std::array<int, 2> first;
};

/// Walks from one edge into a face on either side at once, and pairs what both meet.
class LockStep {
  public:
    LockStep(const FlatMesh& mesh, MIntArray& map)
        : mesh_(mesh), map_(map), isSeen_(mesh.faceOffsets.size() - 1, 0) {}

    void walk(const Front& start) {
        queue_.assign(1, start);
        isSeen_[at(start.face[0])] = 1;
        for (std::size_t k = 0; k < queue_.size(); ++k)
            visit(Front(queue_[k]));
    }

    bool isSeen(int face) const { return isSeen_[at(face)] != 0; }

  private:
    static std::size_t at(int index) { return static_cast<std::size_t>(index); }

    void visit(Front front) {
        const int size = mesh_.faceOffsets[at(front.face[0]) + 1] - mesh_.faceOffsets[at(front.face[0])];
        std::array<int, 2> position{};
        std::array<int, 2> step{};
        for (const std::size_t side : {0, 1}) {
            const int* edges = mesh_.faceEdges.data() + mesh_.faceOffsets[at(front.face[side])];
            while (edges[position[side]] != front.edge[side])
                ++position[side];
            const int next = edges[(position[side] + 1) % size];
            const int second = other(front.edge[side], front.first[side]);
            step[side] =
                mesh_.ends[at(next)][0] == second || mesh_.ends[at(next)][1] == second ? 1 : size - 1;
        }
        for (int k = 0; k < size; ++k) {
            map_[static_cast<unsigned int>(front.first[0])] = front.first[1];
            map_[static_cast<unsigned int>(front.first[1])] = front.first[0];
            cross(front);
            for (const std::size_t side : {0, 1}) {
                front.first[side] = other(front.edge[side], front.first[side]);
                position[side] = (position[side] + step[side]) % size;
                front.edge[side] =
                    mesh_.faceEdges[at(mesh_.faceOffsets[at(front.face[side])] + position[side])];
            }
        }
    }

    void cross(const Front& front) {
        Front next = front;
        for (const std::size_t side : {0, 1}) {
            const std::array<int, 2>& faces = mesh_.edgeFaces[at(front.edge[side])];
            next.face[side] = faces[0] == front.face[side] ? faces[1] : faces[0];
        }
        if (next.face[0] == -1 || next.face[1] == -1 || isSeen(next.face[0])) return;
        isSeen_[at(next.face[0])] = 1;
        queue_.push_back(next);
    }

    int other(int edge, int vertex) const {
        return mesh_.ends[at(edge)][0] == vertex ? mesh_.ends[at(edge)][1] : mesh_.ends[at(edge)][0];
    }

    const FlatMesh& mesh_;
    MIntArray& map_;
    std::vector<char> isSeen_;
    std::vector<Front> queue_;
};

/// The edge on the plane in the first row of the first sheet.
Front centreStart(const FlatMesh& mesh, const Sheet& sheet) {
    const int left = sheet.columns / 2 - 1;
    const int* edges = mesh.faceEdges.data() + mesh.faceOffsets[static_cast<std::size_t>(left)];
    // Its third edge joins it with the face to its right.
    const int first = mesh.ends[static_cast<std::size_t>(edges[2])][0];
    return {{left, left + 1}, {edges[2], edges[2]}, {first, first}};
}

/// The first edges of the first faces of a pair.
Front pairStart(const FlatMesh& mesh, int faceA, int faceB) {
    const int a = mesh.faceEdges[static_cast<std::size_t>(mesh.faceOffsets[static_cast<std::size_t>(faceA)])];
    const int b = mesh.faceEdges[static_cast<std::size_t>(mesh.faceOffsets[static_cast<std::size_t>(faceB)])];
    return {{faceA, faceB},
            {a, b},
            {mesh.ends[static_cast<std::size_t>(a)][0], mesh.ends[static_cast<std::size_t>(b)][0]}};
}

/// Gathers the connectivity once through the host's iterators, walks both halves in lock-step on flat arrays
/// and writes the map. It is told where to begin.
void mapVerticesFloor(benchmark::State& state, int size, Kind kind) {
    state.PauseTiming();
    MapMesh target(kind, size);
    state.ResumeTiming();
    const FlatMesh mesh(target.path);
    MIntArray map(static_cast<unsigned int>(mesh.vertexCount), -1);
    LockStep walk(mesh, map);
    int face = 0;
    const std::vector<Sheet> sheets = sheetsOf(kind, size);
    for (std::size_t k = 0; k < sheets.size(); ++k) {
        const int faceCount = sheets[k].faceCount();
        if (kind == Kind::kHead && k == 0) {
            walk.walk(centreStart(mesh, sheets[k]));
        } else {
            walk.walk(pairStart(mesh, face, face + faceCount));
            // The next sheet is the other half of this pair.
            ++k;
            face += faceCount;
        }
        face += faceCount;
    }
    target.map.setValue(MFnIntArrayData().create(map));
}

}  // namespace

void addVertexOrderRows() {
    const auto add = [](const char* name, Kind kind, double factor) {
        addModuleRow(
            name, [kind](benchmark::State& state, int size) { mapVertices(state, size, kind); },
            [kind](benchmark::State& state, int size) { mapVerticesFloor(state, size, kind); }, factor);
    };
    add("map vertex order", Kind::kHead, 1.5);
    add("map two shells", Kind::kTwoShells, 1.5);
    add("map a thousand shells", Kind::kThousandShells, 2.0);
}
