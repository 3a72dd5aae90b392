#include "regions/regionFile.h"

#include <algorithm>
#include <cstddef>

#include "files/jsonText.h"
#include "files/numberText.h"
#include "files/plainText.h"

namespace {

/// Approximate size of a piece: files can have a hundred megabytes.
constexpr std::size_t kPieceSize = 1 << 16;

/// Room for an entry with tabs, quotes and line ends.
constexpr std::size_t kEntryRoom = (kRegionCount + 1) * (kNumberRoom + 4) + 16;

/// Writes a literal. The compiler knows its length.
template <std::size_t size>
char* put(char* at, const char (&text)[size]) {
    return std::copy_n(text, size - 1, at);
}

char* writeJsonEntry(char* at, int index, const RegionWeights& weights, bool isLast) {
    at = writeNumber(put(at, "\t\""), index);
    at = put(at, "\": [\n");
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        at = writeNumber(put(at, "\t\t"), weights[region]);
        at = region + 1 < kRegionCount ? put(at, ",\n") : put(at, "\n");
    }
    return isLast ? put(at, "\t]\n") : put(at, "\t],\n");
}

char* writePlainEntry(char* at, int index, const RegionWeights& weights, bool isLast) {
    at = writeNumber(at, index);
    for (const double weight : weights)
        at = writeNumber(put(at, " "), weight);
    return isLast ? at : put(at, "\n");
}

void append(const RegionWeights& weights, RegionFile& file) {
    for (std::size_t region = 0; region < kRegionCount; ++region)
        file.weights[region].push_back(weights[region]);
}

/// Reserves memory for weights, but not for more than the text can contain.
void reserve(std::size_t vertexCount, std::string_view text, RegionFile& file) {
    constexpr std::size_t kShortestEntry = 2 * (kRegionCount + 1);
    for (std::vector<double>& weights : file.weights)
        weights.reserve(std::min(vertexCount, text.size() / kShortestEntry + 1));
}

RegionFile parseJson(std::string_view text, std::size_t vertexCount) {
    RegionFile file;
    reserve(vertexCount, text, file);
    JsonScanner scanner(text);
    bool hasSettings = false;
    std::vector<double> numbers;
    for (char c = scanner.next(); c != '\0'; c = scanner.next()) {
        // Quotes are ignored: settings with a line end may leave an unpaired one.
        if (c == ':' && !hasSettings) {
            hasSettings = true;
            if (scanner.hasValue()) file.settings = scanner.readValue();
        }
        RegionWeights weights;
        if (c != '[' || !scanner.readNumberList(numbers) || numbers.size() != weights.size()) continue;
        if (!std::all_of(numbers.begin(), numbers.end(), fitsSingle)) continue;
        std::copy(numbers.begin(), numbers.end(), weights.begin());
        append(weights, file);
    }
    return file;
}

RegionFile parsePlain(std::string_view text, std::size_t vertexCount) {
    RegionFile file;
    reserve(vertexCount, text, file);
    LineScanner lines(text);
    std::string_view line;
    if (lines.next(line)) file.settings = line;
    while (lines.next(line)) {
        int index = 0;
        RegionWeights weights;
        if (readEntry(line, index, weights.data(), weights.size())) {
            append(weights, file);
        } else if (file.malformedLine == 0 && !isBlankLine(line)) {
            file.malformedLine = lines.number();
        }
    }
    return file;
}

}  // namespace

RegionFile parseRegionFile(std::string_view text, FileForm form, std::size_t vertexCount) {
    return form == FileForm::kJson ? parseJson(text, vertexCount) : parsePlain(text, vertexCount);
}

void writeRegionFile(std::string_view settings, const RegionArrays& map, FileForm form,
                     const std::function<void(std::string_view)>& write) {
    const bool isJson = form == FileForm::kJson;
    std::string piece;
    piece.reserve(settings.size() + kPieceSize + kEntryRoom);
    if (isJson) piece += "{\n\t\"settings\": \"";
    piece += settings;
    piece += isJson ? "\",\n" : "\n";
    char entry[kEntryRoom];
    for (std::size_t vertex = 0; vertex < map.vertexCount; ++vertex) {
        const auto writeEntry = isJson ? writeJsonEntry : writePlainEntry;
        const char* const end =
            writeEntry(entry, static_cast<int>(vertex), map.at(vertex), vertex + 1 == map.vertexCount);
        piece.append(entry, static_cast<std::size_t>(end - entry));
        if (piece.size() < kPieceSize) continue;
        write(piece);
        piece.clear();
    }
    if (isJson) piece += "}";
    write(piece);
}
