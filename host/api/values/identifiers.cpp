// MUuid.

#include <maya/MUuid.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <string>

#include "api/values/statusMaker.h"

OPENMAYA_MAJOR_NAMESPACE_OPEN

namespace {

constexpr int kTextLength = 36;
constexpr const char* kDigits = "0123456789ABCDEF";

bool isDashPosition(int position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

/// 0 to 15; -1 if it is not a hexadecimal digit.
int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

bool parse(const MString& text, unsigned char (&bytes)[16]) {
    if (text.length() != kTextLength) return false;
    unsigned char parsed[16] = {};
    int digits = 0;
    for (int position = 0; position < kTextLength; ++position) {
        const char c = text.asChar()[position];
        if (isDashPosition(position)) {
            if (c != '-') return false;
            continue;
        }
        const int value = digitValue(c);
        if (value < 0) return false;
        parsed[digits / 2] = static_cast<unsigned char>(parsed[digits / 2] * 16 + value);
        ++digits;
    }
    std::copy(parsed, parsed + 16, bytes);
    return true;
}

/// Spreads a counter over all 64 bits. Different counts give different results.
std::uint64_t mixed(std::uint64_t count) {
    count *= 0x9e3779b97f4a7c15U;
    count = (count ^ (count >> 30U)) * 0xbf58476d1ce4e5b9U;
    count = (count ^ (count >> 27U)) * 0x94d049bb133111ebU;
    return count ^ (count >> 31U);
}

}  // namespace

MUuid::MUuid(const unsigned char* uuid) {
    std::copy(uuid, uuid + 16, bytes_);
}

MUuid::MUuid(const MString& value, MStatus* status) {
    host::api::report(status, parse(value, bytes_) ? MStatus::kSuccess : MStatus::kInvalidParameter);
}

bool MUuid::operator==(const MUuid& other) const {
    return std::equal(bytes_, bytes_ + 16, other.bytes_);
}

bool MUuid::operator!=(const MUuid& other) const {
    return !(*this == other);
}

bool MUuid::valid() const {
    return *this != MUuid();
}

MStatus MUuid::generate() {
    static std::atomic<std::uint64_t> last{0};
    const std::uint64_t count = ++last;
    const std::uint64_t halves[2] = {mixed(2 * count), mixed(2 * count + 1)};
    for (unsigned int i = 0; i < 16; ++i) {
        bytes_[i] = static_cast<unsigned char>(halves[i / 8] >> (8U * (i % 8)));
    }
    bytes_[6] = static_cast<unsigned char>((bytes_[6] & 0x0fU) | 0x40U);  // version: random
    bytes_[8] = static_cast<unsigned char>((bytes_[8] & 0x3fU) | 0x80U);  // variant: the common one
    return MStatus::kSuccess;
}

void MUuid::copy(const MUuid& source) {
    *this = source;
}

MStatus MUuid::get(unsigned char* destination) const {
    std::copy(bytes_, bytes_ + 16, destination);
    return MStatus::kSuccess;
}

MString MUuid::asString() const {
    std::string text;
    for (const unsigned char byte : bytes_) {
        if (isDashPosition(static_cast<int>(text.size()))) text += '-';
        text += kDigits[byte / 16];
        text += kDigits[byte % 16];
    }
    return MString(text.c_str());
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
