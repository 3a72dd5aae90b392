#include "scene/statement.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include "scene/lexical.h"

namespace host::scene {

namespace {

constexpr std::array<std::string_view, 15> kKeywords{"requires",   "currentUnit",  "fileInfo",     "file",
                                                     "createNode", "rename",       "setAttr",      "addAttr",
                                                     "select",     "connectAttr",  "relationship", "lockNode",
                                                     "parent",     "instanceable", "dataStructure"};

std::optional<StatementKind> kindOf(std::string_view keyword) {
    const auto found = std::find(kKeywords.begin(), kKeywords.end(), keyword);
    if (found == kKeywords.end()) return std::nullopt;
    return static_cast<StatementKind>(found - kKeywords.begin());
}

bool isWordEnd(char c) {
    return isBlank(c) || c == ';' || c == '"' || c == '(' || c == '/';
}

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// Finds the places of one byte, asked for in rising order. It looks at each byte of the text once, and only
/// a little ahead: what one finder looked at is then still in the cache for the others.
class ByteFinder {
  public:
    ByteFinder(char wanted, std::string_view text)
        : wanted_(wanted), end_(text.data() + text.size()), next_(text.data()) {}

    /// The first place of the byte from `at` on, or a place behind `at` up to which there is none. The end if
    /// nothing is left.
    const char* next(const char* at) {
        if (next_ > at) return next_;
        const std::size_t most = std::min(kWindow, static_cast<std::size_t>(end_ - at));
        const void* const found = std::memchr(at, wanted_, most);
        next_ = found != nullptr ? static_cast<const char*>(found) : at + most;
        return next_;
    }

  private:
    static constexpr std::size_t kWindow = 4096;

    char wanted_;
    const char* end_;
    const char* next_;
};

class Cutter {
  public:
    Cutter(std::string_view text, bool isDoubleByte, const Progress& progress)
        : at_(text.data()),
          begin_(text.data()),
          end_(text.data() + text.size()),
          isDoubleByte_(isDoubleByte),
          progress_(progress),
          semicolons_(';', text),
          quotes_('"', text),
          slashes_('/', text),
          brackets_('(', text),
          backQuotes_('`', text) {}

    CutText run() {
        // A saved file has about one statement for every hundred bytes. Long lists have fewer.
        result_.statements.reserve(static_cast<std::size_t>(end_ - begin_) / 200 + 16);
        // Some editors put a mark of the encoding first.
        constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
        if (std::string_view(at_, static_cast<std::size_t>(end_ - at_)).substr(0, 3) == kByteOrderMark)
            at_ += 3;
        std::uint64_t reported = 0;
        while (!result_.fault && skipGap()) {
            cutStatement();
            if (!progress_ || offset(at_) - reported < kProgressStep) continue;
            reported = offset(at_);
            progress_(reported);
        }
        return std::move(result_);
    }

  private:
    std::uint64_t offset(const char* place) const { return static_cast<std::uint64_t>(place - begin_); }

    void fail(const char* place, std::string text) { result_.fault = {offset(place), std::move(text)}; }

    void skipLine() { at_ = std::find_if(at_, end_, isLineEnd); }

    /// Skips blanks and comments. @return whether there is something else
    bool skipGap() {
        while (at_ != end_) {
            if (isBlank(*at_)) {
                ++at_;
            } else if (*at_ == '/' && at_ + 1 != end_ && at_[1] == '/') {
                skipLine();
            } else {
                return true;
            }
        }
        return false;
    }

    void cutStatement() {
        const char* const first = at_;
        const char* const wordEnd = std::find_if(first, end_, isWordEnd);
        const std::string_view word(first, static_cast<std::size_t>(wordEnd - first));
        const std::optional<StatementKind> kind = kindOf(word);
        if (!kind) {
            constexpr std::size_t kReadable = 40;
            return fail(first, "'" + std::string(word.substr(0, kReadable)) +
                                   "' is not a statement of a scene file. Nothing was opened.");
        }
        at_ = wordEnd;
        if (!skipToSemicolon(first)) return;
        ++at_;
        result_.statements.push_back({offset(first), offset(at_), *kind});
    }

    bool skipToSemicolon(const char* first) {
        for (;;) {
            at_ = std::min({semicolons_.next(at_), quotes_.next(at_), slashes_.next(at_), brackets_.next(at_),
                            backQuotes_.next(at_)});
            if (at_ == end_) {
                fail(first, "The statement that begins here has no semicolon at its end.");
                return false;
            }
            if (*at_ == ';') return true;
            if (*at_ == '"') {
                if (!skipString()) return false;
            } else if (*at_ == '(') {
                if (!skipSum()) return false;
            } else if (*at_ == '`') {
                return failToRun(at_);
            } else if (*at_ == '/') {
                if (at_ + 1 != end_ && at_[1] == '/') {
                    skipLine();
                } else {
                    ++at_;
                }
            }
        }
    }

    bool failToRun(const char* place) {
        fail(place, "Only values can stand here: nothing in a scene file is run. Nothing was opened.");
        return false;
    }

    /// Whether a word that could be the name of a procedure stands before a place.
    bool isCall(const char* place) const {
        while (place != begin_ && isBlank(place[-1]))
            --place;
        const char* first = place;
        while (first != begin_ && isWordCharacter(first[-1]))
            --first;
        const bool isFlag = first != begin_ && first[-1] == '-';
        return first != place && !isFlag && (*first < '0' || *first > '9');
    }

    /// Skips joined strings: ( "a" + "b" ).
    bool skipSum() {
        const char* const open = at_;
        if (isCall(open)) return failToRun(open);
        ++at_;
        while (skipGap() && *at_ != ')') {
            if (*at_ == '"') {
                if (!skipString()) return false;
            } else if (*at_ == '+') {
                ++at_;
            } else {
                return failToRun(at_);
            }
        }
        if (at_ == end_) return failToRun(open);
        ++at_;
        return true;
    }

    bool skipString() {
        const char* const behind = stringEnd(at_, end_, isDoubleByte_);
        if (behind == nullptr) {
            fail(at_, "The string that begins here has no quotation mark at its end.");
            return false;
        }
        at_ = behind;
        return true;
    }

    const char* at_;
    const char* begin_;
    const char* end_;
    bool isDoubleByte_;
    const Progress& progress_;
    ByteFinder semicolons_;
    ByteFinder quotes_;
    ByteFinder slashes_;
    ByteFinder brackets_;
    ByteFinder backQuotes_;
    CutText result_{};
};

}  // namespace

CutText cutStatements(std::string_view text, bool isDoubleByte, const Progress& progress) {
    return Cutter(text, isDoubleByte, progress).run();
}

std::string placeText(std::string_view fileName, std::string_view text, std::uint64_t offset) {
    const std::string_view before = text.substr(0, static_cast<std::size_t>(offset));
    // A return and a line feed are one end.
    std::size_t line = 1;
    for (std::size_t k = 0; k < before.size(); ++k) {
        if (before[k] == '\n' || (before[k] == '\r' && text.substr(k + 1, 1) != "\n")) ++line;
    }
    const std::size_t lineStart = before.find_last_of("\r\n") + 1;  // npos + 1 is 0
    return std::string(fileName) + ", line " + std::to_string(line) + ", column " +
           std::to_string(before.size() - lineStart + 1);
}

}  // namespace host::scene
