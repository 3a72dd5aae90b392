#include "files/jsonText.h"

#include <algorithm>

#include "files/numberText.h"

namespace {

/// Line ends are not included: to some scanners they end a value.
bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\f';
}

bool isBlankOrLineEnd(char c) {
    return c == '\n' || isBlank(c);
}

/// Room for the longest line with an index and a point, without the start of the line.
constexpr std::size_t kPointLineRoom = 4 * kNumberRoom + sizeof("\"\": [, , ]");

char* put(char* at, std::string_view text) {
    return std::copy(text.begin(), text.end(), at);
}

}  // namespace

void JsonWriter::startLine() {
    text_.append(lineStart_, isFirst_ ? 1 : 0);
    isFirst_ = false;
}

void JsonWriter::openObject() {
    text_ += '{';
    lineStart_ += '\t';
    isFirst_ = true;
}

void JsonWriter::openObject(std::string_view key) {
    startLine();
    text_.append("\"").append(key).append("\": ");
    openObject();
}

void JsonWriter::openObject(int index) {
    char key[kNumberRoom];
    openObject(std::string_view(key, static_cast<std::size_t>(writeNumber(key, index) - key)));
}

void JsonWriter::closeObject() {
    lineStart_.pop_back();
    text_.append(lineStart_, 1).append("}");
    isFirst_ = false;
}

void JsonWriter::writeStringMember(std::string&& key, std::string&& value) {
    startLine();
    text_.append("\"").append(key).append("\": \"").append(value).append("\"");
    key.clear();
    value.clear();
}

void JsonWriter::writeIndexValue(int index, double value) {
    startLine();
    char line[kPointLineRoom];
    char* at = put(line, "\"");
    at = put(writeNumber(at, index), "\": ");
    at = writeNumber(at, value);
    text_.append(line, static_cast<std::size_t>(at - line));
}

void JsonWriter::writeIndexPoint(int index, const double (&point)[3]) {
    startLine();
    // One append per line: files have millions of lines.
    char line[kPointLineRoom];
    char* at = put(line, "\"");
    at = put(writeNumber(at, index), "\": [");
    at = put(writeNumber(at, point[0]), ", ");
    at = put(writeNumber(at, point[1]), ", ");
    at = put(writeNumber(at, point[2]), "]");
    text_.append(line, static_cast<std::size_t>(at - line));
}

char JsonScanner::next() {
    while (at_ != end_) {
        const char c = *at_++;
        if (c == '{' || c == '}' || c == '[' || c == ':' || c == '"') return c;
    }
    return '\0';
}

std::string_view JsonScanner::readQuoted() {
    const char* const begin = at_;
    at_ = std::find(at_, end_, '"');
    const std::string_view text(begin, static_cast<std::size_t>(at_ - begin));
    if (at_ != end_) ++at_;
    return text;
}

bool JsonScanner::hasValue() {
    at_ = std::find_if_not(at_, end_, isBlank);
    // An object or a list may begin on a later line.
    const char* const start = std::find_if_not(at_, end_, isBlankOrLineEnd);
    if (start != end_ && (*start == '{' || *start == '[')) at_ = start;
    return at_ != end_ && std::string_view("{}[]").find(*at_) == std::string_view::npos;
}

std::string JsonScanner::readValue() {
    const char* const end = std::find(at_, end_, '\n');
    std::string value;
    bool isQuoted = false;
    for (; at_ != end; ++at_) {
        const char c = *at_;
        if (c == '"' && isQuoted) break;
        if (c == '"') {
            isQuoted = true;
        } else if (!isBlank(c)) {
            value += c;
        }
    }
    at_ = end;
    return value;
}

double JsonScanner::readNumberValue() {
    std::string value;
    for (; at_ != end_ && *at_ != ',' && *at_ != '\n'; ++at_) {
        if (!isBlank(*at_)) value += *at_;
    }
    double number = 0.0;
    readNumber(value, number);
    return number;
}

bool JsonScanner::readNumberList(std::vector<double>& numbers) {
    numbers.clear();
    while (at_ != end_) {
        numbers.push_back(readListNumber());
        if (at_ != end_ && *at_++ == ']') return true;
    }
    return false;
}

/// Reads one number of a list. Stops at the comma or bracket after it.
double JsonScanner::readListNumber() {
    const char* const begin = at_;
    double number = 0.0;
    at_ += readNumber({at_, static_cast<std::size_t>(end_ - at_)}, number);
    while (at_ != end_ && isBlankOrLineEnd(*at_))
        ++at_;
    if (at_ == end_ || *at_ == ',' || *at_ == ']') return number;
    // Other text follows: ignore blanks inside the number.
    std::string text;
    for (at_ = begin; at_ != end_ && *at_ != ',' && *at_ != ']'; ++at_) {
        if (!isBlankOrLineEnd(*at_)) text += *at_;
    }
    readNumber(text, number);
    return number;
}
