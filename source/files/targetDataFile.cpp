#include "files/targetDataFile.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "files/jsonText.h"
#include "files/numberText.h"

namespace {

/// The meaning of a depth: the number of open braces.
enum Depth : std::size_t { kFile = 1, kTarget = 2, kData = 3, kItem = 4 };

class TargetDataReader {
  public:
    TargetDataReader(std::string_view text, const TargetRemap* remap,
                     const std::function<void(const TargetItem&)>& take)
        : scanner_(text), remap_(remap), take_(take) {}

    TargetDataContent read();

  private:
    bool takeKey(int& index);
    void open();
    void close();
    void startTarget();
    void startItem();
    void readMember();
    void readPoint();

    JsonScanner scanner_;
    const TargetRemap* remap_;
    const std::function<void(const TargetItem&)>& take_;
    std::size_t nextSource_ = 0;  // next source of the remap

    std::size_t depth_ = 0;
    std::string_view key_;  // the last key; empty after its object, list or value has begun
    bool isTargetTaken_ = false;
    bool isItemTaken_ = false;
    TargetItem item_;
    std::vector<double> numbers_;  // of the list that was read last
    std::string entry_;            // the entry of the current target
    TargetDataContent content_;
};

TargetDataContent TargetDataReader::read() {
    for (char c = scanner_.next(); c != '\0'; c = scanner_.next()) {
        if (c == '{') open();
        if (c == '}') close();
        if (c == '"') key_ = scanner_.readQuoted();
        if (c == ':') readMember();
        if (c == '[') readPoint();
    }
    return std::move(content_);
}

/// Reads the key as an index and clears the key.
/// @return false if it does not begin with a number, or if the number is not an index
bool TargetDataReader::takeKey(int& index) {
    const std::size_t used = readIndex(key_, index);
    key_ = {};
    if (index == kNoIndex) ++content_.refusedCount;
    return used > 0 && index != kNoIndex;
}

void TargetDataReader::open() {
    ++depth_;
    if (depth_ == kTarget) startTarget();
    if (depth_ == kItem) startItem();
    key_ = {};
}

void TargetDataReader::close() {
    if (depth_ == kItem && isItemTaken_) take_(item_);
    if (depth_ == kTarget && !entry_.empty()) content_.entries.push_back(std::move(entry_));
    if (depth_ == kTarget) entry_.clear();
    if (depth_ > 0) --depth_;
    key_ = {};
}

void TargetDataReader::startTarget() {
    item_.name.clear();
    entry_.clear();
    isTargetTaken_ = takeKey(item_.target);
    if (!isTargetTaken_) return;
    if (remap_ != nullptr) {
        isTargetTaken_ = nextSource_ < remap_->sources.size() && remap_->sources[nextSource_] == item_.target;
        if (isTargetTaken_) item_.target = remap_->destinations[nextSource_++];
        if (item_.target < 0) {
            ++content_.refusedCount;
            isTargetTaken_ = false;
            return;
        }
    }
    entry_ = std::to_string(item_.target) + ',';
}

void TargetDataReader::startItem() {
    item_.vertices.clear();
    item_.points.clear();
    item_.hasDropped = false;
    const bool hasIndex = takeKey(item_.item);
    isItemTaken_ = hasIndex && isTargetTaken_;
    if (!hasIndex || entry_.empty()) return;
    if (entry_.back() != ',') entry_ += ':';
    entry_ += std::to_string(item_.item);
}

/// Reads the value after a colon, unless it is an object or a list.
void TargetDataReader::readMember() {
    if (!scanner_.hasValue()) return;
    const std::string value = scanner_.readValue();
    if (depth_ == kTarget && key_ == "name") item_.name = value;
    key_ = {};
}

void TargetDataReader::readPoint() {
    const bool isComplete = scanner_.readNumberList(numbers_);
    if (depth_ != kItem) key_ = {};
    int vertex = 0;
    const bool hasVertex = takeKey(vertex);
    const bool isPoint =
        isComplete && numbers_.size() == 3 &&
        std::all_of(numbers_.begin(), numbers_.end(), [](double number) { return std::isfinite(number); });
    if (!hasVertex || !isPoint) {
        item_.hasDropped = true;
        return;
    }
    item_.vertices.push_back(vertex);
    item_.points.push_back({numbers_[0], numbers_[1], numbers_[2]});
}

}  // namespace

TargetDataContent readTargetData(std::string_view text, const TargetRemap* remap,
                                 const std::function<void(const TargetItem&)>& take) {
    return TargetDataReader(text, remap, take).read();
}

std::string legalAlias(std::string_view name, int target) {
    std::string alias;
    for (const char c : name) {
        const bool isDigit = c >= '0' && c <= '9';
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        if (isDigit && alias.empty()) alias += '_';
        if (isDigit || isLetter || c == '_') alias += c;
    }
    return alias.empty() ? "weight_" + std::to_string(target) : alias;
}
