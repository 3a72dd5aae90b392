#include <maya/MArgList.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "api/commands/argumentAccess.h"
#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "mel/numberText.h"
#include "mel/value.h"

using host::api::failure;
using host::api::noElement;
using host::api::report;
using host::api::succeeded;
using host::mel::Value;

OPENMAYA_MAJOR_NAMESPACE_OPEN

const unsigned int MArgList::kInvalidArgIndex = 0xffffffff;

struct MArgList::Words {
    std::vector<Value> list;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace {

/// The number in a word, also if it is in quotes.
std::optional<double> numberOf(const Value& word) {
    if (word.isNumber()) return word.toFloat();
    const auto* text = word.getIf<std::string>();
    const auto number = text != nullptr ? host::mel::parseNumber(*text) : std::nullopt;
    return number ? std::optional<double>(number->value) : std::nullopt;
}

std::optional<bool> truthOf(const Value& word) {
    if (const auto number = numberOf(word)) return *number != 0.0;
    const auto* text = word.getIf<std::string>();
    if (text == nullptr) return std::nullopt;
    if (*text == "on" || *text == "true" || *text == "yes") return true;
    if (*text == "off" || *text == "false" || *text == "no") return false;
    return std::nullopt;
}

bool isFlag(const Value& word, const char* name) {
    const auto* text = word.getIf<std::string>();
    if (name == nullptr || *name == '\0' || text == nullptr) return false;
    return *text == (*name == '-' ? name : '-' + std::string(name));
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

MArgList::MArgList() : words_(std::make_unique<Words>()) {}
MArgList::MArgList(const MArgList& other) : words_(std::make_unique<Words>(*other.words_)) {}
MArgList::~MArgList() = default;

MArgList& MArgList::operator=(const MArgList& other) {
    words_->list = other.words_->list;
    return *this;
}

unsigned int MArgList::length(MStatus* status) const {
    return succeeded(status, static_cast<unsigned int>(words_->list.size()));
}

bool MArgList::asBool(unsigned int index, MStatus* status) const {
    bool value = false;
    report(status, get(index, value));
    return value;
}

int MArgList::asInt(unsigned int index, MStatus* status) const {
    int value = 0;
    report(status, get(index, value));
    return value;
}

double MArgList::asDouble(unsigned int index, MStatus* status) const {
    double value = 0.0;
    report(status, get(index, value));
    return value;
}

MString MArgList::asString(unsigned int index, MStatus* status) const {
    MString value;
    report(status, get(index, value));
    return value;
}

MStatus MArgList::get(unsigned int index, bool& value) const {
    if (index >= length()) return noElement();
    const std::optional<bool> truth = truthOf(words_->list[index]);
    if (!truth) return failure();
    value = *truth;
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int index, int& value) const {
    if (index >= length()) return noElement();
    const std::optional<double> number = numberOf(words_->list[index]);
    if (!number || !host::mel::fitsInt(*number)) return failure();
    value = Value(*number).toInt();
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int index, double& value) const {
    if (index >= length()) return noElement();
    const std::optional<double> number = numberOf(words_->list[index]);
    if (!number) return failure();
    value = *number;
    return MStatus::kSuccess;
}

MStatus MArgList::get(unsigned int index, MString& value) const {
    if (index >= length()) return noElement();
    value = host::api::string(words_->list[index].toString());
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(bool value) {
    words_->list.emplace_back(value);
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(int value) {
    words_->list.emplace_back(value);
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(double value) {
    words_->list.emplace_back(value);
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(const MString& value) {
    words_->list.emplace_back(host::api::text(value));
    return MStatus::kSuccess;
}

unsigned int MArgList::flagIndex(const char* flag, const char* longFlag) const {
    for (unsigned int k = 0; k < length(); ++k) {
        if (isFlag(words_->list[k], flag) || isFlag(words_->list[k], longFlag)) return k;
    }
    return kInvalidArgIndex;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace host::api {

std::vector<Value>& ArgumentAccess::words(MArgList& list) {
    return list.words_->list;
}

const std::vector<Value>& ArgumentAccess::words(const MArgList& list) {
    return list.words_->list;
}

}  // namespace host::api
