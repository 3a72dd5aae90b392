#include "files/jsonText.h"

#include <gtest/gtest.h>

#include <locale>
#include <sstream>
#include <string>
#include <vector>

#include "files/numberText.h"

namespace {

TEST(JsonWriter, LaysOutEachLine) {
    JsonWriter writer;
    std::string key = "name";
    std::string value = "a \"b\"\\";
    writer.openObject();
    writer.openObject(12);
    writer.writeStringMember(std::move(key), std::move(value));
    writer.openObject("data");
    writer.writeIndexPoint(7, {-0.5, 1.0 / 3.0, 1.23e-7});
    writer.writeIndexPoint(2147483647, {0, 1e6, -123456789});
    writer.closeObject();
    writer.closeObject();
    const std::string first = writer.text();
    writer.clear();
    writer.writeIndexValue(0, 0.5);
    writer.writeIndexValue(-5, 0.25);
    writer.openObject(3);
    writer.closeObject();
    writer.closeObject();
    EXPECT_EQ(first + writer.text(),
              "{\n\t\"12\": {\n\t\t\"name\": \"a \"b\"\\\",\n\t\t\"data\": {\n"
              "\t\t\t\"7\": [-0.5, 0.333333, 1.23e-07],\n"
              "\t\t\t\"2147483647\": [0, 1e+06, -1.23457e+08]\n"
              "\t\t}\n\t},\n\t\"0\": 0.5,\n\t\"-5\": 0.25,\n\t\"3\": {\n\t}\n}");
    EXPECT_EQ(key, "");
    EXPECT_EQ(value, "");
}

TEST(JsonScanner, StopsAtWhatMattersOnly) {
    JsonScanner scanner("\xEF\xBB\xBF , {x]\n\"12\":[1] }");
    std::string seen;
    for (char c = scanner.next(); c != '\0'; c = scanner.next()) {
        seen += c;
        if (c == '"') seen += scanner.readQuoted();
    }
    EXPECT_EQ(seen, "{\"12:[}");
    EXPECT_EQ(scanner.next(), '\0');
    EXPECT_EQ(JsonScanner("never closed").readQuoted(), "never closed");
}

/// What a read gives, and the character that the scanner comes to afterwards.
template <typename Read>
std::string scanned(std::string_view text, Read read) {
    JsonScanner scanner(text);
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << read(scanner) << " then ";
    const char next = scanner.next();
    if (next != '\0') out << next;
    return out.str();
}

TEST(JsonScanner, ReadsAValueUpToTheLineEnd) {
    const auto value = [](std::string_view text) {
        return scanned(text, [](JsonScanner& scanner) { return scanner.readValue(); });
    };
    EXPECT_EQ(value(" \"smile\",\n{"), "smile then {");
    EXPECT_EQ(value(" \"a b\tc\"\n"), "abc then ");
    EXPECT_EQ(value(" \"cut\"short\", {\n}"), "cut then }");
    EXPECT_EQ(value(" 0.5,\r\n["), "0.5, then [");
    EXPECT_EQ(value(" x {[:\n\""), "x{[: then \"");
    EXPECT_EQ(value("\n\"next\""), " then \"");
    EXPECT_EQ(value(" \"open\n}"), "open then }");
}

TEST(JsonScanner, LeavesBracesAndBracketsAfterAColonToTheStructure) {
    for (const char* text : {" {", "\t[1]", "}", " ]", "", "  ", " \n\t{", "\r\n["})
        EXPECT_FALSE(JsonScanner(text).hasValue()) << text;
    for (const char* text : {" \"{\"", "1", " ,", " \n}", "\n\"{"})
        EXPECT_TRUE(JsonScanner(text).hasValue()) << text;
}

TEST(JsonScanner, ReadsANumberUpToACommaOrLineEnd) {
    const auto number = [](std::string_view text) {
        return scanned(text, [](JsonScanner& scanner) { return scanner.readNumberValue(); });
    };
    EXPECT_EQ(number(" 0.25, \"5\""), "0.25 then \"");
    EXPECT_EQ(number(" 1 . 5\r\n}"), "1.5 then }");
    EXPECT_EQ(number(" \"0.5\"\n{"), "0 then {");
}

TEST(JsonScanner, ReadsAListOfNumbers) {
    const auto list = [](std::string_view text) {
        return scanned(text, [](JsonScanner& scanner) {
            std::vector<double> numbers{9, 9};
            std::string read = scanner.readNumberList(numbers) ? "" : "open ";
            for (const double number : numbers) {
                char digits[kFixedRoom];
                read += std::string(digits, writeFixed(digits, number)).substr(0, 4) + ' ';
            }
            return read;
        });
    };
    EXPECT_EQ(list("0, -0.5, 2e1],{"), "0.00 -0.5 20.0  then {");
    EXPECT_EQ(list("\n\t1 ,\r\n\t2\n\t]"), "1.00 2.00  then ");
    EXPECT_EQ(list("1 2, 1\n.\t5]"), "12.0 1.50  then ");
    EXPECT_EQ(list("a, nan, 3x, \"4\"]}"), "0.00 0.00 3.00 0.00  then }");
    EXPECT_EQ(list("1,]"), "1.00 0.00  then ");
    EXPECT_EQ(list("1, 2"), "open 1.00 2.00  then ");
    EXPECT_EQ(list(""), "open  then ");
}

}  // namespace
