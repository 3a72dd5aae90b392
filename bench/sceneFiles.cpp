#include "sceneFiles.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string_view>

namespace {

constexpr int kTargets = 12;
constexpr int kMovedPart = 24;  // a target moves one vertex of so many
// Elements in one statement, as the host divides lists.
constexpr int kTriples = 166;
constexpr int kUvs = 250;
constexpr int kFaces = 500;
constexpr int kWeights = 500;

/// Text on its way into a file.
class SceneWriter {
  public:
    explicit SceneWriter(const std::filesystem::path& path) : stream_(path, std::ios::binary) {
        text_.reserve(kBlock + kBlock / 4);
    }

    SceneWriter& operator<<(std::string_view text) {
        if (text_.size() > kBlock) flush();
        text_ += text;
        const std::size_t line = text.rfind('\n');
        column_ = line == std::string_view::npos ? column_ + text.size() : text.size() - line - 1;
        return *this;
    }
    SceneWriter& operator<<(int number) { return put(number); }

    /// A number of a list, with a blank before it and in the fewest digits. Long lines are broken.
    void add(int number) { inList(number); }
    void add(float number) { inList(number); }
    /// The same with all digits of a double.
    void addDouble(double number) { inList(number, std::chars_format::general, 17); }

    /// @return whether everything is in the file
    bool finish() {
        flush();
        stream_.close();
        return static_cast<bool>(stream_);
    }
    std::uint64_t bytes() const { return bytes_; }
    std::uint64_t statements() const { return statements_; }
    std::uint64_t numbers() const { return numbers_; }

  private:
    static constexpr std::size_t kBlock = std::size_t{1} << 20;
    static constexpr std::size_t kLineLength = 80;

    template <typename... Number>
    SceneWriter& put(Number... number) {
        std::array<char, 64> digits;
        const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number...).ptr;
        return *this << std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
    }
    template <typename... Number>
    void inList(Number... number) {
        ++numbers_;
        *this << (column_ < kLineLength ? " " : "\n\t\t ");
        put(number...);
    }
    void flush() {
        stream_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
        bytes_ += text_.size();
        // No string of these files holds a semicolon.
        statements_ += static_cast<std::uint64_t>(std::count(text_.begin(), text_.end(), ';'));
        text_.clear();
    }

    std::ofstream stream_;
    std::string text_;
    std::size_t column_ = 0;
    std::uint64_t bytes_ = 0;
    std::uint64_t statements_ = 0;
    std::uint64_t numbers_ = 0;
};

/// Writes the statements of a list in chunks, after one that says how long it is.
/// @param path  of the list: ".vt"
/// @param type  between name and values
/// @param each  writes an element
template <typename Each>
void writeList(SceneWriter& out, std::string_view path, int count, int most, std::string_view type,
               const Each& each) {
    out << "\tsetAttr -s " << count << " \"" << path << "\";\n";
    for (int first = 0; first < count; first += most) {
        const int last = std::min(first + most, count) - 1;
        out << "\tsetAttr \"" << path << "[" << first << ":" << last << "]\"" << type;
        for (int k = first; k <= last; ++k)
            each(k);
        out << ";\n";
    }
}

/// A curved sheet of quads.
class Face {
  public:
    explicit Face(int vertices)
        : columns_(static_cast<int>(std::sqrt(vertices))), rows_(vertices / columns_) {}

    int vertexCount() const { return columns_ * rows_; }

    void writeUvs(SceneWriter& out) const {
        out << "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n";
        writeList(out, ".uvst[0].uvsp", vertexCount(), kUvs, " -type \"float2\"", [&](int vertex) {
            out.add(across(vertex));
            out.add(along(vertex));
        });
    }

    void writeMesh(SceneWriter& out) const {
        writeList(out, ".vt", vertexCount(), kTriples, " ", [&](int vertex) {
            const float x = across(vertex);
            const float y = along(vertex);
            out.add(20.0F * (x - 0.5F));
            out.add(30.0F * (y - 0.5F));
            out.add(8.0F * std::sin(3.0F * x) * std::sin(3.0F * y));
        });
        const int horizontal = rows_ * (columns_ - 1);
        writeList(out, ".ed", horizontal + (rows_ - 1) * columns_, kTriples, " ", [&](int edge) {
            const int vertex = edge < horizontal ? edge + edge / (columns_ - 1) : edge - horizontal;
            out.add(vertex);
            out.add(vertex + (edge < horizontal ? 1 : columns_));
            out.add(1);
        });
        writeList(out, ".fc", (rows_ - 1) * (columns_ - 1), kFaces, " -type \"polyFaces\" ",
                  [&](int face) { writeFace(out, face); });
    }

  private:
    // No number is a round one, as in sculpted shapes.
    float across(int vertex) const {
        const int column = vertex % columns_;
        return (static_cast<float>(column) + 0.3F * std::sin(static_cast<float>(vertex))) /
               static_cast<float>(columns_);
    }
    float along(int vertex) const {
        const int row = vertex / columns_;
        return (static_cast<float>(row) + 0.3F * std::cos(static_cast<float>(vertex))) /
               static_cast<float>(rows_);
    }

    /// The edges around a quad, against their direction on the way back, and the UVs of its corners.
    void writeFace(SceneWriter& out, int face) const {
        const int horizontal = rows_ * (columns_ - 1);
        const int vertex = face + face / (columns_ - 1);
        out << "\n\t\tf";
        for (const int entry :
             {4, face, horizontal + vertex + 1, -(face + columns_ - 1) - 1, -(horizontal + vertex) - 1})
            out.add(entry);
        out << "\n\t\tmu";
        for (const int entry : {0, 4, vertex, vertex + 1, vertex + columns_ + 1, vertex + columns_})
            out.add(entry);
    }

    int columns_;
    int rows_;
};

/// A target that moves a part of the face, with a gap after every dozen vertices.
void writeTarget(SceneWriter& out, int target, int vertices) {
    constexpr int kRun = 12;
    constexpr int kStep = kRun + 2;
    const int runs = std::max(vertices / kMovedPart / kRun, 1);
    const int start = (vertices - runs * kStep) / kTargets * target;
    const auto head = [&](std::string_view part) -> SceneWriter& {
        return out << "\tsetAttr \".it[0].itg[" << target << "].iti[6000]." << part;
    };
    head("ipt\" -type \"pointArray\"");
    out.add(runs * kRun);
    for (int k = 0; k < runs * kRun; ++k) {
        const auto at = static_cast<float>(k + target);
        for (const float part : {std::sin(at), 0.01F * std::cos(at), 1e-5F * std::sin(3.0F * at)})
            out.addDouble(part);
        out.add(1);
    }
    out << " ;\n";
    head("ict\" -type \"componentList\" ") << runs;
    for (int run = 0; run < runs; ++run) {
        const int first = start + run * kStep;
        out << " \"vtx[" << first << ":" << first + kRun - 1 << "]\"";
    }
    out << ";\n";
}

void writeTargets(SceneWriter& out, int vertices) {
    out << "createNode blendShape -n \"faceTargets\";\n"
           "\trename -uid \"00000000-0000-0000-0000-000000000004\";\n"
           "\taddAttr -ci true -h true -sn \"aal\" -ln \"attributeAliasList\" -dt \"attributeAlias\";\n"
           "\tsetAttr -s "
        << kTargets << " \".w[0:" << kTargets - 1 << "]\" ";
    for (int target = 0; target < kTargets; ++target)
        out.add(0.25F);
    out << ";\n\tsetAttr -s " << kTargets << " \".it[0].itg\";\n";
    for (int target = 0; target < kTargets; ++target)
        writeTarget(out, target, vertices);
    // A mask as it is painted: full in places, with a soft border elsewhere.
    writeList(out, ".it[0].itg[0].tw", vertices, kWeights, " ", [&](int vertex) {
        out.add(vertex % 1000 < 800 ? 1.0F : static_cast<float>(1000 - vertex % 1000) / 201.0F);
    });
    out << "\tsetAttr \".aal\" -type \"attributeAlias\" {";
    for (int target = 0; target < kTargets; ++target)
        out << (target > 0 ? ",\"target" : "\"target") << target << "\",\"weight[" << target << "]\"";
    out << "} ;\n";
}

constexpr std::string_view kBegin = R"(//Maya ASCII 2025 scene
//Name: face.ma
//Codeset: UTF-8
requires maya "2025";
currentUnit -l centimeter -a degree -t film;
fileInfo "application" "maya";
fileInfo "product" "Maya 2025";
fileInfo "version" "2025";
createNode transform -n "face";
	rename -uid "00000000-0000-0000-0000-000000000001";
createNode mesh -n "faceShape" -p "face";
	rename -uid "00000000-0000-0000-0000-000000000002";
	setAttr -k off ".v";
	setAttr ".vir" yes;
	setAttr ".vif" yes;
	setAttr ".uvst[0].uvsn" -type "string" "map1";
	setAttr ".cuvs" -type "string" "map1";
createNode mesh -n "faceShapeOrig" -p "face";
	rename -uid "00000000-0000-0000-0000-000000000003";
	setAttr -k off ".v";
	setAttr ".io" yes;
)";

constexpr std::string_view kEnd = R"(select -ne :time1;
	setAttr ".o" 1;
select -ne :initialShadingGroup;
	setAttr ".ro" yes;
connectAttr "faceTargets.og[0]" "faceShape.i";
connectAttr "faceShapeOrig.w" "faceTargets.ip[0].ig";
connectAttr "faceShapeOrig.o" "faceTargets.orggeom[0]";
connectAttr "faceShape.iog" ":initialShadingGroup.dsm" -na;
// End of face.ma
)";

}  // namespace

SceneFile::SceneFile(int vertices) {
    const Face face(vertices);
    SceneWriter out(file_.path());
    out << kBegin;
    face.writeUvs(out);
    const std::uint64_t uvs = out.numbers();
    face.writeMesh(out);
    writeTargets(out, face.vertexCount());
    out << kEnd;
    if (!out.finish()) std::exit(1);
    bytes_ = out.bytes();
    statements_ = out.statements();
    numbers_ = out.numbers() - uvs;
}

const SceneFile& SceneFile::of(int vertices) {
    static std::map<int, SceneFile> files;
    return files.try_emplace(vertices, vertices).first->second;
}
