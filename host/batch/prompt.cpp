#include "batch/prompt.h"

#include <cstddef>
#include <optional>
#include <string>

#include "mel/lexer.h"
#include "platform/interrupt.h"
#include "platform/terminal.h"

namespace host::batch {

namespace {

constexpr const char* kHowToLeave = "Type quit; to leave.";

/// What users of other prompts type to leave.
bool isExit(const std::string& entry) {
    const std::size_t first = entry.find_first_not_of(" \t\r\n");
    const std::size_t last = entry.find_last_not_of(" \t\r\n;()");
    return first != std::string::npos && last != std::string::npos &&
           entry.substr(first, last + 1 - first) == "exit";
}

using mel::TextEnd;
using mel::TokenKind;

/// Cuts standard input into pieces of script that can be run.
class EntryReader {
  public:
    explicit EntryReader(const mel::Interpreter& interpreter) : interpreter_(interpreter) {}

    bool isTerminal() const { return lines_.isTerminal(); }
    /// Number of the line on which the last piece began. At a terminal, each piece starts at 1.
    int firstLine() const { return isTerminal() ? 1 : firstLine_; }

    /// The next piece; nothing at the end of the input. An unfinished piece at the end is returned unchanged.
    std::optional<std::string> next() {
        std::optional<std::string> entry = nextLine("mel: ");
        firstLine_ = lineCount_;
        mel::BracketCount brackets;
        parsedSize_ = 0;
        while (entry && goesOn(*entry, brackets)) {
            const std::optional<std::string> more = nextLine("   > ");
            if (!more && platform::interruptFlag()) return std::nullopt;
            if (!more) break;
            *entry += *more;
        }
        return entry;
    }

  private:
    /// A line with its end.
    std::optional<std::string> nextLine(const std::string& prompt) {
        std::optional<std::string> line = isAhead_ ? std::move(ahead_) : lines_.read(prompt);
        isAhead_ = false;
        ++lineCount_;
        if (line) *line += '\n';
        return line;
    }

    bool goesOn(const std::string& entry, mel::BracketCount& brackets) {
        // This is cheaper than the parser. An error inside brackets also makes one piece up to the last of
        // them.
        if (brackets.isOpenIn(entry)) return true;
        if (!isTerminal() && entry.size() < 2 * parsedSize_ && !mayEndIn(entry)) return true;
        parsedSize_ = entry.size();
        switch (interpreter_.endOf(entry)) {
            case TextEnd::TooEarly:
                return true;
            case TextEnd::Open:
                return !isTerminal();
            case TextEnd::BeforeElse:
                return isFollowedByElse();
            case TextEnd::Closed:
                break;
        }
        return false;
    }

    /// Whether a statement may end where the text ends. Other texts are parsed again only when their length
    /// has doubled, so that a statement of many lines takes linear time.
    static bool mayEndIn(const std::string& entry) {
        const std::size_t last = entry.find_last_not_of(" \t\r\n");
        return last != std::string::npos && (entry[last] == ';' || entry[last] == '}');
    }

    /// A terminal does not look ahead: there an `else` must be on the line of the closing brace. Lines
    /// without code do not count.
    bool isFollowedByElse() {
        if (isTerminal()) return false;
        if (!isAhead_) ahead_ = lines_.read({});
        isAhead_ = true;
        if (!ahead_) return false;
        const mel::Token first = mel::Lexer(*ahead_).next(0);
        const bool isElse = first.kind == TokenKind::Identifier && first.text == "else";
        return isElse || first.kind == TokenKind::End || first.isCutOff;
    }

    const mel::Interpreter& interpreter_;
    platform::LineReader lines_;
    std::optional<std::string> ahead_;
    bool isAhead_ = false;
    int lineCount_ = 0;
    std::size_t parsedSize_ = 0;  // of the piece, when the parser last saw it
    int firstLine_ = 1;
};

}  // namespace

bool runPrompt(mel::CommandRegistry& registry, Console& console) {
    EntryReader reader(registry.interpreter());
    std::optional<platform::InterruptGuard> guard;
    if (reader.isTerminal()) guard.emplace();
    bool allSucceeded = true;
    mel::RunOptions options;
    options.echoResult = true;
    while (!registry.interpreter().isStopped()) {
        console.flush();
        // While waiting for input other than a terminal's, an interrupt ends the program.
        if (!reader.isTerminal()) guard.reset();
        const std::optional<std::string> entry = reader.next();
        if (!entry && platform::interruptFlag().exchange(false)) {
            console.info(std::string_view(kHowToLeave));
            continue;
        }
        if (!entry) break;
        if (isExit(*entry) && !registry.interpreter().hasProcedure("exit")) {
            console.info(std::string_view(kHowToLeave));
            continue;
        }
        options.firstLine = reader.firstLine();
        if (!guard) guard.emplace();
        if (!registry.run(*entry, {}, options).ok) allSucceeded = false;
        // An interrupt just after the end of the piece was meant for the piece.
        platform::interruptFlag() = false;
    }
    return allSucceeded || reader.isTerminal();
}

}  // namespace host::batch
