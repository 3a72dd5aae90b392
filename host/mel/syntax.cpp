#include "mel/syntax.h"

#include <cassert>
#include <utility>

namespace host::mel {

namespace {

std::string_view withoutDash(std::string_view name) {
    if (!name.empty() && name.front() == '-') name.remove_prefix(1);
    return name;
}

}  // namespace

bool Syntax::addFlag(Flag flag) {
    flag.shortName = withoutDash(flag.shortName);
    flag.longName = withoutDash(flag.longName);
    if (flag.shortName.empty() || flag.shortName.size() > 3 || flag.longName.size() < 4) return false;
    if (flag.arguments.size() > 6 || find(flag.shortName) >= 0 || find(flag.longName) >= 0) return false;
    flags_.push_back(std::move(flag));
    return true;
}

Syntax& Syntax::flag(std::string_view shortName, std::string_view longName,
                     std::vector<ArgumentType> arguments) {
    Flag entry;
    entry.shortName = shortName;
    entry.longName = longName;
    entry.arguments = std::move(arguments);
    if (longName.empty()) {
        assert(find(shortName) < 0);
        flags_.push_back(std::move(entry));
        return *this;
    }
    [[maybe_unused]] const bool added = addFlag(std::move(entry));
    assert(added);
    return *this;
}

Syntax& Syntax::multiUseFlag(std::string_view shortName, std::string_view longName,
                             std::vector<ArgumentType> arguments) {
    flag(shortName, longName, std::move(arguments));
    flags_.back().multiUse = true;
    return *this;
}

bool Syntax::makeMultiUse(std::string_view name) {
    const int index = find(name);
    if (index >= 0) flags_[static_cast<std::size_t>(index)].multiUse = true;
    return index >= 0;
}

bool Syntax::makeQueryWithArguments(std::string_view name) {
    const int index = find(name);
    if (index >= 0) flags_[static_cast<std::size_t>(index)].queryWithArguments = true;
    return index >= 0;
}

Syntax& Syntax::objects(ObjectKind kind, int minimum, int maximum) {
    objectKind_ = kind;
    minimumObjects_ = minimum;
    maximumObjects_ = maximum;
    return *this;
}

Syntax& Syntax::textsFollow(std::function<bool(const ParsedArguments&)> isNext) {
    isTextNext_ = std::move(isNext);
    return *this;
}

Syntax& Syntax::enableQuery(bool on) {
    query_ = on;
    return *this;
}

Syntax& Syntax::enableEdit(bool on) {
    edit_ = on;
    return *this;
}

int Syntax::find(std::string_view name) const {
    name = withoutDash(name);
    for (std::size_t i = 0; i < flags_.size(); ++i)
        if (flags_[i].shortName == name || flags_[i].longName == name) return static_cast<int>(i);
    return -1;
}

}  // namespace host::mel
