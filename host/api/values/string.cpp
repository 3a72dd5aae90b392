#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <optional>
#include <ostream>
#include <string_view>
#include <vector>

#include "api/values/textForms.h"

OPENMAYA_MAJOR_NAMESPACE_OPEN

namespace {

// A float has no more exact decimal digits than these.
constexpr int kFloatDigits = 7;

std::string_view viewOf(const char* text) {
    return text != nullptr ? std::string_view(text) : std::string_view();
}

std::string_view viewOf(const char* text, int length) {
    return text != nullptr && length > 0 ? std::string_view(text, static_cast<std::size_t>(length))
                                         : std::string_view();
}

std::wstring_view viewOf(const wchar_t* text) {
    return text != nullptr ? std::wstring_view(text) : std::wstring_view();
}

std::wstring_view viewOf(const wchar_t* text, int length) {
    return text != nullptr && length > 0 ? std::wstring_view(text, static_cast<std::size_t>(length))
                                         : std::wstring_view();
}

template <typename Text>
Text clipped(const Text& text, int start, int end) {
    const int first = std::max(start, 0);
    const int last = std::min(end, static_cast<int>(text.size()) - 1);
    if (first > last) return Text();
    return text.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first) + 1);
}

int positionOf(std::size_t found) {
    return found == std::string::npos ? -1 : static_cast<int>(found);
}

/// A whole number at the start of a text, clipped to 64 bits. `whole` is set if the text contains nothing
/// else.
struct LeadingInteger {
    long long value = 0;
    bool whole = false;
};

LeadingInteger leadingInteger(const std::string& text) {
    char* end = nullptr;
    const long long value = std::strtoll(text.c_str(), &end, 10);
    return {value, end != text.c_str() && *end == '\0'};
}

template <typename Integer>
bool fits(long long value) {
    return value >= static_cast<long long>(std::numeric_limits<Integer>::min()) &&
           value <= static_cast<long long>(std::numeric_limits<Integer>::max());
}

template <typename Integer>
Integer clamped(long long value) {
    const auto least = static_cast<long long>(std::numeric_limits<Integer>::min());
    const auto most = static_cast<long long>(std::numeric_limits<Integer>::max());
    return static_cast<Integer>(std::clamp(value, least, most));
}

template <typename Integer>
bool isInteger(const std::string& text) {
    const LeadingInteger number = leadingInteger(text);
    return number.whole && fits<Integer>(number.value);
}

}  // namespace

MString::MString() = default;
MString::MString(const char* text) : text_(viewOf(text)) {}
MString::MString(const char* text, int length) : text_(viewOf(text, length)) {}
MString::MString(const wchar_t* text) : text_(host::api::utf8FromWide(viewOf(text))) {}
MString::MString(const wchar_t* text, int length) : text_(host::api::utf8FromWide(viewOf(text, length))) {}
MString::MString(const MString& other) : text_(other.text_) {}
MString::~MString() = default;

MString& MString::operator=(const MString& other) {
    text_ = other.text_;
    return *this;
}

MString& MString::operator=(const char* text) {
    set(text);
    return *this;
}

MString& MString::operator=(double value) {
    set(value);
    return *this;
}

MString& MString::operator+=(const MString& other) {
    text_ += other.text_;
    return *this;
}

MString& MString::operator+=(const char* text) {
    text_ += viewOf(text);
    return *this;
}

MString& MString::operator+=(double value) {
    text_ += host::api::numberText(value);
    return *this;
}

MString& MString::operator+=(int value) {
    text_ += std::to_string(value);
    return *this;
}

MString& MString::operator+=(unsigned int value) {
    text_ += std::to_string(value);
    return *this;
}

MString& MString::operator+=(float value) {
    text_ += host::api::numberText(static_cast<double>(value), kFloatDigits);
    return *this;
}

MString MString::operator+(const MString& other) const {
    return MString(*this) += other;
}

MString MString::operator+(const char* text) const {
    return MString(*this) += text;
}

MString MString::operator+(double value) const {
    return MString(*this) += value;
}

bool MString::operator==(const MString& other) const {
    return text_ == other.text_;
}

bool MString::operator==(const char* text) const {
    return text_ == viewOf(text);
}

bool MString::operator!=(const MString& other) const {
    return !(*this == other);
}

bool MString::operator!=(const char* text) const {
    return !(*this == text);
}

// The text may be a part of this string itself.
MStatus MString::set(const char* text) {
    text_ = std::string(viewOf(text));
    return MStatus::kSuccess;
}

MStatus MString::set(const char* text, int length) {
    text_ = std::string(viewOf(text, length));
    return MStatus::kSuccess;
}

MStatus MString::set(double value) {
    text_ = host::api::numberText(value);
    return MStatus::kSuccess;
}

MStatus MString::set(double value, int precision) {
    text_ = host::api::fixedText(value, precision);
    return MStatus::kSuccess;
}

MStatus MString::setUTF8(const char* text) {
    return set(text);
}

MStatus MString::setWChar(const wchar_t* text) {
    text_ = host::api::utf8FromWide(viewOf(text));
    return MStatus::kSuccess;
}

MStatus MString::setWChar(const wchar_t* text, int length) {
    text_ = host::api::utf8FromWide(viewOf(text, length));
    return MStatus::kSuccess;
}

void MString::clear() {
    text_.clear();
}

const char* MString::asChar() const {
    return text_.c_str();
}

const char* MString::asChar(int& length) const {
    length = static_cast<int>(text_.size());
    return text_.c_str();
}

const char* MString::asUTF8() const {
    return asChar();
}

const char* MString::asUTF8(int& length) const {
    return asChar(length);
}

const wchar_t* MString::asWChar() const {
    wide_ = std::make_unique<std::wstring>(host::api::wideFromUtf8(text_));
    return wide_->c_str();
}

const wchar_t* MString::asWChar(int& length) const {
    const wchar_t* text = asWChar();
    length = static_cast<int>(wide_->size());
    return text;
}

unsigned int MString::length() const {
    return static_cast<unsigned int>(text_.size());
}

unsigned int MString::numChars() const {
    return static_cast<unsigned int>(host::api::wideFromUtf8(text_).size());
}

int MString::index(char character) const {
    return positionOf(text_.find(character));
}

int MString::indexW(wchar_t character) const {
    return positionOf(host::api::wideFromUtf8(text_).find(character));
}

int MString::rindex(char character) const {
    return positionOf(text_.rfind(character));
}

int MString::rindexW(wchar_t character) const {
    return positionOf(host::api::wideFromUtf8(text_).rfind(character));
}

MString MString::substring(int start, int end) const {
    return MString(clipped(text_, start, end).c_str());
}

MString MString::substringW(int start, int end) const {
    return MString(clipped(host::api::wideFromUtf8(text_), start, end).c_str());
}

MStatus MString::split(char separator, MStringArray& pieces) const {
    // `pieces` may contain this string.
    const std::string text = text_;
    pieces.clear();
    std::size_t start = 0;
    while ((start = text.find_first_not_of(separator, start)) != std::string::npos) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        pieces.append(MString(text.data() + start, static_cast<int>(end - start)));
        start = end;
    }
    return MStatus::kSuccess;
}

MString& MString::toLowerCase() {
    for (char& c : text_) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return *this;
}

MString& MString::toUpperCase() {
    for (char& c : text_) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return *this;
}

bool MString::isShort() const {
    return isInteger<short>(text_);
}

short MString::asShort() const {
    return clamped<short>(leadingInteger(text_).value);
}

bool MString::isInt() const {
    return isInteger<int>(text_);
}

int MString::asInt() const {
    return clamped<int>(leadingInteger(text_).value);
}

bool MString::isUnsigned() const {
    return isInteger<unsigned int>(text_);
}

unsigned int MString::asUnsigned() const {
    return clamped<unsigned int>(leadingInteger(text_).value);
}

bool MString::isFloat() const {
    return isDouble();
}

float MString::asFloat() const {
    return static_cast<float>(asDouble());
}

bool MString::isDouble() const {
    const std::size_t length = host::api::leadingNumber(text_).length;
    return length > 0 && length == text_.size();
}

double MString::asDouble() const {
    return host::api::leadingNumber(text_).value;
}

MString operator+(const char* left, const MString& right) {
    return MString(left) += right;
}

std::ostream& operator<<(std::ostream& out, const MString& text) {
    return out << text.asChar();
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
