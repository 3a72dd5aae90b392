#include "scene/words.h"

#include <algorithm>
#include <cctype>

#include "scene/lexical.h"

namespace host::scene {

namespace {

/// Appends a string without its quotation marks, and with its escapes resolved.
void appendUnquoted(std::string& text, std::string_view raw, bool isDoubleByte) {
    const std::string_view inner = raw.substr(1, raw.size() - 2);
    for (std::size_t k = 0; k < inner.size(); ++k) {
        const bool isLast = k + 1 == inner.size();
        if (inner[k] != '\\' || isLast) {
            text += inner[k];
            if (isDoubleByte && isLeadByte(inner[k]) && !isLast) text += inner[++k];
            continue;
        }
        ++k;
        if (inner[k] == 'n') {
            text += '\n';
        } else if (inner[k] == 't') {
            text += '\t';
        } else if (inner[k] == 'r') {
            text += '\r';
        } else {
            text += inner[k];
        }
    }
}

}  // namespace

bool Word::isFlag() const {
    return kind == Kind::Bare && raw.size() > 1 && raw[0] == '-' &&
           std::isalpha(static_cast<unsigned char>(raw[1])) != 0 && raw != "-inf" && raw != "-nan";
}

bool Word::isOn() const {
    return isBare("on") || isBare("yes") || isBare("true") || isBare("1");
}

std::string Word::text() const {
    std::string result;
    if (kind == Kind::Quoted) {
        appendUnquoted(result, raw, isDoubleByte);
    } else if (kind == Kind::Sum) {
        WordScanner parts(raw.substr(1, raw.size() - 2), isDoubleByte);
        for (Word part = parts.next(); !part.isEnd(); part = parts.next()) {
            if (part.kind == Kind::Quoted) appendUnquoted(result, part.raw, isDoubleByte);
        }
    } else {
        result = raw;
    }
    return result;
}

WordScanner::WordScanner(std::string_view statement, bool isDoubleByte)
    : begin_(statement.data()), at_(begin_), end_(begin_ + statement.size()), isDoubleByte_(isDoubleByte) {
    if (end_ != begin_ && end_[-1] == ';') --end_;
}

void WordScanner::skipBlanks() {
    while (at_ != end_) {
        if (isBlank(*at_)) {
            ++at_;
        } else if (*at_ == '/' && at_ + 1 != end_ && at_[1] == '/') {
            at_ = std::find_if(at_, end_, isLineEnd);
        } else {
            return;
        }
    }
}

/// After a string; the end of the statement if the string has no end.
const char* WordScanner::behindString(const char* quote) const {
    const char* const behind = stringEnd(quote, end_, isDoubleByte_);
    return behind != nullptr ? behind : end_;
}

Word WordScanner::next() {
    skipBlanks();
    if (at_ == end_) return {};
    const char* const first = at_;
    const auto word = [&](Word::Kind kind) {
        return Word{kind, {first, static_cast<std::size_t>(at_ - first)}, isDoubleByte_};
    };
    if (*at_ == '"') {
        at_ = behindString(at_);
        return word(Word::Kind::Quoted);
    }
    if (*at_ == '(') {
        while (at_ != end_ && *at_ != ')')
            at_ = *at_ == '"' ? behindString(at_) : at_ + 1;
        if (at_ != end_) ++at_;
        return word(Word::Kind::Sum);
    }
    if (*at_ == '{' || *at_ == '}' || *at_ == ',') {
        ++at_;
        return word(Word::Kind::Mark);
    }
    while (at_ != end_ && !isBlank(*at_) && *at_ != '"' && *at_ != '{' && *at_ != '}' && *at_ != ',')
        ++at_;
    return word(Word::Kind::Bare);
}

std::string inQuotes(std::string_view text, bool isDoubleByte) {
    std::string result = "\"";
    for (std::size_t k = 0; k < text.size(); ++k) {
        const char c = text[k];
        if (isDoubleByte && isLeadByte(c) && k + 1 < text.size()) {
            result += text.substr(k++, 2);
        } else if (c == '\n') {
            result += "\\n";
        } else if (c == '\t') {
            result += "\\t";
        } else if (c == '\r') {
            result += "\\r";
        } else {
            if (c == '"' || c == '\\') result += '\\';
            result += c;
        }
    }
    return result += '"';
}

bool fitsDoubleByte(std::string_view statements) {
    bool isString = false;
    for (std::size_t k = 0; k < statements.size(); ++k) {
        const char c = statements[k];
        if (c == '"') {
            isString = !isString;
        } else if (isString && c == '\\') {
            ++k;
        } else if (isString && isLeadByte(c)) {
            ++k;
            // What must be escaped is no second byte in any of the pages, apart from the backslash.
            if (k == statements.size() || static_cast<unsigned char>(statements[k]) < 0x40) return false;
        }
    }
    return !isString;
}

}  // namespace host::scene
