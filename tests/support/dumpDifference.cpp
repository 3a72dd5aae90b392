#include "support/dumpDifference.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <vector>

namespace delven::test {

namespace {

std::vector<std::string> sortedLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    return lines;
}

}  // namespace

std::string dumpDifference(const std::string& before, const std::string& after) {
    const std::vector<std::string> old = sortedLines(before);
    const std::vector<std::string> now = sortedLines(after);
    std::vector<std::string> gone;
    std::vector<std::string> added;
    std::set_difference(old.begin(), old.end(), now.begin(), now.end(), std::back_inserter(gone));
    std::set_difference(now.begin(), now.end(), old.begin(), old.end(), std::back_inserter(added));
    std::string text;
    for (const std::string& line : gone)
        text += "- " + line + '\n';
    for (const std::string& line : added)
        text += "+ " + line + '\n';
    return text.empty() && before != after ? "only the order of lines differs\n" : text;
}

}  // namespace delven::test
