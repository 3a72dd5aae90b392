// Built twice: with <charconv> where the library has it, and with streams in its place.

#include "files/numberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <ios>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string written(double value) {
    char text[kNumberRoom];
    return {text, writeNumber(text, value)};
}

std::string writtenFixed(double value) {
    char text[kFixedRoom];
    return {text, writeFixed(text, value)};
}

/// What every file was written with before: a stream as it comes.
std::string streamed(double value, std::ios_base::fmtflags form = {}) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.setf(form, std::ios_base::floatfield);
    stream << value;
    return stream.str();
}

/// Numbers where formatting goes wrong first: halves at the last digit, steps between the two forms, limits.
std::vector<double> trickyNumbers() {
    using Limits = std::numeric_limits<double>;
    std::vector<double> values{0.0, Limits::max(), Limits::infinity(), Limits::quiet_NaN(), 1.0 / 3.0};
    for (int exponent = -320; exponent <= 308; ++exponent) {
        for (const double digits : {1.0, 1.000005, 9.999995, 9.9999949999, 1.2345650000000001})
            values.push_back(digits * std::pow(10.0, exponent));
    }
    for (int k = 0; k < 2000; ++k)
        values.push_back((100000.0 + k) + 0.5);
    return values;
}

TEST(NumberText, IsTheTextOfAStream) {
    std::mt19937_64 random(7);
    std::vector<double> values = trickyNumbers();
    for (int k = 0; k < 100000; ++k) {
        const std::uint64_t bits = random();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        values.push_back(value);  // of any size
        values.push_back(static_cast<double>(static_cast<std::int64_t>(bits % 2000001) - 1000000) / 1000.0);
    }
    for (const double value : values) {
        ASSERT_EQ(written(value), streamed(value));
        ASSERT_EQ(written(-value), streamed(-value));
        ASSERT_EQ(writtenFixed(value), streamed(value, std::ios_base::fixed));
        ASSERT_EQ(writtenFixed(-value), streamed(-value, std::ios_base::fixed));
    }
}

TEST(NumberText, ReadsBackTheSameText) {
    for (const double value : trickyNumbers()) {
        double back = 0.0;
        const std::string text = written(value);
        if (!std::isfinite(value)) {
            EXPECT_EQ(readNumber(text, back), 0U) << text;
            EXPECT_EQ(back, 0.0);
        } else if (std::isnormal(value) || value == 0.0) {
            EXPECT_EQ(readNumber(text, back), text.size());
            EXPECT_EQ(written(back), text);
        }
    }
}

/// What is read of a text: as a number, as an index, and the characters that the number took.
std::string readings(const char* text) {
    double number = 8.0;
    int index = 8;
    const std::size_t used = readNumber(text, number);
    readIndex(text, index);
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << number << ' ' << index << ' ' << used;
    return out.str();
}

TEST(NumberText, ReadsWhatATextBeginsWith) {
    EXPECT_EQ(readings("12"), "12 12 2");
    EXPECT_EQ(readings(" \t\r\n-3.5,"), "-3.5 -1 8");
    EXPECT_EQ(readings("+7]"), "7 7 2");
    EXPECT_EQ(readings(".5"), "0.5 0 2");
    EXPECT_EQ(readings("5."), "5 5 2");
    EXPECT_EQ(readings("1e3x"), "1000 1 3");
    EXPECT_EQ(readings("1e"), "1 1 1");
    EXPECT_EQ(readings("2E+"), "2 2 1");
    EXPECT_EQ(readings("1.2.3"), "1.2 1 3");
    EXPECT_EQ(readings("0x1F"), "0 0 1");
    EXPECT_EQ(readings("2147483647"), "2.14748e+09 2147483647 10");
    EXPECT_EQ(readings("2147483648"), "2.14748e+09 -1 10");
    EXPECT_EQ(readings("-99999999999"), "-1e+11 -1 12");
    for (const char* text : {"", "  ", "-", "+-1", ".", "nan", "-inf", "e5", "\"1\""})
        EXPECT_EQ(readings(text), "0 0 0") << text;
}

TEST(NumberText, TellsTheTooLargeFromTheTooSmall) {
    const std::string zeros(400, '0');
    const auto number = [](const std::string& text) {
        double value = 8.0;
        EXPECT_EQ(readNumber(text, value), text.size()) << text;
        return value;
    };
    for (const std::string& text :
         {std::string("1e999"), "1" + zeros, "1" + zeros + "e-9", "0." + zeros + "1e999",
          std::string("1e99999999999999999999"), std::string("1.5E+309")}) {
        EXPECT_EQ(number(text), HUGE_VAL) << text;
        EXPECT_EQ(number("-" + text), -HUGE_VAL) << text;
    }
    for (const std::string& text :
         {std::string("1e-999"), "0." + zeros + "1", "0." + zeros + "1e9", "1" + zeros + "e-999",
          std::string("1e-99999999999999999999"), std::string("0e999"), std::string("0.0e-999")})
        EXPECT_EQ(number(text), 0.0) << text;
    EXPECT_EQ(number("1" + zeros + "e-400"), 1.0);
    EXPECT_TRUE(fitsSingle(-3.4e38));
    EXPECT_FALSE(fitsSingle(3.5e38));
    EXPECT_FALSE(fitsSingle(-HUGE_VAL));
}

}  // namespace
