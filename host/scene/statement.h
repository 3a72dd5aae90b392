#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace host::scene {

/// The statements that scene files consist of. There are no others: a file is data, and nothing in it runs.
enum class StatementKind : std::uint8_t {
    Requires,
    CurrentUnit,
    FileInfo,
    File,
    CreateNode,
    Rename,
    SetAttr,
    AddAttr,
    Select,
    ConnectAttr,
    Relationship,
    LockNode,
    Parent,
    Instanceable,
    DataStructure,
};

/// Told how many bytes of a text are done.
using Progress = std::function<void(std::uint64_t)>;
/// After how many bytes it is told again.
constexpr std::uint64_t kProgressStep = std::uint64_t{1} << 24;

/// One statement as a span of the file's bytes: from the first letter of its keyword to its semicolon, both
/// included. Blanks and comments before it belong to the gap between it and the statement before.
struct Statement {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    StatementKind kind = StatementKind::Requires;

    bool operator==(const Statement& other) const {
        return begin == other.begin && end == other.end && kind == other.kind;
    }
};

/// A fault of a scene file: where, and what is wrong.
struct SceneFault {
    std::uint64_t offset = 0;
    std::string text{};  ///< empty if there is no fault

    explicit operator bool() const { return !text.empty(); }
};

/// The bytes of a scene file, cut into statements.
struct CutText {
    std::vector<Statement> statements{};
    SceneFault fault{};
};

/// Cuts a text. Linear; no string is made. What a script would run, such as a call or a command in back
/// quotes, is a fault wherever it stands.
/// @param isDoubleByte  whether strings are in a double-byte code page
/// @param progress      told now and then how many bytes are done; may be empty
CutText cutStatements(std::string_view text, bool isDoubleByte = false, const Progress& progress = {});

/// "<file>, line <n>, column <m>": where an offset is. Lines and columns count from 1, columns in bytes.
std::string placeText(std::string_view fileName, std::string_view text, std::uint64_t offset);

}  // namespace host::scene
