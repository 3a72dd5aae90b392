#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

/// Values as the dump of a scene shows them: exact, and without line ends. Each function appends a blank and
/// then the value.
namespace host::graph {

/// With the fewest digits that distinguish it from every other double.
void appendText(std::string& text, double value);
/// In quotation marks. Line ends are escaped as in a script.
void appendText(std::string& text, const std::string& value);

/// The number of bytes and their hash, for values that are too long to read.
void appendDigest(std::string& text, const void* bytes, std::size_t count);

template <typename Number>
void appendNumbers(std::string& text, const Number* numbers, std::size_t count) {
    constexpr std::size_t kReadable = 300;
    if (count > kReadable) return appendDigest(text, numbers, count * sizeof(Number));
    for (std::size_t k = 0; k < count; ++k)
        appendText(text, static_cast<double>(numbers[k]));
}

inline void appendText(std::string& text, const std::vector<std::string>& value) {
    for (const std::string& entry : value)
        appendText(text, entry);
}
template <typename Number>
void appendText(std::string& text, const std::vector<Number>& value) {
    appendNumbers(text, value.data(), value.size());
}
template <typename Number, std::size_t kWidth>
void appendText(std::string& text, const std::array<Number, kWidth>& value) {
    appendNumbers(text, value.data(), kWidth);
}
template <typename Number, std::size_t kWidth>
void appendText(std::string& text, const std::vector<std::array<Number, kWidth>>& value) {
    if (!value.empty()) appendNumbers(text, value.front().data(), value.size() * kWidth);
}

}  // namespace host::graph
