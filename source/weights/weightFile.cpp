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

WeightFileWriter::WeightFileWriter(FileForm form) : form_(form) {
    if (form_ == FileForm::kJson) json_.openObject();
}

void WeightFileWriter::add(int vertex, double value) {
    if (form_ == FileForm::kJson) {
        json_.writeIndexValue(vertex, value);
        return;
    }
    char line[2 * kNumberRoom + 2];
    char* at = line;
    if (!plain_.empty()) *at++ = '\n';
    at = writeNumber(at, vertex);
    *at++ = ' ';
    at = writeNumber(at, value);
    plain_.append(line, static_cast<std::size_t>(at - line));
}

const std::string& WeightFileWriter::finish() {
    if (form_ == FileForm::kPlain) return plain_;
    json_.closeObject();
    return json_.text();
}

int readWeightFile(std::string_view text, FileForm form, const Take& take) {
    if (form == FileForm::kPlain) return readPlain(text, take);
    readJson(text, take);
    return 0;
}
