#include <gtest/gtest.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<std::string> piecesOf(const MString& text, char separator) {
    MStringArray pieces;
    pieces.append("left over from before");
    EXPECT_EQ(text.split(separator, pieces), MS::kSuccess);
    std::vector<std::string> result;
    for (const MString& piece : pieces) {
        result.emplace_back(piece.asChar());
    }
    return result;
}

struct NumberForm {
    double value;
    const char* text;
};

class MStringNumber : public testing::TestWithParam<NumberForm> {};

TEST_P(MStringNumber, hasTheSameFormHoweverItGetsIntoTheText) {
    const auto [value, text] = GetParam();
    MString appended("<");
    appended += value;
    MString assigned;
    assigned = value;
    MString set;
    set.set(value);
    EXPECT_STREQ(appended.asChar(), (std::string("<") + text).c_str());
    EXPECT_STREQ((MString("<") + value).asChar(), (std::string("<") + text).c_str());
    EXPECT_STREQ(assigned.asChar(), text);
    EXPECT_STREQ(set.asChar(), text);
}

INSTANTIATE_TEST_SUITE_P(Forms, MStringNumber,
                         testing::Values(NumberForm{0.0, "0"}, NumberForm{-0.0, "0"}, NumberForm{1.0, "1"},
                                         NumberForm{-7.0, "-7"}, NumberForm{12.0, "12"},
                                         NumberForm{0.5, "0.5"}, NumberForm{0.125, "0.125"},
                                         NumberForm{-2.75, "-2.75"}, NumberForm{0.1, "0.1"},
                                         NumberForm{1.0 / 3.0, "0.3333333333"}, NumberForm{1e5, "100000"},
                                         NumberForm{123456789.0, "123456789"},
                                         NumberForm{12345678901234.0, "12345678901234"},
                                         NumberForm{999999999999999.0, "999999999999999"},
                                         NumberForm{-999999999999999.0, "-999999999999999"},
                                         NumberForm{1e15, "1e+15"}, NumberForm{1.5e-7, "1.5e-07"}));

TEST(MString, appendsEveryNumberTypeThatItHasAnOperatorFor) {
    MString text;
    text += -3;
    text += " ";
    text += 4000000000U;
    text += " ";
    text += 0.25f;
    text += " ";
    text += 0.1f;
    text += " ";
    text += 16777216.0f;
    EXPECT_STREQ(text.asChar(), "-3 4000000000 0.25 0.1 16777216");
}

TEST(MString, addsAnIntegerThroughTheDoubleOverload) {
    EXPECT_STREQ((MString("vtx[") + 12 + "]").asChar(), "vtx[12]");
    EXPECT_STREQ((MString("vtx[") + 2147483647 + "]").asChar(), "vtx[2147483647]");
    const unsigned int large = 4294967295U;
    EXPECT_STREQ((MString("vtx[") + large + "]").asChar(), "vtx[4294967295]");
}

TEST(MString, printsAFixedNumberOfDecimals) {
    MString text;
    text.set(2.0, 3);
    EXPECT_STREQ(text.asChar(), "2.000");
    text.set(-0.0625, 2);
    EXPECT_STREQ(text.asChar(), "-0.06");
    text.set(1e20, 0);
    EXPECT_STREQ(text.asChar(), "100000000000000000000");
    text.set(2.25, -1);
    EXPECT_STREQ(text.asChar(), "2");
}

TEST(MString, joinsTextsFromBothSides) {
    MString text("mesh");
    text += ".";
    text += MString("vtx");
    text += text;
    EXPECT_STREQ(text.asChar(), "mesh.vtxmesh.vtx");
    EXPECT_STREQ(("|" + MString("a") + MString("b") + "c").asChar(), "|abc");
}

TEST(MString, takesANullPointerAsTheEmptyText) {
    const char* nothing = nullptr;
    const wchar_t* nothingWide = nullptr;
    MString text("before");
    text += nothing;
    EXPECT_STREQ(text.asChar(), "before");
    text = nothing;
    EXPECT_EQ(text.length(), 0U);
    EXPECT_TRUE(text == nothing);
    EXPECT_EQ(MString(nothing).length(), 0U);
    EXPECT_EQ(MString(nothing, 4).length(), 0U);
    EXPECT_EQ(MString(nothingWide).length(), 0U);
    EXPECT_STREQ((nothing + MString("x")).asChar(), "x");
}

TEST(MString, comparesWithTextsOfBothKinds) {
    const MString text("abc");
    EXPECT_TRUE(text == "abc");
    EXPECT_TRUE(text == MString("abc"));
    EXPECT_TRUE(text != "abd");
    EXPECT_TRUE(text != MString("ab"));
    EXPECT_FALSE(text != "abc");
    EXPECT_TRUE(MString() == "");
}

TEST(MString, keepsItsTextWhenACopyChanges) {
    MString text("original");
    EXPECT_EQ(std::wstring(text.asWChar()), L"original");
    MString copy(text);
    copy += "!";
    EXPECT_STREQ(text.asChar(), "original");
    EXPECT_STREQ(copy.asChar(), "original!");
    EXPECT_EQ(std::wstring(copy.asWChar()), L"original!");
    const MString moved(std::move(copy));
    EXPECT_STREQ(moved.asChar(), "original!");
    text.clear();
    EXPECT_EQ(std::wstring(text.asWChar()), L"");
}

TEST(MString, canBeSetToAPartOfItself) {
    MString text("abcdef");
    text.set(text.asChar() + 2);
    EXPECT_STREQ(text.asChar(), "cdef");
    text.set(text.asChar() + 1, 2);
    EXPECT_STREQ(text.asChar(), "de");
}

TEST(MString, countsBytesAndCharactersApart) {
    const MString text("K\xc3\xb6rper \xf0\x9f\x99\x82");  // o with dots above: 2 bytes; a face: 4 bytes
    EXPECT_EQ(text.length(), 12U);
    EXPECT_EQ(text.numChars(), sizeof(wchar_t) == 4 ? 8U : 9U);
    EXPECT_EQ(text.indexW(L'r'), 2);
    EXPECT_EQ(text.index('r'), 3);
    EXPECT_EQ(text.rindexW(L'r'), 5);
    EXPECT_STREQ(text.substringW(1, 2).asChar(), "\xc3\xb6r");
    int bytes = 0;
    EXPECT_STREQ(text.asUTF8(bytes), text.asChar());
    EXPECT_EQ(bytes, 12);
}

TEST(MString, returnsFromWideCharactersUnchanged) {
    for (const char* original :
         {"", "plain", "\xc3\xa4\xc3\xb6\xc3\xbc", "\xe6\x97\xa5\xe6\x9c\xac", "\xf0\x9f\x99\x82"}) {
        int length = 0;
        const MString text(original);
        const wchar_t* wide = text.asWChar(length);
        EXPECT_STREQ(MString(wide).asChar(), original);
        EXPECT_STREQ(MString(wide, length).asChar(), original);
        MString set("x");
        set.setWChar(wide);
        EXPECT_STREQ(set.asChar(), original);
    }
}

TEST(MString, survivesBytesThatAreNoUtf8) {
    const std::string replacement = "\xef\xbf\xbd";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"a\xff"
         "b",
         "a" + replacement + "b"},  // no leading byte at all
        {"\xc3", replacement},      // cut off
        {"\xc3"
         "a",
         replacement + "a"},                                        // continuation missing
        {"\xc0\x80", replacement + replacement},                    // longer than it need be
        {"\xed\xa0\x80", replacement + replacement + replacement},  // half a surrogate pair
        {"\xf4\x90\x80\x80",
         replacement + replacement + replacement + replacement}};  // beyond the last character
    for (const auto& [broken, repaired] : cases) {
        EXPECT_EQ(MString(MString(broken.c_str()).asWChar()).asChar(), repaired);
        EXPECT_STREQ(MString(broken.c_str()).asChar(), broken.c_str()) << "the bytes themselves must stay";
    }
}

struct Span {
    int start;
    int end;
    const char* text;
};

class MStringSubstring : public testing::TestWithParam<Span> {};

TEST_P(MStringSubstring, includesBothEndsAndIsClipped) {
    const auto [start, end, text] = GetParam();
    EXPECT_STREQ(MString("abcdef").substring(start, end).asChar(), text);
    EXPECT_STREQ(MString("abcdef").substringW(start, end).asChar(), text);
}

INSTANTIATE_TEST_SUITE_P(Spans, MStringSubstring,
                         testing::Values(Span{0, 0, "a"}, Span{0, 5, "abcdef"}, Span{1, 3, "bcd"},
                                         Span{5, 5, "f"}, Span{4, 99, "ef"}, Span{-3, 1, "ab"},
                                         Span{3, 2, ""}, Span{6, 8, ""}, Span{-5, -1, ""}));

TEST(MString, findsFirstAndLastCharacter) {
    const MString path("a|b|c");
    EXPECT_EQ(path.index('|'), 1);
    EXPECT_EQ(path.rindex('|'), 3);
    EXPECT_EQ(path.index('x'), -1);
    EXPECT_EQ(path.rindex('x'), -1);
    EXPECT_EQ(MString().index('|'), -1);
    EXPECT_EQ(path.indexW(L'x'), -1);
}

struct Split {
    const char* text;
    std::vector<std::string> pieces;
};

class MStringSplit : public testing::TestWithParam<Split> {};

TEST_P(MStringSplit, leavesOutEmptyPieces) {
    EXPECT_EQ(piecesOf(GetParam().text, ','), GetParam().pieces);
}

INSTANTIATE_TEST_SUITE_P(Texts, MStringSplit,
                         testing::Values(Split{"a,b", {"a", "b"}},
                                         Split{"1,10,,5,node", {"1", "10", "5", "node"}},
                                         Split{",,a,,", {"a"}}, Split{"no separator", {"no separator"}},
                                         Split{",,", {}}, Split{"", {}}, Split{"a, b", {"a", " b"}}));

TEST(MString, canBeSplitIntoTheArrayThatHoldsIt) {
    MStringArray array;
    array.append("x.y.z");
    array[0].split('.', array);
    ASSERT_EQ(array.length(), 3U);
    EXPECT_TRUE(array[2] == "z");
}

struct Reading {
    const char* text;
    int asInt;
    double asDouble;
    bool isInt;
    bool isDouble;
};

class MStringReading : public testing::TestWithParam<Reading> {};

TEST_P(MStringReading, takesTheLeadingNumber) {
    const Reading& expected = GetParam();
    const MString text(expected.text);
    EXPECT_EQ(text.asInt(), expected.asInt);
    EXPECT_DOUBLE_EQ(text.asDouble(), expected.asDouble);
    EXPECT_FLOAT_EQ(text.asFloat(), static_cast<float>(expected.asDouble));
    EXPECT_EQ(text.isInt(), expected.isInt);
    EXPECT_EQ(text.isDouble(), expected.isDouble);
    EXPECT_EQ(text.isFloat(), expected.isDouble);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, MStringReading,
    testing::Values(Reading{"12", 12, 12.0, true, true}, Reading{"-3", -3, -3.0, true, true},
                    Reading{"12.75", 12, 12.75, false, true}, Reading{"1e3", 1, 1000.0, false, true},
                    Reading{"12abc", 12, 12.0, false, false}, Reading{"abc", 0, 0.0, false, false},
                    Reading{"", 0, 0.0, false, false}, Reading{"-", 0, 0.0, false, false},
                    Reading{" 7", 7, 7.0, true, true}));

TEST(MString, tellsWhetherANumberFitsItsType) {
    EXPECT_TRUE(MString("2147483647").isInt());
    EXPECT_FALSE(MString("2147483648").isInt());
    EXPECT_EQ(MString("2147483648").asInt(), std::numeric_limits<int>::max());
    EXPECT_TRUE(MString("2147483648").isUnsigned());
    EXPECT_EQ(MString("4294967295").asUnsigned(), 4294967295U);
    EXPECT_FALSE(MString("-1").isUnsigned());
    EXPECT_EQ(MString("-1").asUnsigned(), 0U);
    EXPECT_TRUE(MString("-32768").isShort());
    EXPECT_FALSE(MString("32768").isShort());
    EXPECT_EQ(MString("-99999").asShort(), std::numeric_limits<short>::min());
}

TEST(MString, changesCaseInPlace) {
    MString text("aBc\xc3\x84");
    EXPECT_STREQ(text.toUpperCase().asChar(), "ABC\xc3\x84");
    EXPECT_STREQ(text.toLowerCase().asChar(), "abc\xc3\x84");
}

TEST(MString, writesItselfToAStream) {
    std::ostringstream out;
    out << MString("a") << MString() << MString("b");
    EXPECT_EQ(out.str(), "ab");
}

}  // namespace
