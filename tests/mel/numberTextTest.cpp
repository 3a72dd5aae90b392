#include "mel/numberText.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace host::mel {
namespace {

class NumberText : public testing::TestWithParam<const char*> {};

TEST_P(NumberText, ReadsAsTheNearestDouble) {
    const std::string text = GetParam();
    const std::optional<ParsedNumber> number = parseNumber(text);
    ASSERT_TRUE(number.has_value());
    EXPECT_EQ(number->value, std::strtod(text.c_str(), nullptr));
    EXPECT_EQ(number->length, text.size());
}

INSTANTIATE_TEST_SUITE_P(Forms, NumberText,
                         testing::Values("0", "-1", "+7", "2147483647", "2147483648", "-2147483648", "0.1",
                                         "-.5", "5.", "1e3", "1E-5", "1.5e+300",
                                         "123456789012345678901234567890", "0.1234567890123456789",
                                         "9007199254740993", "1e400", "1e-400", "4.9e-324",
                                         "3.14159265358979323846", "1e99999999999"));

TEST(NumberPrefix, StopsAtTheFirstForeignCharacter) {
    EXPECT_EQ(parseNumberPrefix("12abc")->length, 2u);
    EXPECT_EQ(parseNumberPrefix("1e")->length, 1u);
    EXPECT_EQ(parseNumberPrefix("0xZ")->length, 1u);
    EXPECT_EQ(parseNumberPrefix("-0x10 ")->integer, -16);
    for (const char* text : {"", "-", ".", "e5", "-.", "x1", "+-1"})
        EXPECT_FALSE(parseNumberPrefix(text)) << text;
    EXPECT_FALSE(parseNumberPrefix("2147483648")->isInt);
    EXPECT_TRUE(parseNumberPrefix("-2147483648")->isInt);
    EXPECT_FALSE(parseNumber("1 "));
}

}  // namespace
}  // namespace host::mel
