#pragma once

#include <string_view>

namespace host::geometry {

inline bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}
inline bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

/// Reads the words of a text line by line. A backslash at the end of a line counts as a blank.
class LineScanner {
  public:
    explicit LineScanner(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

    bool atEnd() const { return at_ == end_; }
    int line() const { return line_; }

    /// The next word of this line; empty at the end of the line and at a comment.
    std::string_view word() {
        skipBlanks();
        const char* first = at_;
        if (at_ != end_ && *at_ == '#') return {};
        while (at_ != end_ && !isBlank(*at_) && !isLineEnd(*at_) && continuationLength() == 0)
            ++at_;
        return {first, static_cast<std::size_t>(at_ - first)};
    }

    /// The rest of the line without blanks at its ends. For names, which may contain blanks.
    std::string_view rest() {
        skipBlanks();
        const char* first = at_;
        while (at_ != end_ && !isLineEnd(*at_))
            ++at_;
        const char* last = at_;
        while (last != first && isBlank(last[-1]))
            --last;
        return {first, static_cast<std::size_t>(last - first)};
    }

    void nextLine() {
        // A comment may end with a backslash, as Windows paths do. It still ends with its line.
        bool inComment = false;
        while (at_ != end_ && !isLineEnd(*at_)) {
            inComment = inComment || *at_ == '#';
            if (inComment || !skipContinuation()) ++at_;
        }
        skipLineEnd();
    }

  private:
    void skipBlanks() {
        while (at_ != end_ && (isBlank(*at_) || continuationLength() != 0)) {
            if (!skipContinuation()) ++at_;
        }
    }

    /// Length of a backslash and the line end after it; 0 if there is none.
    int continuationLength() const {
        if (*at_ != '\\' || end_ - at_ < 2) return 0;
        if (at_[1] == '\n') return 2;
        if (at_[1] != '\r') return 0;
        return end_ - at_ > 2 && at_[2] == '\n' ? 3 : 2;
    }

    bool skipContinuation() {
        const int length = continuationLength();
        at_ += length;
        line_ += length != 0 ? 1 : 0;
        return length != 0;
    }

    void skipLineEnd() {
        if (at_ == end_) return;
        const bool pair = *at_ == '\r' && end_ - at_ > 1 && at_[1] == '\n';
        at_ += pair ? 2 : 1;
        ++line_;
    }

    const char* at_;
    const char* end_;
    int line_ = 1;
};

}  // namespace host::geometry
