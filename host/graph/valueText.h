#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

/// Values as the dump of a scene shows them: exact, and free of line ends. Each function appends a blank and
/// then the value.
namespace host::graph {

/// With the fewest digits that tell it from every other double.
void appendText(std::string& text, double value);
/// In quotation marks; what ends a line is escaped as in a script.
void appendText(std::string& text, const std::string& value);

/// The count of bytes and a hash of them, for what is too long to be read.
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
