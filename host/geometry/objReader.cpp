#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <utility>

#include "geometry/lineScanner.h"
#include "geometry/objFile.h"
#include "geometry/textFile.h"
#include "text/numbers.h"

namespace host::geometry {

namespace {

enum class NumberState { Good, Malformed, TooLarge };

/// A coordinate from a whole word. Numbers too small for single precision become zero.
NumberState parseCoordinate(std::string_view word, float& value) {
    if (word.size() > 1 && word[0] == '+' && word[1] != '-') word.remove_prefix(1);
    const auto number = text::readNumber<float>(word);
    if (number.length == 0 || number.length != word.size()) return NumberState::Malformed;
    if (number.isTooLarge) return NumberState::TooLarge;
    value = number.value;
    return std::isfinite(value) ? NumberState::Good : NumberState::Malformed;
}

/// The part of the text below one `o` line.
struct ObjectPart {
    std::string_view name;
    int firstVertex = 0;
    std::size_t firstFace = 0;
    std::size_t firstCorner = 0;
    std::vector<ObjGroup> groups;
    std::map<std::string_view, std::size_t> groupByName;
};

class ObjParser {
  public:
    explicit ObjParser(std::string_view text) : scanner_(text) {
        points_.reserve(text.size() / 16);
        corners_.reserve(text.size() / 16);
        parts_.emplace_back();
    }

    ObjResult parse() {
        while (!scanner_.atEnd() && error_.empty()) {
            parseLine();
            scanner_.nextLine();
        }
        if (!error_.empty()) return {{}, std::move(error_)};
        endGroupRuns();
        return assemble();
    }

  private:
    /// What a corner's three numbers point to, in that order.
    enum Reference { Position, Texture, Normal, ReferenceCount };

    void fail(const std::string& text) {
        if (error_.empty()) error_ = "line " + std::to_string(scanner_.line()) + ": " + text;
    }

    void parseLine() {
        const std::string_view keyword = scanner_.word();
        if (keyword.empty()) return;
        if (keyword == "v") return parseVertex();
        if (keyword == "f" || keyword == "fo") return parseFace();
        if (keyword == "vt") return countReference(Texture);
        if (keyword == "vn") return countReference(Normal);
        if (keyword == "g") return parseGroup();
        if (keyword == "o") return beginObject(scanner_.rest());
        static constexpr std::array<std::string_view, 15> kPassedOver{
            "s",   "usemtl", "mtllib",   "usemap",   "maplib", "l",          "p",        "vp",
            "lod", "bevel",  "c_interp", "d_interp", "mg",     "shadow_obj", "trace_obj"};
        if (std::find(kPassedOver.begin(), kPassedOver.end(), keyword) == kPassedOver.end()) {
            fail("'" + std::string(keyword.substr(0, 40)) + "' is not supported");
        }
    }

    void parseVertex() {
        if (counts_[Position] >= kMostComponents) return fail("there are too many vertices");
        for (int axis = 0; axis < 3; ++axis) {
            const std::string_view word = scanner_.word();
            if (word.empty()) return fail("a vertex needs three numbers");
            float value = 0.0F;
            const NumberState state = parseCoordinate(word, value);
            if (state != NumberState::Good) {
                const char* what = state == NumberState::TooLarge ? "' is too large" : "' is not a number";
                return fail("'" + std::string(word.substr(0, 40)) + what);
            }
            points_.push_back(value);
        }
        ++counts_[Position];
    }

    void countReference(Reference kind) {
        if (counts_[kind] >= kMostComponents)
            return fail("there are too many texture coordinates or normals");
        ++counts_[kind];
    }

    void parseFace() {
        const std::size_t first = corners_.size();
        for (std::string_view word = scanner_.word(); !word.empty(); word = scanner_.word()) {
            if (!parseCorner(word)) return;
        }
        const std::size_t count = corners_.size() - first;
        if (corners_.size() > static_cast<std::size_t>(kMostComponents))
            return fail("there are too many face corners");
        if (count < 3) return fail("a face needs three corners, but has " + std::to_string(count));
        int previous = corners_.back();
        for (std::size_t at = first; at < corners_.size(); ++at) {
            if (corners_[at] == previous) {
                return fail("face has vertex " + std::to_string(previous + 1) +
                            " at two neighbouring corners");
            }
            previous = corners_[at];
        }
        faceCounts_.push_back(static_cast<int>(count));
    }

    /// A corner is v, v/t, v//n or v/t/n.
    bool parseCorner(std::string_view word) {
        const char* at = word.data();
        const char* end = at + word.size();
        for (int kind = Position; kind < ReferenceCount; ++kind) {
            if (kind == Texture && at != end && *at == '/') {
                ++at;
                continue;
            }
            const auto number = text::readNumber<std::int64_t>({at, static_cast<std::size_t>(end - at)});
            if (number.length == 0) return malformedCorner(word);
            if (!checkReference(static_cast<Reference>(kind), number.value, {at, number.length}))
                return false;
            at += number.length;
            if (at == end) return true;
            if (*at != '/' || kind == Normal) return malformedCorner(word);
            ++at;
        }
        return malformedCorner(word);
    }

    bool malformedCorner(std::string_view word) {
        fail("'" + std::string(word.substr(0, 40)) + "' is not a face corner");
        return false;
    }

    /// Adds a position to the corners. Numbers count from 1. Negative ones count back from the last one
    /// defined.
    bool checkReference(Reference kind, std::int64_t number, std::string_view written) {
        static constexpr std::array<const char*, ReferenceCount> kNames{"vertex", "texture coordinate",
                                                                        "normal"};
        const std::int64_t count = counts_[kind];
        const std::int64_t index = number < 0 ? count + number : number - 1;
        if (number == 0 || index < 0 || index >= count) {
            fail("face refers to " + std::string(kNames[kind]) + " " + std::string(written.substr(0, 40)) +
                 ", but only " + std::to_string(count) + " are defined");
            return false;
        }
        if (kind == Position) corners_.push_back(static_cast<int>(index));
        return true;
    }

    void beginObject(std::string_view name) {
        endGroupRuns();
        ObjectPart& part = parts_.emplace_back();
        part.name = name;
        part.firstVertex = counts_[Position];
        part.firstFace = faceCounts_.size();
        part.firstCorner = corners_.size();
        groupStart_ = faceCounts_.size();
        openGroups_.clear();
        hasObjectLines_ = true;
    }

    void parseGroup() {
        endGroupRuns();
        openGroups_.clear();
        ObjectPart& part = parts_.back();
        for (std::string_view name = scanner_.word(); !name.empty(); name = scanner_.word()) {
            if (name == "default") continue;
            const auto [at, isNew] = part.groupByName.try_emplace(name, part.groups.size());
            if (isNew) part.groups.push_back({std::string(name), {}});
            openGroups_.push_back(at->second);
        }
    }

    /// Adds the faces since the last group line to the groups of that line.
    void endGroupRuns() {
        const std::size_t end = faceCounts_.size();
        if (end > groupStart_) {
            ObjectPart& part = parts_.back();
            const int first = static_cast<int>(groupStart_ - part.firstFace);
            const int count = static_cast<int>(end - groupStart_);
            for (std::size_t group : openGroups_)
                addRun(part.groups[group].runs, {first, count});
        }
        groupStart_ = end;
    }

    static void addRun(std::vector<FaceRun>& runs, FaceRun run) {
        const int end = runs.empty() ? -1 : runs.back().first + runs.back().count;
        if (end > run.first) return;  // the same name twice in one line
        if (end == run.first) {
            runs.back().count += run.count;
        } else {
            runs.push_back(run);
        }
    }

    ObjResult assemble() {
        ObjResult result;
        if (!hasObjectLines_) {
            addObject(result, parts_[0], std::move(points_), std::move(faceCounts_), std::move(corners_));
            return result;
        }
        isUsed_.assign(counts_[Position], false);
        for (int vertex : corners_)
            isUsed_[vertex] = true;
        lastPart_.assign(counts_[Position], -1);
        numberInPart_.assign(counts_[Position], 0);
        for (std::size_t i = 0; i < parts_.size() && result.ok(); ++i)
            addPart(result, static_cast<int>(i));
        return result;
    }

    /// Adds the object of one `o` line, with a vertex list of its own.
    void addPart(ObjResult& result, int number) {
        ObjectPart& part = parts_[number];
        const bool isLast = number + 1 == static_cast<int>(parts_.size());
        const std::size_t faceEnd = isLast ? faceCounts_.size() : parts_[number + 1].firstFace;
        const std::size_t cornerEnd = isLast ? corners_.size() : parts_[number + 1].firstCorner;
        const int vertexEnd = isLast ? counts_[Position] : parts_[number + 1].firstVertex;

        std::vector<int> corners(corners_.data() + part.firstCorner, corners_.data() + cornerEnd);
        std::vector<int> vertices;
        for (int vertex : corners) {
            if (lastPart_[vertex] == number) continue;
            lastPart_[vertex] = number;
            vertices.push_back(vertex);
        }
        for (int vertex = part.firstVertex; vertex < vertexEnd; ++vertex) {
            if (!isUsed_[vertex]) vertices.push_back(vertex);
        }
        std::sort(vertices.begin(), vertices.end());

        std::vector<float> points;
        points.reserve(3 * vertices.size());
        for (std::size_t at = 0; at < vertices.size(); ++at) {
            numberInPart_[vertices[at]] = static_cast<int>(at);
            const float* point = points_.data() + 3 * static_cast<std::size_t>(vertices[at]);
            points.insert(points.end(), point, point + 3);
        }
        for (int& vertex : corners)
            vertex = numberInPart_[vertex];
        std::vector<int> counts(faceCounts_.data() + part.firstFace, faceCounts_.data() + faceEnd);
        addObject(result, part, std::move(points), std::move(counts), std::move(corners));
    }

    static void addObject(ObjResult& result, ObjectPart& part, std::vector<float> points,
                          std::vector<int> faceCounts, std::vector<int> corners) {
        if (points.empty()) return;
        MeshResult made = createMesh(std::move(points), faceCounts, std::move(corners));
        if (!made.ok()) {
            result.error = std::move(made.error);
            return;
        }
        auto& groups = part.groups;
        const auto isEmpty = [](const ObjGroup& group) { return group.runs.empty(); };
        groups.erase(std::remove_if(groups.begin(), groups.end(), isEmpty), groups.end());
        result.objects.push_back({std::string(part.name), std::move(made.mesh), std::move(groups)});
    }

    LineScanner scanner_;
    std::string error_;
    std::vector<float> points_;
    std::array<int, ReferenceCount> counts_{};
    std::vector<int> faceCounts_;
    std::vector<int> corners_;
    std::vector<ObjectPart> parts_;
    std::vector<std::size_t> openGroups_;  ///< of the last part
    std::size_t groupStart_ = 0;           ///< first face after the last group line
    bool hasObjectLines_ = false;
    std::vector<bool> isUsed_;       ///< per vertex: whether a face uses it
    std::vector<int> lastPart_;      ///< per vertex: the part that used it last
    std::vector<int> numberInPart_;  ///< per vertex, in that part
};

}  // namespace

ObjResult parseObj(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) text.remove_prefix(kByteOrderMark.size());
    return ObjParser(text).parse();
}

ObjResult readObjFile(const std::string& path) {
    const FileText file = readTextFile(path);
    if (!file.ok()) return {{}, file.error};
    ObjResult result = parseObj(file.text);
    if (!result.ok()) result.error = path + ", " + result.error;
    return result;
}

std::vector<int> ObjGroup::faces() const {
    std::vector<int> result;
    for (const FaceRun& run : runs) {
        for (int i = 0; i < run.count; ++i)
            result.push_back(run.first + i);
    }
    return result;
}

}  // namespace host::geometry
