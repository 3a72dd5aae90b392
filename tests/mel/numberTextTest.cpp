#include "mel/numberText.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <ostream>
#include <string>

namespace host::mel {
namespace {

struct NumberForm {
    const char* text;
    double value;
};

void PrintTo(const NumberForm& form, std::ostream* out) {
    *out << form.text;
}

constexpr double kInfinite = std::numeric_limits<double>::infinity();

class NumberText : public testing::TestWithParam<NumberForm> {};

TEST_P(NumberText, ReadsAsTheNearestDouble) {
    const std::string text = GetParam().text;
    const std::optional<ParsedNumber> number = parseNumber(text);
    ASSERT_TRUE(number.has_value());
    EXPECT_EQ(number->value, GetParam().value);
    EXPECT_EQ(number->length, text.size());
}

INSTANTIATE_TEST_SUITE_P(
    Forms, NumberText,
    testing::Values(NumberForm{"0", 0}, NumberForm{"-1", -1}, NumberForm{"+7", 7},
                    NumberForm{"2147483647", 2147483647.0}, NumberForm{"2147483648", 2147483648.0},
                    NumberForm{"-2147483648", -2147483648.0}, NumberForm{"0.1", 0.1}, NumberForm{"-.5", -.5},
                    NumberForm{"5.", 5.}, NumberForm{"1e3", 1e3}, NumberForm{"1E-5", 1E-5},
                    NumberForm{"1.5e+300", 1.5e+300},
                    NumberForm{"123456789012345678901234567890", 123456789012345678901234567890.0},
                    NumberForm{"0.1234567890123456789", 0.1234567890123456789},
                    NumberForm{"9007199254740993", 9007199254740993.0}, NumberForm{"4.9e-324", 4.9e-324},
                    NumberForm{"3.14159265358979323846", 3.14159265358979323846},
                    NumberForm{"-1e400", -kInfinite}, NumberForm{"1e-400", 0},
                    NumberForm{"1e99999999999", kInfinite}));

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
