#include "weights/weightFile.h"

#include <cstddef>

#include "files/numberText.h"
#include "files/plainText.h"

namespace {

using Take = std::function<void(int vertex, double value)>;

void readJson(std::string_view text, const Take& take) {
    JsonScanner scanner(text);
    int vertex = 0;
    bool hasVertex = false;
    for (char c = scanner.next(); c != '\0'; c = scanner.next()) {
        if (c == '"') {
            hasVertex = readIndex(scanner.readQuoted(), vertex) > 0 && vertex != kNoIndex;
        } else if (c == ':' && scanner.hasValue()) {
            const double value = scanner.readNumberValue();
            if (hasVertex && fitsSingle(value)) take(vertex, value);
            hasVertex = false;
        }
    }
}

int readPlain(std::string_view text, const Take& take) {
    int malformedLine = 0;
    LineScanner lines(text);
    for (std::string_view line; lines.next(line);) {
        int vertex = 0;
        double value = 0.0;
        if (readEntry(line, vertex, &value, 1)) {
            take(vertex, value);
        } else if (malformedLine == 0 && !isBlankLine(line)) {
            malformedLine = lines.number();
        }
    }
    return malformedLine;
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

int readWeightFile(std::string_view text, bool isJson, const Take& take) {
    if (!isJson) return readPlain(text, take);
    readJson(text, take);
    return 0;
}
