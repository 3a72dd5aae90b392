#include "scene/meshColorText.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>

#include "scene/dataText.h"
#include "scene/faceWords.h"
#include "scene/meshText.h"
#include "scene/numbersText.h"

namespace host::scene {

namespace {

using nodes::Color;

constexpr std::size_t kColorsPerStatement = 125;

/// A colour as a key: parts that are no numbers are equal to themselves.
std::array<std::uint32_t, 4> bitsOf(const Color& color) {
    std::array<std::uint32_t, 4> bits{};
    std::memcpy(bits.data(), color.data(), sizeof bits);
    return bits;
}

bool isSame(const Color& a, const Color& b) {
    return bitsOf(a) == bitsOf(b);
}

/// Puts the colours of a statement where they belong. The list grows only as far as there are numbers, and by
/// no gap that is longer than the statement.
void readColors(const SetHead& head, std::vector<Color>& colors) {
    const auto range = elementRange(head.path);
    if (!range) return;
    NumberScanner scanner(head.values);
    const auto first = static_cast<std::size_t>(range->first);
    const auto last = static_cast<std::size_t>(range->last);
    if (first > colors.size() && first - colors.size() <= head.values.size())
        colors.resize(first, nodes::kUnsetColor);
    for (std::size_t at = first; at <= last && at <= colors.size(); ++at) {
        Color color{};
        for (float& part : color) {
            const auto number = scanner.next();
            if (!number) return;
            part = static_cast<float>(*number);
        }
        if (at == colors.size()) colors.emplace_back();
        colors[at] = color;
    }
}

/// Corners of all sets of a mesh together, beyond the first set: a small file can name many sets, each of
/// which would need room for all corners. Sets beyond that have no colours here.
constexpr std::size_t kMostCorners = std::size_t{1} << 26;

/// Takes over the word of a face for the colours of its corners. Indices without a colour are none.
/// @param room  corners for which there is room
void setCorners(std::map<int, ColorPalette>& palettes, const FaceWords& words,
                const geometry::Topology& topology, int face, std::size_t& room) {
    const auto found = palettes.find(words.set());
    if (found == palettes.end() || face >= topology.faceCount()) return;
    if (words.list().size() != static_cast<std::size_t>(topology.faceSize(face))) return;
    ColorPalette& palette = found->second;
    const auto corners = static_cast<std::size_t>(topology.cornerCount());
    if (palette.corners.empty()) {
        if (corners > room) return;
        room -= corners;
        palette.corners.assign(corners, -1);
    }
    const auto count = static_cast<int>(palette.colors.size());
    std::transform(words.list().begin(), words.list().end(),
                   palette.corners.begin() + topology.faceOffsets()[static_cast<std::size_t>(face)],
                   [&](int index) { return index >= 0 && index < count ? index : -1; });
}

}  // namespace

bool isPalette(std::string_view path) {
    const std::string_view root = path.substr(0, path.find_first_of(".["));
    const std::size_t dot = path.find('.');
    if (dot == std::string_view::npos || (root != "clst" && root != "colorSet")) return false;
    const std::string_view child = path.substr(dot + 1, path.find('[', dot) - dot - 1);
    return child == "clsp" || child == "colorSetPoints";
}

int paletteSet(std::string_view path) {
    const auto range = elementRange(path.substr(0, path.find('.')));
    return range ? range->first : -1;
}

std::map<int, ColorPalette> readPalettes(const SceneText& text, const std::vector<std::uint32_t>& colors,
                                         const std::vector<std::uint32_t>& faces,
                                         const geometry::Topology& topology) {
    std::map<int, ColorPalette> palettes;
    for (const std::uint32_t index : colors) {
        const auto head = readSetHead(text.statement(index), text.form.isDoubleByte);
        if (!isPalette(head->path)) continue;
        if (const int set = paletteSet(head->path); set >= 0) readColors(*head, palettes[set].colors);
    }
    if (palettes.empty()) return palettes;
    std::size_t room = static_cast<std::size_t>(topology.cornerCount()) + kMostCorners;
    int face = -1;
    for (const std::uint32_t index : faces) {
        const auto head = readSetHead(text.statement(index), text.form.isDoubleByte);
        if (!isMeshFaces(head->root())) continue;
        FaceWords words(head->values);
        while (words.next()) {
            if (words.word() == "f") ++face;
            if (words.word() == "mc" && face >= 0) setCorners(palettes, words, topology, face, room);
        }
    }
    return palettes;
}

std::vector<Color> vertexColors(const ColorPalette& palette, const geometry::Topology& topology) {
    std::vector<Color> result(static_cast<std::size_t>(topology.vertexCount()), nodes::kUnsetColor);
    std::vector<std::array<double, 4>> sums(result.size());
    std::vector<int> counts(result.size(), 0);
    for (std::size_t corner = 0; corner < palette.corners.size(); ++corner) {
        if (palette.corners[corner] < 0) continue;
        const Color& color = palette.colors[static_cast<std::size_t>(palette.corners[corner])];
        const auto vertex = static_cast<std::size_t>(topology.faceVertices()[corner]);
        for (std::size_t part = 0; part < color.size(); ++part)
            sums[vertex][part] += static_cast<double>(color[part]);
        ++counts[vertex];
    }
    for (std::size_t vertex = 0; vertex < result.size(); ++vertex) {
        if (counts[vertex] == 0) continue;
        for (std::size_t part = 0; part < result[vertex].size(); ++part)
            result[vertex][part] = static_cast<float>(sums[vertex][part] / counts[vertex]);
    }
    return result;
}

bool areSame(const std::vector<Color>& a, const std::vector<Color>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame);
}

void updatePalette(ColorPalette& palette, const std::vector<Color>& before, const std::vector<Color>& now,
                   const geometry::Topology& topology) {
    const auto isUnset = [](const Color& color) { return isSame(color, nodes::kUnsetColor); };
    palette.corners.resize(static_cast<std::size_t>(topology.cornerCount()), -1);
    if (std::all_of(now.begin(), now.end(), isUnset)) palette.colors.clear();
    std::map<std::array<std::uint32_t, 4>, int> added;
    for (std::size_t corner = 0; corner < palette.corners.size(); ++corner) {
        const auto vertex = static_cast<std::size_t>(topology.faceVertices()[corner]);
        const Color& color = now[vertex];
        if (isSame(before[vertex], color)) continue;
        if (isUnset(color)) {
            palette.corners[corner] = -1;
            continue;
        }
        const auto [entry, isNew] = added.try_emplace(bitsOf(color), static_cast<int>(palette.colors.size()));
        if (isNew) palette.colors.push_back(color);
        palette.corners[corner] = entry->second;
    }
}

std::string paletteText(const std::vector<Color>& colors, std::size_t first, int set,
                        std::string_view lineEnd) {
    const std::string name = ".clst[" + std::to_string(set) + "].clsp";
    std::string text;
    const bool isWhole = first == 0 && colors.size() <= kColorsPerStatement;
    if (!isWhole && first < colors.size())
        text.append("\tsetAttr -s ").append(std::to_string(colors.size())).append(" \"").append(name);
    if (!text.empty()) text.append("\";").append(lineEnd);
    for (std::size_t at = first; at < colors.size(); at += kColorsPerStatement) {
        const std::size_t end = std::min(at + kColorsPerStatement, colors.size());
        text += "\tsetAttr ";
        if (isWhole) text.append("-s ").append(std::to_string(end)).append(" ");
        text.append("\"").append(name).append("[").append(std::to_string(at));
        if (end - at > 1) text.append(":").append(std::to_string(end - 1));
        text += "]\" ";
        for (std::size_t k = at; k < end; ++k) {
            for (const float part : colors[k]) {
                text += ' ';
                appendSingle(text, static_cast<double>(part));
            }
        }
        text.append(";").append(lineEnd);
    }
    return text;
}

std::string recolored(std::string_view statement, const SetHead& head, const geometry::Topology& topology,
                      const CornerColors& corners, bool keepsOther, std::string_view lineEnd) {
    const auto range = elementRange(head.path);
    int face = (range ? range->first : 0) - 1;
    bool hasFace = false;
    CornerColors left;  // sets that the face has no word for yet
    std::string text;
    const auto endFace = [&] {
        if (!hasFace || face >= topology.faceCount()) return;
        for (const auto& set : left) {
            const std::string word = colorsWord(topology, face, set);
            if (!word.empty()) text.append(lineEnd).append("\t\t").append(word);
        }
    };
    // The head stays, whatever becomes of the first word.
    const char* copied = head.values.data();
    text.append(statement.data(), copied);
    FaceWords words(head.values);
    while (words.next()) {
        const std::string_view old = words.text();
        if (words.word() == "f") {
            endFace();
            left = corners;
            hasFace = true;
            ++face;
        }
        const auto set = corners.find(words.set());
        const bool isNew = words.word() == "mc" && set != corners.end() && face < topology.faceCount();
        const bool goes = words.word() == "mc" && (isNew || !keepsOther);
        const std::string word = isNew && hasFace ? colorsWord(topology, face, *set) : std::string();
        if (!goes || !word.empty()) text.append(copied, old.data()).append(goes ? word : old);
        if (isNew) left.erase(words.set());
        copied = old.data() + old.size();
    }
    endFace();
    return text.append(copied, statement.data() + statement.size());
}

}  // namespace host::scene
