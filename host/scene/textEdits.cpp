#include "scene/textEdits.h"

#include <algorithm>
#include <ostream>

#include "text/utf8.h"

namespace host::scene {

namespace {

/// Whether all characters beyond ASCII of a line stand in a text, next to the same ones.
bool isMadeOf(std::string_view text, std::string_view line) {
    const auto isWide = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    for (auto at = std::find_if(line.begin(), line.end(), isWide); at != line.end();) {
        const auto end = std::find_if_not(at, line.end(), isWide);
        const auto first = static_cast<std::size_t>(at - line.begin());
        if (text.find(line.substr(first, static_cast<std::size_t>(end - at))) == std::string_view::npos)
            return false;
        at = std::find_if(end, line.end(), isWide);
    }
    return true;
}

}  // namespace

void TextEdits::replaceStatement(std::uint32_t index, std::string by) {
    const Statement& statement = text_.statements[index];
    check(by);
    add(statement.begin, statement.end, std::move(by));
}

void TextEdits::removeStatement(std::uint32_t index) {
    const Statement& statement = text_.statements[index];
    const std::uint64_t before = index > 0 ? text_.statements[index - 1].end : 0;
    const std::string_view gap(text_.bytes.data() + before,
                               static_cast<std::size_t>(statement.begin - before));
    const bool isBlank = index > 0 && gap.find_first_not_of(" \t\r\n\f\v") == std::string_view::npos;
    add(isBlank ? before : statement.begin, statement.end, {});
}

void TextEdits::insertAfter(std::int64_t index, const std::string& lines) {
    if (lines.empty()) return;
    check(lines);
    if (index < 0) return add(0, 0, lines);
    const std::string& lineEnd = text_.form.lineEnd;
    const std::uint64_t at = text_.statements[static_cast<std::size_t>(index)].end;
    add(at, at, lineEnd + lines.substr(0, lines.size() - lineEnd.size()));
}

std::string TextEdits::foreignLine() const {
    if (text_.form.codePage == kUtf8) return {};
    for (const Edit& edit : edits_) {
        // Comments, such as the file's name, are read by nobody.
        if (edit.isComment) continue;
        const std::string_view by = edit.by;
        for (std::size_t at = 0; at < by.size();) {
            const std::size_t end = std::min(by.find_first_of("\r\n", at), by.size());
            const std::string_view line = by.substr(at, end - at);
            if (text::hasWideCharacters(line) && !isMadeOf(text_.bytes, line))
                return std::string(line.substr(line.find_first_not_of('\t')));
            at = end + 1;
        }
    }
    return {};
}

void TextEdits::write(std::ostream& stream) {
    // What is inserted at a place comes before what is removed from there on.
    std::stable_sort(edits_.begin(), edits_.end(), [](const Edit& a, const Edit& b) {
        return a.begin != b.begin ? a.begin < b.begin : (a.end == a.begin) > (b.end == b.begin);
    });
    std::uint64_t at = 0;
    const auto copyTo = [&](std::uint64_t end) {
        if (end > at) stream.write(text_.bytes.data() + at, static_cast<std::streamsize>(end - at));
        at = std::max(at, end);
    };
    for (const Edit& edit : edits_) {
        copyTo(edit.begin);
        stream.write(edit.by.data(), static_cast<std::streamsize>(edit.by.size()));
        at = std::max(at, edit.end);
    }
    copyTo(text_.bytes.size());
}

}  // namespace host::scene
