#include "walk/child.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

#include "support/dumpDifference.h"
#include "support/scratchFolder.h"

namespace delven::walk {

namespace {

namespace fs = std::filesystem;

constexpr unsigned int kSeconds = 60;

class Folder : public ScratchFolder {
  public:
    void write(const char* name, const char* text) const { std::ofstream(path() / name) << text; }
    std::string read(const char* name) const {
        std::ifstream stream(path() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
};

/// Length, letter, text: what is cut off by a crash is left out.
Report reportFrom(const std::string& told) {
    Report report;
    std::istringstream stream(told);
    std::size_t size = 0;
    char what = 0;
    while (stream >> size >> what) {
        std::string text(size, '\0');
        stream.get();
        if (!stream.read(text.data(), static_cast<std::streamsize>(size))) break;
        if (what == 'L') report.lines.push_back(Line::read(text));
        if (what == 'F') report.failures = std::stoi(text);
        if (what == 'C') report.hadCycle = true;
        if (what == 'K') report.finding = Finding{text, {}};
        if (what == 'T' && report.finding) report.finding->text = text;
    }
    return report;
}

/// Tells what happens while it happens: what is told outlives a crash.
class Teller {
  public:
    explicit Teller(int file) : file_(file) {}
    void line(const Line& line) const { tell('L', line.written()); }
    void failures(int count) const { tell('F', std::to_string(count)); }
    void cycle() const { tell('C', {}); }
    void finding(const Finding& finding) const {
        tell('K', finding.kind);
        tell('T', finding.text);
    }

  private:
    void tell(char what, const std::string& text) const {
        const std::string told = std::to_string(text.size()) + what + ' ' + text;
        if (write(file_, told.data(), told.size()) != static_cast<ssize_t>(told.size())) std::abort();
    }
    int file_;
};

/// Groups are numbered on: redo takes new numbers, and the second run undoes and redoes less.
std::string withoutGroupNumbers(const std::string& state) {
    static const std::regex kNumber("(roupId = | group )[0-9]+");
    return std::regex_replace(state, kNumber, "$1");
}

/// @return what the scene is in the end, and what the lines said
std::optional<std::string> runFirst(const NextLine& nextLine, const Teller& teller,
                                    std::vector<Line>& lines) {
    Walk walk;
    while (const std::optional<Line> line = nextLine(walk.scene())) {
        lines.push_back(*line);
        teller.line(*line);
        if (const auto finding = walk.run(*line)) {
            teller.finding(*finding);
            return std::nullopt;
        }
    }
    teller.failures(walk.failures());
    if (walk.hadCycle()) {
        teller.cycle();
        return std::nullopt;
    }
    if (const auto finding = walk.findStaleValue()) {
        teller.finding(*finding);
        return std::nullopt;
    }
    return withoutGroupNumbers(walk.state()) + walk.transcript();
}

void runTwice(const NextLine& nextLine, const Teller& teller) {
    std::vector<Line> lines;
    const std::optional<std::string> first = runFirst(nextLine, teller, lines);
    if (!first) return;
    for (const char* written : {"walk.obj", "targets.json"})
        fs::remove(written);
    Walk again(Walk::Checks::kNone);
    for (const Line& line : lines)
        again.run(line);
    const std::string second = withoutGroupNumbers(again.state()) + again.transcript();
    if (second != *first) teller.finding({"another run", delven::test::dumpDifference(*first, second)});
}

/// The first line of a sanitizer's report that names the fault, so that shrinking keeps to that
/// fault.
std::string crashKind(const std::string& messages, int status) {
    for (const char* mark : {"ERROR: AddressSanitizer: ", "ERROR: LeakSanitizer: ", "runtime error: "}) {
        const std::size_t at = messages.find(mark);
        if (at == std::string::npos) continue;
        const std::string line = messages.substr(at, messages.find('\n', at) - at);
        return line.substr(0, line.find(" on "));
    }
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM) return "no end";
    return WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                               : "exit status " + std::to_string(WEXITSTATUS(status));
}

[[noreturn]] void runChild(const Folder& folder, const NextLine& nextLine) {
    if (chdir(folder.path().c_str()) != 0) _exit(1);
    const int told = open("told", O_WRONLY | O_CREAT | O_APPEND, 0600);
    const int messages = open("stderr", O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(messages, STDERR_FILENO);
    dup2(messages, STDOUT_FILENO);
    alarm(kSeconds);
    runTwice(nextLine, Teller(told));
    std::exit(0);  // with the destructors, so that leaks are found
}

}  // namespace

Report walked(const NextLine& nextLine) {
    const Folder folder;
    folder.write("weights.json", "{\n\t\"3\": 0.5,\n\t\"12\": 0.25\n}");
    folder.write("weights.txt", "1 0.75\n3 0.5\n40 1\n");
    folder.write("broken.json", "{\"3\": [");
    const pid_t child = fork();
    if (child == 0) runChild(folder, nextLine);
    int status = 0;
    while (waitpid(child, &status, 0) == -1) {
    }
    Report report = reportFrom(folder.read("told"));
    if (status != 0 && !report.finding) {
        const std::string messages = folder.read("stderr");
        report.finding = Finding{crashKind(messages, status), messages};
    }
    return report;
}

Report walked(const std::vector<Line>& lines) {
    std::size_t at = 0;
    return walked(
        [&](Scene&) { return at < lines.size() ? std::optional<Line>(lines[at++]) : std::nullopt; });
}

std::vector<Line> shrunk(const Report& report, int tries) {
    std::vector<Line> lines = report.lines;
    for (std::size_t size = std::max<std::size_t>(lines.size() / 2, 1); tries > 0;) {
        bool isSmaller = false;
        for (std::size_t at = 0; at < lines.size() && tries > 0;) {
            std::vector<Line> fewer = lines;
            fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(at),
                        fewer.begin() + static_cast<std::ptrdiff_t>(std::min(at + size, lines.size())));
            --tries;
            const Report smaller = walked(fewer);
            if (smaller.finding && smaller.finding->kind == report.finding->kind) {
                lines = smaller.lines;
                isSmaller = true;
            } else {
                at += size;
            }
        }
        if (size == 1 && !isSmaller) break;
        if (size > 1) size /= 2;
    }
    return lines;
}

}  // namespace delven::walk
