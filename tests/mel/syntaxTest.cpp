#include "mel/syntax.h"

#include <gtest/gtest.h>

#include "mel/argumentParser.h"

namespace host::mel {
namespace {

using Words = std::vector<Value>;

ArgumentParseResult parse(const Syntax& syntax, Words&& words) {
    constexpr double kFramesPerSecond = 30.0;
    return parseArguments(syntax, std::move(words), kFramesPerSecond);
}

Syntax exampleSyntax() {
    Syntax syntax;
    syntax.flag("n", "name", {ArgumentType::String})
        .flag("i", "index", {ArgumentType::Int})
        .flag("c", "count", {ArgumentType::Unsigned})
        .flag("t", "tolerance", {ArgumentType::Double})
        .flag("f", "force")
        .flag("on", "switch", {ArgumentType::Boolean})
        .multiUseFlag("w", "weight", {ArgumentType::Int, ArgumentType::Double});
    syntax.objects(ObjectKind::Strings, 0, 3).enableQuery().enableEdit();
    return syntax;
}

TEST(Syntax, RefusesFlagsThatCannotBeTold) {
    Syntax syntax;
    const auto add = [&](const char* shortName, const char* longName, std::size_t arguments) {
        Flag flag;
        flag.shortName = shortName;
        flag.longName = longName;
        flag.arguments.assign(arguments, ArgumentType::Int);
        return syntax.addFlag(flag);
    };
    EXPECT_TRUE(add("-n", "-name", 6));
    EXPECT_FALSE(add("n", "other", 0));
    EXPECT_FALSE(add("o", "name", 0));
    EXPECT_FALSE(add("four", "fourLetters", 0));
    EXPECT_FALSE(add("", "empty", 0));
    EXPECT_FALSE(add("s", "two", 0));
    EXPECT_FALSE(add("m", "many", 7));
    EXPECT_EQ(syntax.flags().size(), 1u);
    EXPECT_EQ(syntax.find("-name"), 0);
    EXPECT_EQ(syntax.find("na"), -1);
    EXPECT_TRUE(syntax.makeMultiUse("-n"));
    EXPECT_FALSE(syntax.makeMultiUse("x"));
}

TEST(ArgumentParser, FindsFlagsAnywhereAmongTheObjects) {
    const Syntax syntax = exampleSyntax();
    const ArgumentParseResult result = parse(syntax, Words{"a", "-w", 3, 0.5, "b", "-name", "-odd", "-i", -4,
                                                           "-weight", "7", 1, "-on", "off", "c", "-f"});
    ASSERT_EQ(result.error, "");
    const ParsedArguments& arguments = result.arguments;
    EXPECT_EQ(arguments.objectNames(), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(arguments.text("-n"), "-odd");
    EXPECT_EQ(arguments.integer("index"), -4);
    EXPECT_EQ(arguments.uses("w"), 2);
    EXPECT_EQ(arguments.values("w", 1), (Words{7, 1.0}));
    EXPECT_TRUE(arguments.values("w", 2).empty());
    EXPECT_TRUE(arguments.isSet("f"));
    EXPECT_TRUE(arguments.isSet("switch"));
    EXPECT_FALSE(arguments.boolean("switch", true));
    EXPECT_EQ(arguments.number("t", 2.5), 2.5);
    EXPECT_EQ(arguments.flagsSet(), 5);
}

TEST(ArgumentParser, SpreadsArraysOverTheWords) {
    Syntax syntax;
    syntax.flag("c", "color", {ArgumentType::Double, ArgumentType::Double, ArgumentType::Double});
    syntax.objects(ObjectKind::Values);
    const ArgumentParseResult result =
        parse(syntax, Words{std::vector<std::string>{"a", "b"}, "-c", std::vector<double>{1, 2, 3}, 4, -0.5});
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(result.arguments.objects(), (Words{"a", "b", 4, -0.5}));
    EXPECT_EQ(result.arguments.values("c"), (Words{1.0, 2.0, 3.0}));
}

TEST(ArgumentParser, TakesNoFlagArgumentsInQueryMode) {
    Syntax syntax = exampleSyntax();
    ArgumentParseResult result = parse(syntax, Words{"-i", "-q", "node"});
    ASSERT_EQ(result.error, "");
    EXPECT_TRUE(result.arguments.isQuery());
    EXPECT_TRUE(result.arguments.isSet("i"));
    EXPECT_TRUE(result.arguments.values("i").empty());
    EXPECT_EQ(result.arguments.objectNames(), std::vector<std::string>{"node"});

    syntax.makeQueryWithArguments("i");
    result = parse(syntax, Words{"-query", "-i", 5, "-t", "node"});
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(result.arguments.integer("i"), 5);
    EXPECT_TRUE(result.arguments.isSet("t"));

    // The argument of a flag is no mode, whatever it looks like.
    EXPECT_FALSE(parse(exampleSyntax(), Words{"-n", "-e", "-i", 2}).arguments.isEdit());
    EXPECT_TRUE(parse(exampleSyntax(), Words{"-edit", "-i", 2}).arguments.isEdit());
}

TEST(ArgumentParser, LetsACommandUseTheLettersOfTheModes) {
    Syntax syntax;
    syntax.flag("e", "every", {ArgumentType::Int});
    syntax.enableEdit();
    const ArgumentParseResult result = parse(syntax, Words{"-e", 3});
    EXPECT_EQ(result.arguments.integer("every"), 3);
    EXPECT_FALSE(result.arguments.isEdit());
}

struct TypeCase {
    ArgumentType type;
    Value word;
    Value value;  // None where the word does not fit
};

class FlagArgument : public testing::TestWithParam<TypeCase> {};

TEST_P(FlagArgument, HasTheTypeOfItsFlagOrIsRefused) {
    Syntax syntax;
    syntax.flag("x", "example", {GetParam().type});
    const ArgumentParseResult result = parse(syntax, Words{"-x", GetParam().word});
    EXPECT_EQ(result.ok(), !GetParam().value.isNone()) << GetParam().word.toString();
    EXPECT_EQ(result.ok() ? result.arguments.values("x")[0] : Value(), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Types, FlagArgument,
    testing::Values(TypeCase{ArgumentType::Int, 3, 3}, TypeCase{ArgumentType::Int, "12", 12},
                    TypeCase{ArgumentType::Int, 4.0, 4}, TypeCase{ArgumentType::Int, 4.5, {}},
                    TypeCase{ArgumentType::Int, "x", {}}, TypeCase{ArgumentType::Int, "3x", {}},
                    TypeCase{ArgumentType::Unsigned, 0, 0}, TypeCase{ArgumentType::Unsigned, -1, {}},
                    TypeCase{ArgumentType::Double, 2, 2.0}, TypeCase{ArgumentType::Double, "-1e-3", -0.001},
                    TypeCase{ArgumentType::Double, "on", {}}, TypeCase{ArgumentType::Double, "1in", {}},
                    TypeCase{ArgumentType::Distance, 3, 3.0}, TypeCase{ArgumentType::Distance, "-2in", -5.08},
                    TypeCase{ArgumentType::Distance, "1deg", {}},
                    TypeCase{ArgumentType::Distance, "infin", {}},
                    TypeCase{ArgumentType::Angle, "45deg", 45.0}, TypeCase{ArgumentType::Angle, "7", 7.0},
                    TypeCase{ArgumentType::Time, "2sec", 60.0}, TypeCase{ArgumentType::Time, "12film", 15.0},
                    TypeCase{ArgumentType::Time, "60fps", {}}, TypeCase{ArgumentType::Boolean, "yes", 1},
                    TypeCase{ArgumentType::Boolean, "true", 1}, TypeCase{ArgumentType::Boolean, "no", 0},
                    TypeCase{ArgumentType::Boolean, 0, 0}, TypeCase{ArgumentType::Boolean, 2, 1},
                    TypeCase{ArgumentType::Boolean, "maybe", {}}, TypeCase{ArgumentType::String, 1.5, "1.5"},
                    TypeCase{ArgumentType::String, "-i", "-i"}));

struct MisfitCase {
    Words words;
    const char* error;
};

class Misfit : public testing::TestWithParam<MisfitCase> {};

TEST_P(Misfit, IsNamedInTheError) {
    EXPECT_EQ(parse(exampleSyntax(), Words(GetParam().words)).error, GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Errors, Misfit,
    testing::Values(MisfitCase{{"-x"}, "Invalid flag '-x'."},
                    MisfitCase{{"-nam", "a"}, "Invalid flag '-nam'."},
                    MisfitCase{{"-n", "a", "-name", "b"}, "Flag '-name' cannot be used more than once."},
                    MisfitCase{{"-i"}, "Flag '-i' must be passed an integer argument."},
                    MisfitCase{{"-w", 1, "a"}, "Flag '-w' must be passed a float argument."},
                    MisfitCase{{"-on", "x"}, "Flag '-on' must be passed a boolean argument."},
                    MisfitCase{{"a", "b", "c", "d"}, "Too many objects or values."},
                    MisfitCase{{"-q", "-e"}, "The query and edit flags cannot be used together."}));

TEST(ArgumentParser, CountsPositionalArgumentsAndObjects) {
    Syntax positional;
    positional.addArgument(ArgumentType::String);
    positional.addArgument(ArgumentType::Int);
    EXPECT_EQ(parse(positional, Words{"a", 2}).arguments.arguments(), (Words{"a", 2}));
    EXPECT_EQ(parse(positional, Words{"a"}).error, "Not enough objects or values.");
    EXPECT_EQ(parse(positional, Words{"a", 2, 3}).error, "Too many objects or values.");
    EXPECT_EQ(parse(positional, Words{"a", "b"}).error, "Argument 'b' must be an integer.");

    Syntax objects;
    objects.objects(ObjectKind::Strings, 2);
    EXPECT_EQ(parse(objects, Words{"a"}).error, "Not enough objects or values.");
    EXPECT_EQ(parse(objects, Words{"a", 5}).arguments.objectNames(), (std::vector<std::string>{"a", "5"}));
}

}  // namespace
}  // namespace host::mel
