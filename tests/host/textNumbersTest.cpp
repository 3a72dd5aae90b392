// Numbers as text: the ends of their ranges, and what is no number.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "text/numbers.h"

namespace host::text {
namespace {

TEST(ReadNumber, SaysAtWhichEndANumberIsOutOfRange) {
    const std::string zeros(400, '0');
    for (const std::string& small :
         std::vector<std::string>{"1e-400", "-1e-400", "0." + zeros + "1", "1" + zeros + "e-900",
                                  "." + zeros + "1e20", "0.001E-400"}) {
        const auto read = readNumber<double>(small + "x");
        EXPECT_EQ(read.value, 0.0) << small;
        EXPECT_EQ(std::signbit(read.value), small[0] == '-') << small;
        EXPECT_EQ(read.length, small.size());
        EXPECT_FALSE(read.isTooLarge) << small;
    }
    for (const std::string& large :
         std::vector<std::string>{"1e400", "-1e+400", "1" + zeros, "1" + zeros + "e-5",
                                  "0." + zeros + "1e900", "1e99999999999999999999"}) {
        const auto read = readNumber<double>(large);
        EXPECT_TRUE(read.isTooLarge) << large;
        EXPECT_EQ(read.value, large[0] == '-' ? -INFINITY : INFINITY) << large;
    }
    EXPECT_EQ(readNumber<float>("1e-50").value, 0.0F);
    EXPECT_TRUE(readNumber<float>("1e39").isTooLarge);
    EXPECT_EQ(readNumber<int>("-2147483649").value, std::numeric_limits<int>::min());
    EXPECT_TRUE(readNumber<int>("2147483648").isTooLarge);
    EXPECT_EQ(readNumber<std::int64_t>("-9223372036854775808,").length, 20U);
}

TEST(ReadNumber, TakesNothingThatIsNoNumber) {
    for (const char* text : {"", "x", "+1", " 1", "-", "e5", "."})
        EXPECT_EQ(readNumber<double>(text).length, 0U) << text;
    EXPECT_EQ(readNumber<int>("1.5").length, 1U);
}

TEST(ReadIndexRange, TakesAnIndexOrTwoInOrder) {
    const auto shown = [](const char* text) {
        const auto range = readIndexRange(text);
        return range ? std::to_string(range->first) + ' ' + std::to_string(range->last) : "none";
    };
    EXPECT_EQ(shown("3"), "3 3");
    EXPECT_EQ(shown("3:7"), "3 7");
    EXPECT_EQ(shown("2147483647"), "2147483647 2147483647");
    for (const char* text :
         {"", ":", "3:", ":3", "7:3", "-1", "0:-1", "3:7:9", "3 ", "*", "2147483648", "0:2147483648"})
        EXPECT_EQ(shown(text), "none") << text;
}

TEST(AppendNumber, RoundsAsAsked) {
    std::string text;
    appendShortest(text, 0.1F);
    appendShortest(text, -5);
    appendRounded(text += ' ', 1.0 / 3.0, 3);
    appendRounded(text += ' ', 1e300, 3);
    appendFixed(text += ' ', 2.5, 2);
    appendFixed(text += ' ', 2.5, -1);
    EXPECT_EQ(text, "0.1-5 0.333 1e+300 2.50 2");
    std::string many;
    appendFixed(many, 1e308, 400);
    EXPECT_EQ(many.size(), 309U + 1U + 400U);
}

}  // namespace
}  // namespace host::text
