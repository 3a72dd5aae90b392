#include "weightFile.h"

#include <algorithm>
#include <cstddef>

#include "numberText.h"

namespace {

using Take = std::function<void(int vertex, double value)>;

void readJson(std::string_view text, const Take& take) {
    JsonScanner scanner(text);
    int vertex = 0;
    bool hasVertex = false;
    for (char c = scanner.next(); c != '\0'; c = scanner.next()) {
        if (c == '"') {
            hasVertex = readNumber(scanner.readQuoted(), vertex) > 0 && vertex >= 0;
        } else if (c == ':' && scanner.hasValue()) {
            const double value = scanner.readNumberValue();
            if (hasVertex) take(vertex, value);
            hasVertex = false;
        }
    }
}

void readPlain(std::string_view text, const Take& take) {
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, length);
        int vertex = 0;
        double value = 0.0;
        const std::size_t vertexLength = readNumber(line, vertex);
        if (vertexLength > 0 && vertex >= 0 && readNumber(line.substr(vertexLength), value) > 0) {
            take(vertex, value);
        }
        text.remove_prefix(std::min(length + 1, text.size()));
    }
}

}  // namespace

WeightFileWriter::WeightFileWriter(bool isJson) : isJson_(isJson) {
    if (isJson_) writer_.write("{\n");
}

void WeightFileWriter::add(int vertex, double value, bool isLast) {
    if (isJson_) {
        writer_.writeIndexValue(1, vertex, value, isLast);
        return;
    }
    char line[2 * kNumberRoom + 2];
    char* at = writeNumber(line, vertex);
    *at++ = ' ';
    at = writeNumber(at, value);
    if (!isLast) *at++ = '\n';
    writer_.write({line, static_cast<std::size_t>(at - line)});
}

const std::string& WeightFileWriter::finish() {
    if (isJson_) writer_.write("}");
    return writer_.text();
}

void readWeightFile(std::string_view text, bool isJson, const Take& take) {
    isJson ? readJson(text, take) : readPlain(text, take);
}
