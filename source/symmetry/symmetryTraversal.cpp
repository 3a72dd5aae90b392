#include "symmetry/symmetryTraversal.h"

#include <maya/MGlobal.h>

#include <cstddef>
#include <limits>
#include <unordered_map>

#include "symmetry/closestFace.h"
#include "symmetry/symmetryShells.h"

namespace {

/// The file name and line in reports of failed queries for a neighbour. Deliberate: docs/compatibility.md.
constexpr const char* kReportFile = "polyMapVertexOrder";
constexpr int kNeighbourLine = 1785;

void show(const MString& text) {
    MGlobal::displayInfo(text);
}

/// "<name>: <number> ", one field in a line of details.
void addField(MString& line, const char* name, int number) {
    line += name;
    line += ": ";
    line += number;
    line += "  ";
}

void addField(MString& line, const char* name, const PlainVector& point) {
    line += name;
    line += ": ";
    for (std::size_t axis = 0; axis < 3; ++axis) {
        line += point[axis];
        line += axis < 2 ? " " : "  ";
    }
}

void showShell(int index, const ShellScan& scan) {
    MString line;
    addField(line, "Shell", index);
    addField(line, "Start ID", scan.seed);
    addField(line, "Faces", scan.faceCount);
    addField(line, "Vertices", scan.vertexCount);
    addField(line, "Face ID", scan.markedFace);
    addField(line, "Vertex ID", scan.candidate);
    addField(line, "BBox min", scan.box.minimum);
    addField(line, "BBox max", scan.box.maximum);
    show(line);
}

void showStart(const SymmetryStart& start) {
    MString line;
    addField(line, "Face1", start.faceA);
    addField(line, "Face2", start.faceB);
    addField(line, "Vertex1", start.vertexA);
    addField(line, "Vertex2", start.vertexB);
    if (start.vertexA2 != -1) {
        addField(line, "Vertex3", start.vertexA2);
        addField(line, "Vertex4", start.vertexB2);
    }
    addField(line, "Shell Face Size", start.shellFaces);
    line += "Shell Vertex Size: ";
    line += start.shellVertices;
    show(line);
}

std::vector<ShellScan> scan(SymmetryMesh& mesh, const std::vector<SymmetryStart>& starts) {
    std::vector<int> markedFaces;
    markedFaces.reserve(starts.size());
    for (const SymmetryStart& start : starts)
        markedFaces.push_back(start.faceA);
    const ScanInput input{mesh.topology(),
                          mesh.shells(),
                          mesh.axis(),
                          [&](int vertex) {
                              const MPoint point = mesh.point(vertex);
                              return PlainVector{point.x, point.y, point.z};
                          },
                          [&](int vertex) { return mesh.isOnPlane(vertex); },
                          [&](int vertex) {
                              int neighbour = -1;
                              mesh.findCentreNeighbour(vertex, neighbour);
                              return neighbour != -1;
                          }};
    return scanShells(input, markedFaces);
}

/// Two neighbouring vertices of a face, and their mirror images in another face.
struct MirroredEdges {
    int a, b, a2, b2;
};

/// Finds an edge of a face that has a mirror image among the vertices of another face.
/// @return whether there is one. False if not more than two pairs of corners mirror each other
bool findMirroredEdge(SymmetryMesh& mesh, int face, int mirrorFace, MirroredEdges& edges) {
    std::vector<int> vertices;
    std::vector<int> images;
    for (const int a : mesh.topology().faceVertices(face)) {
        const MPoint mirrored = mesh.mirrored(mesh.point(a));
        for (const int b : mesh.topology().faceVertices(mirrorFace)) {
            if (!mesh.areEquivalent(mirrored, mesh.point(b))) continue;
            vertices.push_back(a);
            images.push_back(b);
        }
    }
    if (vertices.size() <= 2) return false;
    for (std::size_t j = 0; j < vertices.size(); ++j) {
        const MIntArray neighbours = mesh.neighbours(vertices[j]);
        for (unsigned int n = 0; n < neighbours.length(); ++n) {
            for (std::size_t k = 0; k < vertices.size(); ++k) {
                if (k == j || vertices[k] != neighbours[n]) continue;
                edges = {vertices[j], vertices[k], images[j], images[k]};
                return true;
            }
        }
    }
    return false;
}

/// Finds a face of a shell whose mirror image is a face of a shell with the same face count.
bool findPairStart(SymmetryMesh& mesh, ClosestFaceSearch& search, int shell, SymmetryStart& start) {
    const Shells& shells = mesh.shells();
    for (const int face : shells.faces[shell]) {
        const MPoint mirrored = mesh.mirrored(mesh.point(mesh.topology().faceVertices(face)[0]));
        int mirrorFace = -1;
        if (!search.find(mirrored, mirrorFace)) continue;
        if (shells.faceCountAt(mirrorFace) != shells.faceCountAt(face)) return false;
        MirroredEdges edges{};
        if (!findMirroredEdge(mesh, face, mirrorFace, edges)) continue;
        start.faceA = face;
        start.faceB = mirrorFace;
        start.vertexA = edges.a;
        start.vertexB = edges.b;
        start.vertexA2 = edges.a2;
        start.vertexB2 = edges.b2;
        return true;
    }
    return false;
}

/// One box per shell that contains the shell. It is infinite for a marked shell, which was not scanned, and
/// for a shell with a coordinate that is NaN.
std::vector<PlainBox> boxesToSearch(const std::vector<ShellScan>& scans) {
    constexpr double kFar = std::numeric_limits<double>::infinity();
    const PlainBox everything{{-kFar, -kFar, -kFar}, {kFar, kFar, kFar}};
    std::vector<PlainBox> boxes;
    boxes.reserve(scans.size());
    for (const ShellScan& scan : scans) {
        const bool isKnown = scan.markedFace == -1 && scan.box.contains(scan.box.minimum);
        boxes.push_back(isKnown ? scan.box : everything);
    }
    return boxes;
}

class StartFinder {
  public:
    StartFinder(SymmetryMesh& mesh, const SymmetryOptions& options, std::vector<SymmetryStart>& starts,
                bool& hasErrors)
        : mesh_(mesh),
          options_(options),
          starts_(starts),
          hasErrors_(hasErrors),
          scans_(scan(mesh, starts)),
          search_(mesh.path(), mesh.topology(), mesh.shells(), mesh.points(), boxesToSearch(scans_)) {}

    void find() {
        takeMarkedShells();
        checkMarkedStarts();
        const ShellCounts counts = pairCounts(scans_);
        addSingleShells(counts.singles);
        addShellPairs(counts.pairs);
        showSummary();
        if (options_.selectsComponents) selectFound();
    }

  private:
    void takeMarkedShells();
    void checkMarkedStarts();
    void addSingleShells(const std::vector<int>& counts);
    void addSingleShell(const ShellScan& scan);
    bool findCentreStart(int vertex, SymmetryStart& start);
    void addShellPairs(const std::vector<int>& counts);
    bool findGroupStart(const std::vector<int>& group, SymmetryStart& start);
    void showSummary() const;
    void selectFound() const;

    void showVerbose(const char* text) const {
        if (options_.verbose != 0) show(text);
    }
    void warnVerbose(const char* text) const {
        if (options_.verbose != 0) MGlobal::displayWarning(text);
    }
    void showVerboseCommands(const std::vector<int>& shells) const {
        if (options_.verbose == 0) return;
        std::vector<int> seeds;
        seeds.reserve(shells.size());
        for (const int shell : shells)
            seeds.push_back(scans_[static_cast<std::size_t>(shell)].seed);
        mesh_.showShellCommands(seeds);
    }

    SymmetryMesh& mesh_;
    const SymmetryOptions& options_;
    std::vector<SymmetryStart>& starts_;
    bool& hasErrors_;
    std::vector<ShellScan> scans_;
    ClosestFaceSearch search_;
    int verified_ = 0;
};

/// Fills in the counts of the user's starts. Shells are in the order of their faces, starts in the order of
/// the selection: the first start gets the counts of the first marked shell, even if it is in another shell.
void StartFinder::takeMarkedShells() {
    std::size_t next = 0;
    for (std::size_t shell = 0; shell < scans_.size(); ++shell) {
        const ShellScan& scan = scans_[shell];
        if (options_.verbose == 2) showShell(static_cast<int>(shell), scan);
        if (scan.markedFace == -1) continue;
        starts_[next].shellFaces = scan.faceCount;
        starts_[next].shellVertices = scan.vertexCount;
        ++next;
        ++verified_;
    }
}

/// Marked shells with different face counts can give a start the count of another shell. Its passes then end
/// early, or do not begin, and the remaining faces stay unmapped.
void StartFinder::checkMarkedStarts() {
    for (const SymmetryStart& start : starts_) {
        if (start.shellFaces >= mesh_.shells().faceCountAt(start.faceA)) continue;
        hasErrors_ = true;
        showVerbose("One or more selected edges mark shells of different face counts, or the same shell.");
        showVerbose("Use the following command to indicate the affected shell:");
        if (options_.verbose != 0) mesh_.showShellCommands({start.faceA});
    }
}

/// Takes the first shell of each count that has a candidate, even if it is marked or part of a pair.
void StartFinder::addSingleShells(const std::vector<int>& counts) {
    std::unordered_map<int, const ShellScan*> firstOfCount;
    for (const ShellScan& scan : scans_) {
        if (scan.candidate != -1) firstOfCount.try_emplace(scan.faceCount, &scan);
    }
    for (const int count : counts) {
        const auto found = firstOfCount.find(count);
        if (found != firstOfCount.end()) addSingleShell(*found->second);
    }
}

void StartFinder::addSingleShell(const ShellScan& scan) {
    SymmetryStart start;
    if (findCentreStart(scan.candidate, start)) {
        ++verified_;
    } else {
        start = SymmetryStart();
        hasErrors_ = true;
    }
    start.shellFaces = scan.faceCount;
    start.shellVertices = scan.vertexCount;
    starts_.push_back(start);
    if (mesh_.isOnPlane(scan.candidate)) return;
    showVerbose(
        "One or more shells have been found with no provided symmetry components and no centered vertices.");
    showVerbose("Use the following command to indicate the affected shell:");
    if (options_.verbose != 0) mesh_.showShellCommands({scan.seed});
    hasErrors_ = true;
}

/// Finds the edge from a vertex to its first neighbour on the plane, and its faces.
bool StartFinder::findCentreStart(int vertex, SymmetryStart& start) {
    const MStatus status = mesh_.findCentreNeighbour(vertex, start.vertexB);
    if (!status) {
        status.pAPIerror(kReportFile, kNeighbourLine);
        return false;
    }
    if (start.vertexB == -1) {
        warnVerbose("A second center vertex cannot be found for a shell without user defined components.");
        return false;
    }
    start.vertexA = vertex;
    const MIntArray edges = mesh_.edgesAt(vertex);
    for (unsigned int k = 0; k < edges.length(); ++k) {
        const EdgeEnds& ends = mesh_.topology().ends(edges[k]);
        if (ends[0] != start.vertexB && ends[1] != start.vertexB) continue;
        return edgeFaces(mesh_.path(), edges[k], start.faceA, start.faceB);
    }
    warnVerbose("A symmetry edge cannot be found for a shell without user defined components.");
    return false;
}

void StartFinder::addShellPairs(const std::vector<int>& counts) {
    ShellGroups groups(scans_, mesh_.axis());
    for (const int count : counts) {
        const std::vector<int> group = groups.take(count);
        SymmetryStart start;
        if (findGroupStart(group, start)) {
            verified_ += 2;
        } else {
            hasErrors_ = true;
        }
        start.shellFaces = count;
        if (!group.empty()) start.shellVertices = scans_[static_cast<std::size_t>(group.back())].vertexCount;
        starts_.push_back(start);
    }
}

bool StartFinder::findGroupStart(const std::vector<int>& group, SymmetryStart& start) {
    if (group.size() != 2) {
        showVerbose("Some paired shells have an overlap which is too large.");
        showVerbose("Use the following command/s to indicate the affected shell/s:");
        showVerboseCommands(group);
        return false;
    }
    if (findPairStart(mesh_, search_, group[0], start)) return true;
    showVerbose("Unable to find all necessary symmetry components for a shell pair.");
    showVerbose("Use the following commands to indicate the affected shells:");
    showVerboseCommands(group);
    return false;
}

void StartFinder::showSummary() const {
    if (options_.verbose != 0) {
        MString text;
        text += verified_;
        text += " of ";
        text += static_cast<int>(scans_.size());
        show(text + " shells verified.");
    }
    if (options_.verbose != 2) return;
    show("Components:  ");
    for (const SymmetryStart& start : starts_)
        showStart(start);
}

void StartFinder::selectFound() const {
    std::vector<int> faces;
    std::vector<int> vertices;
    for (const SymmetryStart& start : starts_) {
        faces.insert(faces.end(), {start.faceA, start.faceB});
        vertices.insert(vertices.end(), {start.vertexA, start.vertexB});
        if (start.vertexA2 != -1) vertices.insert(vertices.end(), {start.vertexA2, start.vertexB2});
    }
    selectComponents(mesh_.path(), faces, vertices);
}

}  // namespace

void findSymmetryStarts(SymmetryMesh& mesh, const SymmetryOptions& options,
                        std::vector<SymmetryStart>& starts, bool& hasErrors) {
    StartFinder(mesh, options, starts, hasErrors).find();
}
