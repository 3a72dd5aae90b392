#include "mel/regex.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace host::mel {
namespace {

std::string found(const std::string& pattern, const std::string& text) {
    const std::optional<Regex> regex = Regex::compile(pattern);
    if (!regex) return "bad pattern";
    const auto match = regex->search(text);
    return match
               ? std::to_string(match->first) + ":" + text.substr(match->first, match->second - match->first)
               : "none";
}

TEST(Regex, PrefersTheLeftmostAndThenTheLongestMatch) {
    EXPECT_EQ(found("a|ab|abc", "xabcd"), "1:abc");
    EXPECT_EQ(found("b*", "aabb"), "0:");
    EXPECT_EQ(found("b+", "aabb"), "2:bb");
    EXPECT_EQ(found("(a|b)*c", "ababxabc"), "5:abc");
    EXPECT_EQ(found("^b", "ab"), "none");
    EXPECT_EQ(found("b$", "bab"), "2:b");
    EXPECT_EQ(found("^$", ""), "0:");
    EXPECT_EQ(found("a$b", "ab"), "none");
}

TEST(Regex, KnowsSetsAndEscapes) {
    EXPECT_EQ(found("[a-cx]+", "zbxcay"), "1:bxca");
    EXPECT_EQ(found("[^0-9]+", "12ab3"), "2:ab");
    EXPECT_EQ(found("[]a]+", "x]a"), "1:]a");
    EXPECT_EQ(found("[a-]+", "b-a"), "1:-a");
    EXPECT_EQ(found("[\\]]", "a]"), "1:]");
    EXPECT_EQ(found("\\.\\*", "a.*"), "1:.*");
    EXPECT_EQ(found(".", "\n"), "0:\n");
}

TEST(Regex, RefusesWhatIsNotWellFormed) {
    for (const char* pattern : {"*", "+a", "a|*", "(", "(a", "a)", "[a", "[", "[]", "\\", "(?)"})
        EXPECT_EQ(found(pattern, "a"), "bad pattern") << pattern;
    EXPECT_EQ(found(std::string(5000, '('), "a"), "bad pattern");
}

TEST(Regex, StaysLinearWhereBacktrackingExplodes) {
    const std::string text(20'000, 'a');
    EXPECT_EQ(found("(a*)*b", text), "none");
    EXPECT_EQ(found("(a|aa)+$", text), "0:" + text);
}

/// A pattern as a tree, with the set of all ends that a match from a given start can have: slow and plain.
struct Pattern {
    enum Kind { Byte, Any, Sequence, Either, Star, Plus, Optional } kind = Byte;
    char byte = 'a';
    std::vector<Pattern> parts;

    std::string text() const {
        switch (kind) {
            case Byte:
                return std::string(1, byte);
            case Any:
                return ".";
            case Sequence:
                return parts[0].text() + parts[1].text();
            case Either:
                return "(" + parts[0].text() + "|" + parts[1].text() + ")";
            case Star:
                return "(" + parts[0].text() + ")*";
            case Plus:
                return "(" + parts[0].text() + ")+";
            case Optional:
                return "(" + parts[0].text() + ")?";
        }
        return "";
    }

    std::set<std::size_t> ends(const std::string& subject, std::size_t start) const {
        switch (kind) {
            case Byte:
            case Any:
                if (start < subject.size() && (kind == Any || subject[start] == byte)) return {start + 1};
                return {};
            case Sequence:
                return after(parts[0].ends(subject, start), parts[1], subject);
            case Either:
                return joined(parts[0].ends(subject, start), parts[1].ends(subject, start));
            case Optional:
                return joined({start}, parts[0].ends(subject, start));
            case Star:
                return repeated({start}, subject);
            case Plus:
                return repeated(parts[0].ends(subject, start), subject);
        }
        return {};
    }

  private:
    static std::set<std::size_t> joined(std::set<std::size_t> a, const std::set<std::size_t>& b) {
        a.insert(b.begin(), b.end());
        return a;
    }
    static std::set<std::size_t> after(const std::set<std::size_t>& starts, const Pattern& next,
                                       const std::string& subject) {
        std::set<std::size_t> result;
        for (const std::size_t start : starts)
            result = joined(std::move(result), next.ends(subject, start));
        return result;
    }
    std::set<std::size_t> repeated(std::set<std::size_t> reached, const std::string& subject) const {
        for (std::size_t before = 0; before != reached.size();) {
            before = reached.size();
            reached = joined(reached, after(reached, parts[0], subject));
        }
        return reached;
    }
};

Pattern randomPattern(std::mt19937& random, int depth) {
    Pattern pattern;
    pattern.kind = static_cast<Pattern::Kind>(depth == 0 ? random() % 2 : random() % 7);
    pattern.byte = static_cast<char>('a' + random() % 3);
    const int parts = pattern.kind <= Pattern::Any ? 0 : pattern.kind <= Pattern::Either ? 2 : 1;
    for (int i = 0; i < parts; ++i)
        pattern.parts.push_back(randomPattern(random, depth - 1));
    return pattern;
}

TEST(Regex, AgreesWithAPlainSearchOnRandomPatterns) {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        const Pattern pattern = randomPattern(random, 4);
        std::string subject;
        for (std::size_t i = random() % 9; i > 0; --i)
            subject += static_cast<char>('a' + random() % 3);
        std::string expected = "none";
        for (std::size_t start = 0; start <= subject.size() && expected == "none"; ++start) {
            const std::set<std::size_t> ends = pattern.ends(subject, start);
            if (!ends.empty())
                expected = std::to_string(start) + ":" + subject.substr(start, *ends.rbegin() - start);
        }
        ASSERT_EQ(found(pattern.text(), subject), expected) << pattern.text() << " in " << subject;
    }
}

TEST(Glob, FitsTheWholeText) {
    EXPECT_TRUE(globMatches("pCubeShape1", "*Shape?"));
    EXPECT_TRUE(globMatches("aXbXc", "a*X*c"));
    EXPECT_TRUE(globMatches("a*b", "a\\*b"));
    EXPECT_TRUE(globMatches("", "**"));
    EXPECT_TRUE(globMatches("b1", "[a-c][0-9]"));
    EXPECT_FALSE(globMatches("d1", "[a-c][0-9]"));
    EXPECT_FALSE(globMatches("d1", "[a-c"));
    EXPECT_FALSE(globMatches("abc", "ab"));
    EXPECT_FALSE(globMatches("ab", "abc*d"));
}

}  // namespace
}  // namespace host::mel
