#include "mel/regex.h"

#include <algorithm>

namespace host::mel {

namespace {

constexpr int kMaximumGroups = 100;

/// Reads `[...]` after the opening bracket, and moves `at` past the closing one. False if there is none.
bool readSet(std::string_view pattern, std::size_t& at, std::vector<bool>& set) {
    set.assign(256, false);
    const bool negated = at < pattern.size() && (pattern[at] == '^' || pattern[at] == '!');
    if (negated) ++at;
    for (bool first = true; at < pattern.size() && (first || pattern[at] != ']'); first = false) {
        if (pattern[at] == '\\' && at + 1 < pattern.size()) ++at;
        const auto low = static_cast<unsigned char>(pattern[at++]);
        unsigned char high = low;
        if (at + 1 < pattern.size() && pattern[at] == '-' && pattern[at + 1] != ']') {
            high = static_cast<unsigned char>(pattern[at + 1]);
            at += 2;
        }
        for (int c = low; c <= high; ++c)
            set[static_cast<std::size_t>(c)] = true;
    }
    if (at >= pattern.size()) return false;
    ++at;
    if (negated) set.flip();
    return true;
}

}  // namespace

/// Compiles a pattern into instructions of a small machine that follows all alternatives at once.
class RegexCompiler {
  public:
    RegexCompiler(std::string_view pattern, Regex& regex) : pattern_(pattern), regex_(regex) {}

    bool run() {
        const bool ok = alternatives(0) && at_ == pattern_.size();
        emit(Kind::Match);
        return ok;
    }

  private:
    using Kind = Regex::Instruction::Kind;

    std::uint32_t emit(Kind kind, std::uint32_t a = 0, std::uint32_t b = 0) {
        Regex::Instruction instruction;
        instruction.kind = kind;
        instruction.a = a;
        instruction.b = b;
        regex_.code_.push_back(instruction);
        return here() - 1;
    }
    std::uint32_t here() const { return static_cast<std::uint32_t>(regex_.code_.size()); }

    /// Makes room for one instruction at `where`. Later jumps to this place or further on are adjusted.
    void insert(std::uint32_t where) {
        for (std::uint32_t i = where; i < here(); ++i) {
            Regex::Instruction& instruction = regex_.code_[i];
            if (instruction.kind != Kind::Split && instruction.kind != Kind::Jump) continue;
            instruction.a += instruction.a >= where ? 1 : 0;
            instruction.b += instruction.b >= where ? 1 : 0;
        }
        regex_.code_.insert(regex_.code_.begin() + where, Regex::Instruction());
    }

    bool alternatives(int depth) {
        if (depth > kMaximumGroups) return false;
        const std::uint32_t start = here();
        if (!sequence(depth)) return false;
        std::vector<std::uint32_t> ends;
        std::uint32_t branch = start;
        while (at_ < pattern_.size() && pattern_[at_] == '|') {
            ++at_;
            insert(branch);
            ends.push_back(emit(Kind::Jump));
            regex_.code_[branch].kind = Kind::Split;
            regex_.code_[branch].a = branch + 1;
            regex_.code_[branch].b = here();
            branch = here();
            if (!sequence(depth)) return false;
        }
        for (const std::uint32_t end : ends)
            regex_.code_[end].a = here();
        return true;
    }

    bool sequence(int depth) {
        while (at_ < pattern_.size() && pattern_[at_] != '|' && pattern_[at_] != ')') {
            const std::uint32_t start = here();
            if (!atom(depth)) return false;
            while (at_ < pattern_.size() &&
                   (pattern_[at_] == '*' || pattern_[at_] == '+' || pattern_[at_] == '?'))
                repeat(start, pattern_[at_++]);
        }
        return true;
    }

    void repeat(std::uint32_t start, char how) {
        if (how == '+') {
            emit(Kind::Split, start, here() + 1);
            return;
        }
        insert(start);
        if (how == '*') emit(Kind::Jump, start);
        regex_.code_[start].kind = Kind::Split;
        regex_.code_[start].a = start + 1;
        regex_.code_[start].b = here();
    }

    bool atom(int depth) {
        const char c = pattern_[at_++];
        switch (c) {
            case '*':
            case '+':
            case '?':
                return false;
            case '.':
                emit(Kind::Any);
                return true;
            case '^':
                emit(Kind::LineStart);
                return true;
            case '$':
                emit(Kind::LineEnd);
                return true;
            case '(':
                if (!alternatives(depth + 1) || at_ >= pattern_.size()) return false;
                ++at_;
                return true;
            case '[': {
                std::vector<bool> set;
                if (!readSet(pattern_, at_, set)) return false;
                emit(Kind::Set, static_cast<std::uint32_t>(regex_.sets_.size()));
                regex_.sets_.push_back(std::move(set));
                return true;
            }
            case '\\':
                return at_ < pattern_.size() && byte(pattern_[at_++]);
            default:
                return byte(c);
        }
    }

    bool byte(char c) {
        emit(Kind::Byte);
        regex_.code_.back().byte = static_cast<unsigned char>(c);
        return true;
    }

    std::string_view pattern_;
    Regex& regex_;
    std::size_t at_ = 0;
};

std::optional<Regex> Regex::compile(std::string_view pattern) {
    Regex regex;
    if (!RegexCompiler(pattern, regex).run()) return std::nullopt;
    return regex;
}

bool Regex::accepts(const Instruction& instruction, unsigned char byte) const {
    switch (instruction.kind) {
        case Instruction::Kind::Byte:
            return instruction.byte == byte;
        case Instruction::Kind::Any:
            return true;
        case Instruction::Kind::Set:
            return sets_[instruction.a][byte];
        default:
            return false;
    }
}

/// All ways in which a match may continue at one place of the text. Those that began earlier come first.
struct Regex::Search {
    struct Thread {
        std::uint32_t instruction;
        std::size_t start;
    };

    std::size_t textLength;
    std::vector<Thread> threads;
    std::vector<std::uint32_t> marks;  // by instruction: generation in which it was last reached
    std::uint32_t generation = 0;
    std::vector<std::uint32_t> open;
};

/// Adds an instruction and all that can be reached from it without reading a byte. Each is added once per
/// place, so that the earliest start keeps it.
void Regex::follow(std::uint32_t from, std::size_t start, std::size_t at, Search& search) const {
    search.open.assign(1, from);
    while (!search.open.empty()) {
        const std::uint32_t index = search.open.back();
        search.open.pop_back();
        if (search.marks[index] == search.generation) continue;
        search.marks[index] = search.generation;
        const Instruction& instruction = code_[index];
        switch (instruction.kind) {
            case Instruction::Kind::Jump:
                search.open.push_back(instruction.a);
                break;
            case Instruction::Kind::Split:
                search.open.push_back(instruction.b);
                search.open.push_back(instruction.a);
                break;
            case Instruction::Kind::LineStart:
                if (at == 0) search.open.push_back(index + 1);
                break;
            case Instruction::Kind::LineEnd:
                if (at == search.textLength) search.open.push_back(index + 1);
                break;
            default:
                search.threads.push_back({index, start});
        }
    }
}

std::optional<std::pair<std::size_t, std::size_t>> Regex::search(std::string_view text) const {
    std::optional<std::pair<std::size_t, std::size_t>> best;
    Search search;
    search.textLength = text.size();
    search.marks.assign(code_.size(), 0);
    search.generation = 1;
    std::vector<Search::Thread> current;
    for (std::size_t at = 0; at <= text.size(); ++at) {
        if (!best) follow(0, at, at, search);
        current.swap(search.threads);
        search.threads.clear();
        ++search.generation;
        for (const Search::Thread& thread : current) {
            if (best && thread.start > best->first) break;
            const Instruction& instruction = code_[thread.instruction];
            if (instruction.kind == Instruction::Kind::Match)
                best = std::make_pair(thread.start, at);
            else if (at < text.size() && accepts(instruction, static_cast<unsigned char>(text[at])))
                follow(thread.instruction + 1, thread.start, at + 1, search);
        }
        if (best && search.threads.empty()) break;
    }
    return best;
}

bool globMatches(std::string_view text, std::string_view pattern) {
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t starText = 0;
    std::size_t starPattern = std::string_view::npos;
    while (t < text.size()) {
        std::size_t next = p + 1;
        bool fits = p < pattern.size() && pattern[p] != '*';
        if (fits && pattern[p] == '[') {
            std::vector<bool> set;
            fits = readSet(pattern, next, set) && set[static_cast<unsigned char>(text[t])];
        } else if (fits && pattern[p] == '\\' && p + 1 < pattern.size()) {
            fits = pattern[p + 1] == text[t];
            next = p + 2;
        } else if (fits) {
            fits = pattern[p] == '?' || pattern[p] == text[t];
        }
        if (fits) {
            ++t;
            p = next;
        } else if (p < pattern.size() && pattern[p] == '*') {
            starPattern = ++p;
            starText = t;
        } else if (starPattern != std::string_view::npos) {
            p = starPattern;
            t = ++starText;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

}  // namespace host::mel
