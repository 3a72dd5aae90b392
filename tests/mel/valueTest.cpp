#include "mel/value.h"

#include <gtest/gtest.h>

namespace host::mel {
namespace {

using Kind = Value::Kind;

/// One value of each kind that has a conversion to test.
struct Conversion {
    Value from;
    Kind to;
    Value expected;  // None where MEL does not convert
};

class ValueConversion : public testing::TestWithParam<Conversion> {};

TEST_P(ValueConversion, GivesTheValueOrNothing) {
    const Conversion& conversion = GetParam();
    const std::optional<Value> converted = conversion.from.convertedTo(conversion.to);
    EXPECT_EQ(converted.has_value(), !conversion.expected.isNone());
    EXPECT_EQ(converted.value_or(Value()), conversion.expected);
}

const std::vector<int> kInts = {1, -2};
const std::vector<double> kFloats = {1.9, -2.9};
const std::vector<std::string> kStrings = {"1", "x"};

INSTANTIATE_TEST_SUITE_P(
    Scalars, ValueConversion,
    testing::Values(Conversion{1, Kind::Float, 1.0}, Conversion{1, Kind::String, "1"},
                    Conversion{2, Kind::Vector, Vector{2, 2, 2}}, Conversion{-1.9, Kind::Int, -1},
                    Conversion{1e30, Kind::Int, 2147483647}, Conversion{-1e30, Kind::Int, -2147483647 - 1},
                    Conversion{0.25, Kind::String, "0.25"}, Conversion{"0x10", Kind::Int, 16},
                    Conversion{"1e2m", Kind::Float, 100.0}, Conversion{"\t-3", Kind::Int, -3},
                    Conversion{"", Kind::Float, 0.0}, Conversion{"1 2 3", Kind::Vector, {}},
                    Conversion{Vector{0, 3, 4}, Kind::Float, 5.0},
                    Conversion{Vector{1, 2, 3}, Kind::String, "1 2 3"}, Conversion{{}, Kind::Int, {}},
                    Conversion{{}, Kind::String, {}}, Conversion{1, Kind::Matrix, {}},
                    Conversion{Matrix{1, 1, {2}}, Kind::Float, {}}));

INSTANTIATE_TEST_SUITE_P(
    Arrays, ValueConversion,
    testing::Values(Conversion{kInts, Kind::FloatArray, std::vector<double>{1, -2}},
                    Conversion{kFloats, Kind::IntArray, std::vector<int>{1, -2}},
                    Conversion{kInts, Kind::StringArray, std::vector<std::string>{"1", "-2"}},
                    Conversion{kStrings, Kind::StringArray, kStrings},
                    Conversion{kStrings, Kind::IntArray, {}}, Conversion{kStrings, Kind::FloatArray, {}},
                    Conversion{kInts, Kind::Int, {}}, Conversion{kStrings, Kind::String, {}},
                    Conversion{5, Kind::IntArray, {}},
                    Conversion{{}, Kind::StringArray, std::vector<std::string>()},
                    Conversion{std::vector<double>{1, 2, 3}, Kind::Vector, Vector{1, 2, 3}},
                    Conversion{kFloats, Kind::Vector, {}},
                    Conversion{Vector{1, 2, 3}, Kind::FloatArray, std::vector<double>{1, 2, 3}},
                    Conversion{std::vector<Vector>{{1, 2, 3}}, Kind::StringArray,
                               std::vector<std::string>{"1 2 3"}}));

TEST(Value, SpeaksForTheFirstElementOfAnArray) {
    EXPECT_EQ(Value(kFloats).toFloat(), 1.9);
    EXPECT_EQ(Value(kStrings).toInt(), 1);
    EXPECT_EQ(Value(std::vector<int>()).toInt(), 0);
    EXPECT_EQ(Value(kInts).toString(), "1 -2");
}

TEST(Value, BecomesAnArrayOfWhatItHolds) {
    EXPECT_EQ(Value("a").toStringArray(), std::vector<std::string>{"a"});
    EXPECT_EQ(Value(7).toIntArray(), std::vector<int>{7});
    EXPECT_EQ(Value(Vector{1, 2, 3}).toFloatArray(), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(Value(Matrix{2, 1, {4, 5}}).toFloatArray(), (std::vector<double>{4, 5}));
    EXPECT_TRUE(Value().toStringArray().empty());
    EXPECT_EQ(Value(kStrings).toFloatArray(), (std::vector<double>{1, 0}));
}

TEST(Value, HasElementsBeyondItsEnd) {
    EXPECT_EQ(Value(kInts).element(1), Value(-2));
    EXPECT_EQ(Value(kInts).element(2), Value(0));
    EXPECT_EQ(Value(kStrings).element(9), Value(""));
    EXPECT_EQ(Value(std::vector<Vector>()).element(0), Value(Vector{}));
}

struct Printed {
    double value;
    const char* text;
};

class PrintedFloat : public testing::TestWithParam<Printed> {};

TEST_P(PrintedFloat, HasTenSignificantDigits) {
    EXPECT_EQ(Value(GetParam().value).toString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Floats, PrintedFloat,
                         testing::Values(Printed{0, "0"}, Printed{1, "1"}, Printed{-2.5, "-2.5"},
                                         Printed{1.0 / 3, "0.3333333333"}, Printed{2.0 / 3, "0.6666666667"},
                                         Printed{1234567.891, "1234567.891"}, Printed{1e-5, "1e-05"},
                                         Printed{100000, "100000"}, Printed{4294967296.0, "4294967296"},
                                         Printed{0.1 + 0.2, "0.3"}));

}  // namespace
}  // namespace host::mel
