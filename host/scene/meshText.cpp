#include "scene/meshText.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

#include "scene/dataText.h"
#include "scene/faceWords.h"
#include "scene/numbersText.h"

namespace host::scene {

namespace {

constexpr int kTriplesPerStatement = 166;
constexpr int kFacesPerStatement = 500;

enum class Part { Points, Edges, Faces };

std::optional<Part> partOf(std::string_view root) {
    if (root == "vt" || root == "vrts") return Part::Points;
    if (root == "ed" || root == "edge") return Part::Edges;
    if (root == "fc" || root == "face") return Part::Faces;
    return std::nullopt;
}

/// Collects what the statements of one mesh say.
class MeshReader {
  public:
    explicit MeshReader(const SceneText& text) : text_(text) {}

    MeshTextResult run(const std::vector<std::uint32_t>& statements) {
        for (const std::uint32_t index : statements) {
            const auto head = readSetHead(text_.statement(index), text_.form.isDoubleByte);
            if (!head || !head->hasValues()) continue;
            const std::string error = read(*head);
            if (!error.empty()) return {nullptr, text_.place(index) + ": " + error};
            last_ = index;
        }
        if (points_.empty() && faceCounts_.empty()) return {};
        return build();
    }

  private:
    std::string read(const SetHead& head) {
        const auto range = elementRange(head.path);
        if (!range) return "'" + std::string(head.path) + "' does not say which elements it sets.";
        switch (*partOf(head.root())) {
            case Part::Points:
                return readTriples(head, *range, points_);
            case Part::Edges:
                return readTriples(head, *range, edges_);
            case Part::Faces:
                return readFaces(head, *range);
        }
        return {};
    }

    /// Three numbers for each element. Elements follow each other without gaps, so the list grows only as far
    /// as there are numbers, whatever the range says.
    template <typename Number>
    std::string readTriples(const SetHead& head, const text::IndexRange& range,
                            std::vector<Number>& triples) {
        const auto start = 3 * static_cast<std::size_t>(range.first);
        if (start > triples.size()) return "'" + std::string(head.path) + "' leaves out elements before it.";
        const auto count =
            3 * (static_cast<std::size_t>(range.last) - static_cast<std::size_t>(range.first) + 1);
        NumberScanner scanner(head.values);
        for (std::size_t k = 0; k < count; ++k) {
            const auto number = scanner.next();
            if (!number) return "'" + std::string(head.path) + "' has too few numbers, or a word among them.";
            // Only whole numbers may be out of range: a point far away becomes infinite.
            constexpr double kMost = std::numeric_limits<int>::max();
            if (std::is_integral_v<Number> && !(*number >= -kMost && *number <= kMost))
                return "'" + std::string(head.path) + "' has a number that is too large.";
            const Number value = static_cast<Number>(*number);
            if (start + k < triples.size()) {
                triples[start + k] = value;
            } else {
                triples.push_back(value);
            }
        }
        return scanner.atEnd() ? std::string() : "'" + std::string(head.path) + "' has too many numbers.";
    }

    std::string readFaces(const SetHead& head, const text::IndexRange& range) {
        const std::string name = "'" + std::string(head.path) + "' ";
        if (head.type != "polyFaces") return name + "is not of type polyFaces.";
        if (static_cast<std::size_t>(range.first) != faceCounts_.size())
            return name + "leaves out elements before it, or names some twice.";
        FaceWords words(head.values);
        while (words.next()) {
            if (words.word() == "h") return name + "has a face with a hole, which is not covered.";
            if (words.word() == "f" && !addFace(words.list()))
                return name + "has a face with an edge that does not exist.";
        }
        if (!words.fault().empty()) return name + words.fault();
        const auto wanted = static_cast<std::size_t>(range.last) + 1;
        return faceCounts_.size() == wanted ? std::string() : name + "has more or fewer faces than it says.";
    }

    /// @param loop  edges; -(e + 1) is edge e against its direction
    bool addFace(const std::vector<int>& loop) {
        for (const int entry : loop) {
            const bool isReversed = entry < 0;
            const auto edge = static_cast<std::size_t>(isReversed ? -(entry + 1) : entry);
            if (3 * edge + 2 >= edges_.size()) return false;
            faceVertices_.push_back(static_cast<int>(edges_[3 * edge + (isReversed ? 1 : 0)]));
        }
        faceCounts_.push_back(static_cast<int>(loop.size()));
        return true;
    }

    MeshTextResult build() {
        std::vector<geometry::Edge> edges(edges_.size() / 3);
        for (std::size_t k = 0; k < edges.size(); ++k)
            edges[k] = {edges_[3 * k], edges_[3 * k + 1]};
        const auto vertexCount = static_cast<int>(points_.size() / 3);
        for (const geometry::Edge& edge : edges) {
            if (edge[0] < 0 || edge[1] < 0 || edge[0] >= vertexCount || edge[1] >= vertexCount)
                return {nullptr,
                        text_.place(last_) + ": The mesh has an edge to a vertex that does not exist."};
        }
        geometry::TopologyResult topology = geometry::Topology::fromEdges(
            vertexCount, std::move(edges), faceCounts_, std::move(faceVertices_));
        if (!topology.ok()) return {nullptr, text_.place(last_) + ": " + topology.error};
        return {std::make_shared<nodes::MeshData>(
                    geometry::Mesh(std::move(topology.topology), std::move(points_))),
                {}};
    }

    const SceneText& text_;
    std::uint32_t last_ = 0;
    std::vector<float> points_;
    std::vector<int> edges_;  // two vertices and whether the edge is smooth
    std::vector<int> faceCounts_;
    std::vector<int> faceVertices_;
};

/// Calls write(first, last) for consecutive elements, at most `most` of them at a time.
template <typename Write>
void inChunks(int count, int most, Write&& write) {
    for (int first = 0; first < count; first += most)
        write(first, std::min(first + most, count) - 1);
}

std::string chunkHead(const char* name, int count, int first, int last, bool hasHint) {
    const std::string size = hasHint ? std::string() : " -s " + std::to_string(count);
    return "\tsetAttr" + size + " \"." + name + '[' + std::to_string(first) + ':' + std::to_string(last) +
           "]\"";
}

/// Chunks of numbers; a list that does not fit one statement begins with its size.
template <typename AppendElement>
std::string chunked(const char* name, int count, int most, std::string_view type, std::string_view lineEnd,
                    const AppendElement& append) {
    std::string text;
    const bool hasHint = count > most;
    if (hasHint) {
        text += "\tsetAttr -s " + std::to_string(count) + " \"." + name + "\";";
        text += lineEnd;
    }
    inChunks(count, most, [&](int first, int last) {
        text += chunkHead(name, count, first, last, hasHint);
        text += type;
        for (int k = first; k <= last; ++k)
            append(text, k);
        text += ';';
        text += lineEnd;
    });
    return text;
}

void appendFace(std::string& text, const geometry::Topology& topology, int face) {
    const geometry::IntSpan edges = topology.faceEdges(face);
    text += " f " + std::to_string(edges.size());
    for (int corner = 0; corner < edges.size(); ++corner) {
        const int edge = edges[corner];
        text += ' ' + std::to_string(topology.isEdgeReversed(face, corner) ? -(edge + 1) : edge);
    }
}

}  // namespace

bool isMeshPart(std::string_view root) {
    return partOf(root).has_value();
}

bool isMeshPoints(std::string_view root) {
    return partOf(root) == Part::Points;
}

bool isMeshFaces(std::string_view root) {
    return partOf(root) == Part::Faces;
}

std::optional<text::IndexRange> elementRange(std::string_view path) {
    const std::size_t open = path.rfind('[');
    if (open == std::string_view::npos || path.back() != ']') return std::nullopt;
    return text::readIndexRange(path.substr(open + 1, path.size() - open - 2));
}

MeshTextResult readMesh(const SceneText& text, const std::vector<std::uint32_t>& statements) {
    return MeshReader(text).run(statements);
}

std::string pointsText(const geometry::Mesh& mesh, std::string_view lineEnd) {
    const std::vector<float>& points = mesh.points();
    return chunked(
        "vt", mesh.vertexCount(), kTriplesPerStatement, " ", lineEnd, [&](std::string& text, int vertex) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                text += ' ';
                appendSingle(text, static_cast<double>(points[3 * static_cast<std::size_t>(vertex) + axis]));
            }
        });
}

std::string facesText(const geometry::Mesh& mesh, const CornerColors& corners, std::string_view lineEnd) {
    const geometry::Topology& topology = mesh.topology();
    std::string text =
        chunked("ed", mesh.edgeCount(), kTriplesPerStatement, " ", lineEnd, [&](std::string& into, int edge) {
            const geometry::Edge& ends = topology.edge(edge);
            into += ' ' + std::to_string(ends[0]) + ' ' + std::to_string(ends[1]) + " 1";
        });
    return text + chunked("fc", mesh.faceCount(), kFacesPerStatement, " -type \"polyFaces\"", lineEnd,
                          [&](std::string& into, int face) {
                              appendFace(into, topology, face);
                              for (const auto& set : corners) {
                                  const std::string word = colorsWord(topology, face, set);
                                  if (!word.empty()) into.append(" ").append(word);
                              }
                          });
}

std::optional<std::string> movedPointsText(const geometry::Mesh& now, const geometry::Mesh& then,
                                           std::string_view path) {
    const auto range = elementRange(path);
    if (partOf(path.substr(0, path.find('['))) != Part::Points || !range) return std::nullopt;
    const auto first = 3 * static_cast<std::ptrdiff_t>(range->first);
    const auto last = 3 * (static_cast<std::ptrdiff_t>(range->last) + 1);
    const std::vector<float>& points = now.points();
    if (std::equal(points.begin() + first, points.begin() + last, then.points().begin() + first))
        return std::nullopt;
    std::string text =
        "setAttr -s " + std::to_string(range->last - range->first + 1) + " \"." + std::string(path) + "\" ";
    for (std::ptrdiff_t k = first; k < last; ++k) {
        text += ' ';
        appendSingle(text, static_cast<double>(points[static_cast<std::size_t>(k)]));
    }
    return text + ';';
}

}  // namespace host::scene
