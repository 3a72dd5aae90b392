#include "files/plainText.h"

#include <algorithm>

#include "files/numberText.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r\f\v";

bool beginsWithBlank(std::string_view text) {
    return !text.empty() && kBlanks.find(text.front()) != std::string_view::npos;
}

}  // namespace

LineScanner::LineScanner(std::string_view text) : rest_(text) {
    while (rest_.substr(0, kByteOrderMark.size()) == kByteOrderMark)
        rest_.remove_prefix(kByteOrderMark.size());
}

bool LineScanner::next(std::string_view& line) {
    if (rest_.empty()) return false;
    const std::size_t length = std::min(rest_.find('\n'), rest_.size());
    line = rest_.substr(0, length);
    rest_.remove_prefix(std::min(length + 1, rest_.size()));
    while (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    ++number_;
    return true;
}

bool isBlankLine(std::string_view line) {
    return line.find_first_not_of(kBlanks) == std::string_view::npos;
}

bool readEntry(std::string_view line, int& index, double* values, std::size_t count) {
    std::size_t length = readIndex(line, index);
    if (length == 0 || index == kNoIndex) return false;
    for (std::size_t k = 0; k < count; ++k) {
        line.remove_prefix(length);
        if (!beginsWithBlank(line)) return false;
        length = readNumber(line, values[k]);
        if (length == 0 || !fitsSingle(values[k])) return false;
    }
    return isBlankLine(line.substr(length));
}
