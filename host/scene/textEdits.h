#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "scene/sceneText.h"
#include "scene/words.h"

namespace host::scene {

/// Changes of a text, kept as ranges of its bytes and what comes in their place. The rest is copied as it is.
class TextEdits {
  public:
    explicit TextEdits(const SceneText& text) : text_(text) {}

    /// Replaces a part of a comment.
    void replaceComment(std::uint64_t begin, std::uint64_t end, std::string by) {
        edits_.push_back({begin, end, std::move(by), true});
    }
    void replaceStatement(std::uint32_t index, std::string by);
    /// Removes a statement with the blanks before it. Comments stay.
    void removeStatement(std::uint32_t index);
    /// Adds lines after a statement, or at the beginning of the text.
    /// @param index  -1 for the beginning
    /// @param lines  each with a line end
    void insertAfter(std::int64_t index, const std::string& lines);

    /// Whether the strings of the new statements can be told apart in the code page of the text.
    bool fit() const { return fit_; }
    /// A new line with letters in UTF-8, where the text is in another code page; empty if there is none.
    /// Bytes that the text had before are in its code page, and hardly ever read as UTF-8.
    std::string foreignLine() const;

    void write(std::ostream& stream);

  private:
    struct Edit {
        std::uint64_t begin;
        std::uint64_t end;
        std::string by;
        bool isComment = false;
    };

    void add(std::uint64_t begin, std::uint64_t end, std::string by) {
        edits_.push_back({begin, end, std::move(by), false});
    }

    void check(std::string_view statements) {
        fit_ = fit_ && (!text_.form.isDoubleByte || fitsDoubleByte(statements));
    }

    const SceneText& text_;
    bool fit_ = true;
    std::vector<Edit> edits_;
};

}  // namespace host::scene
