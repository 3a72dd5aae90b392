#include "batch/prompt.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string>

#include "platform/terminal.h"

namespace host::batch {

namespace {

/// Text without comments and with every string emptied, and what is still open at its end.
struct Skeleton {
    std::string code;
    int depth = 0;
    bool isOpen = false;  // a string, a comment, a back quote
};

/// Position behind a string that starts at `at`; npos when it does not end.
std::size_t stringEnd(std::string_view text, std::size_t at) {
    for (++at; at < text.size(); ++at) {
        if (text[at] == '\\') {
            ++at;
        } else if (text[at] == '"') {
            return at + 1;
        }
    }
    return std::string_view::npos;
}

/// Position behind a comment that starts at `at`; npos when it does not end; `at` when there is none.
std::size_t commentEnd(std::string_view text, std::size_t at) {
    if (text.substr(at, 2) == "//") return std::min(text.find('\n', at), text.size());
    if (text.substr(at, 2) != "/*") return at;
    const std::size_t end = text.find("*/", at + 2);
    return end == std::string_view::npos ? end : end + 2;
}

Skeleton skeletonOf(std::string_view text) {
    Skeleton skeleton;
    bool isQuoted = false;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        const std::size_t next = c == '"' ? stringEnd(text, at) : commentEnd(text, at);
        if (next == std::string_view::npos) {
            skeleton.isOpen = true;
            return skeleton;
        }
        if (c == '"') skeleton.code += "\"\"";
        if (next != at) {
            at = next;
            continue;
        }
        skeleton.depth += c == '(' || c == '{' || c == '[' ? 1 : 0;
        skeleton.depth -= c == ')' || c == '}' || c == ']' ? 1 : 0;
        isQuoted = isQuoted != (c == '`');
        skeleton.code += c;
        ++at;
    }
    skeleton.isOpen = isQuoted;
    return skeleton;
}

bool isWordCharacter(char c) {
    return c == '_' || c == '$' || std::isalnum(static_cast<unsigned char>(c)) != 0;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())) != 0)
        text.remove_prefix(1);
    return text;
}

/// The last statement that has begun: what stands behind the last ; or } outside brackets.
std::string_view lastStatement(std::string_view code) {
    std::size_t start = 0;
    int depth = 0;
    for (std::size_t at = 0; at < code.size(); ++at) {
        const char c = code[at];
        depth += c == '(' || c == '{' || c == '[' ? 1 : 0;
        depth -= c == ')' || c == '}' || c == ']' ? 1 : 0;
        if (depth <= 0 && (c == ';' || c == '}')) start = at + 1;
    }
    return trimmed(code.substr(start));
}

/// Text behind the brackets that it starts with.
std::string_view behindBrackets(std::string_view text) {
    int depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        depth += text[at] == '(' ? 1 : 0;
        depth -= text[at] == ')' ? 1 : 0;
        if (depth == 0) return trimmed(text.substr(at + 1));
    }
    return {};
}

/// Whether a statement that has not ended is the head of something that still needs its body.
bool needsBody(std::string_view statement) {
    std::size_t end = 0;
    while (end < statement.size() && isWordCharacter(statement[end]))
        ++end;
    const std::string_view word = statement.substr(0, end);
    std::string_view rest = trimmed(statement.substr(end));
    if (word == "proc") return true;
    if (word == "global") return rest.substr(0, 5) == "proc ";
    if (word == "if" || word == "for" || word == "while" || word == "switch") {
        rest = behindBrackets(rest);
    } else if (word != "else" && word != "do") {
        return false;
    }
    return rest.empty() || needsBody(rest);
}

bool startsWithElse(std::string_view line) {
    line = trimmed(line);
    return line.substr(0, 4) == "else" && (line.size() == 4 || !isWordCharacter(line[4]));
}

/// Cuts standard input into pieces of script that can be run.
class EntryReader {
  public:
    bool isTerminal() const { return lines_.isTerminal(); }
    /// Number of the line on which the last piece began. What a user types begins anew with each piece.
    int firstLine() const { return isTerminal() ? 1 : firstLine_; }

    /// The next piece; nothing at the end of the input. What is open there is handed out as it is.
    std::optional<std::string> next() {
        std::optional<std::string> entry = nextLine("mel: ");
        firstLine_ = lineCount_;
        while (entry && (!isWholeEntry(*entry) || isFollowedByElse(*entry))) {
            const std::optional<std::string> more = nextLine("   > ");
            if (!more) break;
            *entry += '\n' + *more;
        }
        return entry;
    }

  private:
    std::optional<std::string> nextLine(const std::string& prompt) {
        std::optional<std::string> line = isAhead_ ? std::move(ahead_) : lines_.read(prompt);
        isAhead_ = false;
        ++lineCount_;
        return line;
    }

    /// Nobody looks ahead at a terminal: an `else` there has to stand on the line of the closing brace. Nor
    /// where there is no `if`: another program may wait for the answer to a line before it writes the next.
    bool isFollowedByElse(const std::string& entry) {
        if (isTerminal() || entry.find("if") == std::string::npos) return false;
        if (!isAhead_) ahead_ = lines_.read({});
        isAhead_ = true;
        return ahead_ && startsWithElse(*ahead_);
    }

    platform::LineReader lines_;
    std::optional<std::string> ahead_;
    bool isAhead_ = false;
    int lineCount_ = 0;
    int firstLine_ = 1;
};

}  // namespace

bool isWholeEntry(std::string_view text) {
    const Skeleton skeleton = skeletonOf(text);
    if (skeleton.isOpen || skeleton.depth > 0) return false;
    return !needsBody(lastStatement(skeleton.code));
}

bool runPrompt(mel::CommandRegistry& registry, Console& console) {
    EntryReader reader;
    bool allSucceeded = true;
    mel::RunOptions options;
    options.echoResult = true;
    while (!registry.interpreter().isStopped()) {
        console.flush();
        const std::optional<std::string> entry = reader.next();
        if (!entry) break;
        options.firstLine = reader.firstLine();
        if (!registry.run(*entry, {}, options).ok) allSucceeded = false;
    }
    return allSucceeded || reader.isTerminal();
}

}  // namespace host::batch
