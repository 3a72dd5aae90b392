#include "files/targetDataFile.h"

#include <gtest/gtest.h>

#include <locale>
#include <sstream>

namespace {

struct Reading {
    std::string list;   // the entries, joined by blanks
    std::string items;  // "target item name: vertex x y z; ..." a line each
    int refusedCount = 0;
};

Reading read(const std::string& text, const TargetRemap* remap = nullptr) {
    std::ostringstream items;
    items.imbue(std::locale::classic());
    const TargetDataContent content = readTargetData(text, remap, [&](const TargetItem& item) {
        ASSERT_EQ(item.vertices.size(), item.points.size());
        items << item.target << ' ' << item.item << ' ' << item.name << ':';
        for (std::size_t k = 0; k < item.vertices.size(); ++k) {
            items << ' ' << item.vertices[k];
            for (const double coordinate : item.points[k])
                items << ' ' << coordinate;
            items << ';';
        }
        items << '\n';
    });
    Reading reading;
    for (const std::string& entry : content.entries)
        reading.list += (reading.list.empty() ? "" : " ") + entry;
    reading.items = items.str();
    reading.refusedCount = content.refusedCount;
    return reading;
}

/// A target with the text of its "data".
std::string target(const std::string& index, const std::string& data) {
    return "\"" + index + "\": {\n\"name\": \"n" + index + "\",\n\"data\": {\n" + data + "}\n},\n";
}

const std::string kPoint = "\"6000\": {\n\"1\": [1, 2, 3]\n}\n";

TEST(TargetDataFile, GivesItemsInFileOrder) {
    const std::string half = "\"5500\": {\n\"9\": [0, 0, 1],\n\"2\": [4, 5, 6]\n},\n";
    const Reading reading = read("{\n" + target("7", half + kPoint) + target("3", kPoint) + "}");
    EXPECT_EQ(reading.list, "7,5500:6000 3,6000");
    EXPECT_EQ(reading.items, "7 5500 n7: 9 0 0 1; 2 4 5 6;\n7 6000 n7: 1 1 2 3;\n3 6000 n3: 1 1 2 3;\n");
}

TEST(TargetDataFile, BracesMayStandOnLinesOfTheirOwn) {
    const Reading reading =
        read("{\n\"7\":\n{\n\"name\": \"a\",\n\"data\":\r\n{\n\"6000\":\n\n{\"1\":\n[1,\n2, 3]}}}}");
    EXPECT_EQ(reading.list, "7,6000");
    EXPECT_EQ(reading.items, "7 6000 a: 1 1 2 3;\n");
}

TEST(TargetDataFile, RemapsInTheOrderOfTheSources) {
    const std::string text =
        "{" + target("1", kPoint) + target("2", kPoint) + target("4", kPoint) + target("2", kPoint) + "}";
    const auto remapped = [&](const TargetRemap& remap) {
        const Reading reading = read(text, &remap);
        return reading.list + '\n' + reading.items;
    };
    EXPECT_EQ(remapped({{2}, {7}}), "1,6000 7,6000 4,6000 2,6000\n7 6000 n2: 1 1 2 3;\n");
    EXPECT_EQ(remapped({{4, 2}, {0, 1}}),
              "1,6000 2,6000 0,6000 1,6000\n0 6000 n4: 1 1 2 3;\n1 6000 n2: 1 1 2 3;\n");
    EXPECT_EQ(remapped({{9, 1}, {0, 1}}), "1,6000 2,6000 4,6000 2,6000\n") << "the first source never comes";
    EXPECT_EQ(remapped({}), "1,6000 2,6000 4,6000 2,6000\n");
}

TEST(TargetDataFile, SurvivesBrokenStructure) {
    const auto expect = [](const std::string& text, const char* list, const char* items) {
        const Reading reading = read(text);
        EXPECT_EQ(reading.list, list) << text;
        EXPECT_EQ(reading.items, items) << text;
    };
    const char* const one = "3 6000 n3: 1 1 2 3;\n";
    const std::string three = target("3", kPoint);
    expect("", "", "");
    expect(("{" + three).substr(0, 55), "", "");
    expect("{\"3\": {\n\"data\": {\n" + kPoint, "", "3 6000 : 1 1 2 3;\n");
    expect("}}]{" + three + "}}}}" + target("4", kPoint), "3,6000", one);
    expect("{\"5\" \"6\", \"7\":\n" + target("3", "\"1\"\n\"2\":\n" + kPoint) + "}", "3,6000", one);
    expect("{" + target("3", kPoint + kPoint) + "}", "3,6000:6000", (std::string(one) + one).c_str());
    expect("{" + target("x", kPoint) + target("3", "\"y\": {\"1\": [1, 2, 3]}") + "}", "3,", "");
    expect("{{{{\"1\": [1, 2, 3]}}}}", "", "");
}

TEST(TargetDataFile, DropsThePointsThatAreNone) {
    const auto points = [](const std::string& text) {
        return read("{" + target("3", "\"6000\": {" + text + "}\n") + "}").items;
    };
    EXPECT_EQ(points("\"1\": [1, 2], \"2\": [1, 2, 3, 4], \"3\": [], \"4\": [1, 2, 3],"),
              "3 6000 n3: 4 1 2 3;\n");
    EXPECT_EQ(points("\"1\": [a, nan, 1e-999]"), "3 6000 n3: 1 0 0 0;\n");
    EXPECT_EQ(points("\"1\": [0, -1e999, 0], \"2\": [1, 2, 3]"), "3 6000 n3: 2 1 2 3;\n");
    EXPECT_EQ(points("\"1\": [1, 2, 3] [4, 5, 6]"), "3 6000 n3: 1 1 2 3;\n");
    EXPECT_EQ(points("\"-1\": [1, 2, 3], \"z\": [1, 2, 3]"), "3 6000 n3:\n");
    EXPECT_EQ(points("\"1\": {\"2\": [1, 2, 3]} \"4\": [5, 6, 7]"), "3 6000 n3: 4 5 6 7;\n");
    EXPECT_EQ(points("\"1\": [1, 2, 3"), "");
}

TEST(TargetDataFile, RefusesIndicesThatAreNone) {
    const std::string item =
        "{\n\"2147483647\": [1, 2, 3],\n\"2147483648\": [1, 2, 3],\n\"-1\": [1, 2, 3]\n},\n";
    const std::string data = "\"2147483647\": " + item + "\"99999999999\": " + item + "\"-6000\": " + item;
    const std::string text =
        "{\n" + target("2147483647", data) + target("4294967299", kPoint) + target("-1", kPoint) + "}";
    const Reading reading = read(text);
    EXPECT_EQ(reading.list, "2147483647,2147483647");
    EXPECT_EQ(reading.items, "2147483647 2147483647 n2147483647: 2147483647 1 2 3;\n");
    EXPECT_EQ(reading.refusedCount, 2 + 2 + 3 * 2) << "targets, items, and vertices of each of the items";
    const TargetRemap remap{{2147483647}, {-7}};
    EXPECT_EQ(read(text, &remap).list + read(text, &remap).items, "");
    EXPECT_EQ(read("{" + target("3", kPoint + "\"x\": {}, \"\": 1") + "}").refusedCount, 0)
        << "no numbers at all";
}

TEST(TargetDataFile, PassesOverAWideEncoding) {
    const std::string text = "{" + target("3", kPoint) + "}";
    std::string wide = "\xFF\xFE";
    for (const char c : text)
        (wide += c) += '\0';
    EXPECT_EQ(read(wide).list + read(wide).items, "");
    EXPECT_EQ(read("\xFE\xFF" + wide.substr(3)).list, "") << "the other order of bytes";
    EXPECT_EQ(read("\xEF\xBB\xBF" + text).list, "3,6000");
}

TEST(LegalAlias, KeepsWhatIsLegalOnly) {
    EXPECT_EQ(legalAlias("smile_L2", 5), "smile_L2");
    EXPECT_EQ(legalAlias("2cheeks", 5), "_2cheeks");
    EXPECT_EQ(legalAlias("l\xC3\xA4_a`b;c'd$e\\f", 5), "l_abcdef");
    EXPECT_EQ(legalAlias("`;'$\\\"", 5), "weight_5");
}

}  // namespace
