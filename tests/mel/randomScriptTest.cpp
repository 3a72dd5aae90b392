// Random scripts against plain C++ that does the same.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>

#include "mel/argumentParser.h"
#include "mel/scriptHost.h"

namespace host::mel::test {
namespace {

class Random {
  public:
    explicit Random(unsigned seed) : generator_(seed) {}
    int below(int limit) { return static_cast<int>(generator_() % static_cast<unsigned>(limit)); }

  private:
    std::mt19937 generator_;
};

/// An int expression: its text with no more parentheses than needed (or some more), and its value.
struct IntExpression {
    std::string text;
    std::int32_t value = 0;
    int level = 9;  // how tightly its outermost operator binds
};

std::int32_t wrapped(std::int64_t value) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

std::string inParentheses(const IntExpression& operand, int atLeast) {
    return operand.level < atLeast ? "(" + operand.text + ")" : operand.text;
}

IntExpression randomExpression(Random& random, int depth);

IntExpression binaryExpression(Random& random, int depth) {
    struct Form {
        const char* sign;
        int level;
    };
    static constexpr Form kForms[] = {{"||", 1}, {"&&", 2}, {"==", 3}, {"!=", 3}, {"<", 4},
                                      {"<=", 4}, {">", 4},  {">=", 4}, {"+", 5},  {"-", 5},
                                      {"*", 6},  {"/", 6},  {"%", 6}};
    const Form& form = kForms[random.below(static_cast<int>(std::size(kForms)))];
    const IntExpression left = randomExpression(random, depth - 1);
    IntExpression right = randomExpression(random, depth - 1);
    const std::string sign = form.sign;
    if ((sign == "/" || sign == "%") && right.value == 0) right = {"7", 7, 9};
    const std::int64_t a = left.value;
    const std::int64_t b = right.value;
    std::int64_t value = 0;
    if (sign == "||") value = a != 0 || b != 0;
    if (sign == "&&") value = a != 0 && b != 0;
    if (sign == "==") value = a == b;
    if (sign == "!=") value = a != b;
    if (sign == "<") value = a < b;
    if (sign == "<=") value = a <= b;
    if (sign == ">") value = a > b;
    if (sign == ">=") value = a >= b;
    if (sign == "+") value = a + b;
    if (sign == "-") value = a - b;
    if (sign == "*") value = a * b;
    if (sign == "/") value = a / b;
    if (sign == "%") value = a % b;
    // Operators of one level group from the left, so only the right operand has to bind tighter.
    const std::string blank = random.below(2) ? " " : "";
    const std::string text =
        inParentheses(left, form.level) + blank + sign + " " + inParentheses(right, form.level + 1);
    return {text, wrapped(value), form.level};
}

IntExpression randomExpression(Random& random, int depth) {
    if (depth == 0 || random.below(8) == 0) {
        const int number = random.below(4) == 0 ? random.below(2'000'000'000) : random.below(5);
        return {std::to_string(number), number, 9};
    }
    switch (random.below(8)) {
        case 0: {
            const IntExpression operand = randomExpression(random, depth - 1);
            return {"- " + inParentheses(operand, 8), wrapped(-std::int64_t{operand.value}), 8};
        }
        case 1: {
            const IntExpression operand = randomExpression(random, depth - 1);
            return {"!" + inParentheses(operand, 8), operand.value == 0, 8};
        }
        case 2: {
            const IntExpression condition = randomExpression(random, depth - 1);
            const IntExpression yes = randomExpression(random, depth - 1);
            const IntExpression no = randomExpression(random, depth - 1);
            return {inParentheses(condition, 1) + " ? " + yes.text + " : " + no.text,
                    condition.value != 0 ? yes.value : no.value, 0};
        }
        default:
            return binaryExpression(random, depth);
    }
}

TEST(RandomScript, EvaluatesIntExpressionsLikeCxx) {
    Random random(11);
    RecordedOutput output;
    EchoCommands commands(output);
    Interpreter interpreter(commands, output);
    for (int round = 0; round < 3000; ++round) {
        const IntExpression expression = randomExpression(random, 5);
        const RunResult result = interpreter.run("int $x = " + expression.text + "; $x;");
        ASSERT_TRUE(result.ok) << result.error.message << ": " << expression.text;
        ASSERT_EQ(result.value, Value(expression.value)) << expression.text;
    }
}

/// One change of an array, as MEL text and on the model.
std::string changeArray(Random& random, std::vector<int>& model) {
    const int value = random.below(10);
    const int count = static_cast<int>(model.size());
    const int index = random.below(count + 3);
    const std::string at = std::to_string(index);
    const std::string number = std::to_string(value);
    switch (random.below(7)) {
        case 0:
            if (index >= count) model.resize(static_cast<std::size_t>(index) + 1);
            model[static_cast<std::size_t>(index)] = value;
            return "$a[" + at + "] = " + number + ";";
        case 1:
            if (index >= count) model.resize(static_cast<std::size_t>(index) + 1);
            model[static_cast<std::size_t>(index)] += value;
            return "$a[" + at + "] += " + number + ";";
        case 2:
            if (index <= count) model.insert(model.begin() + index, value);
            return "intArrayInsertAtIndex(" + at + ", $a, " + number + ");";
        case 3:
            if (index < count) model.erase(model.begin() + index);
            return "intArrayRemoveAtIndex(" + at + ", $a);";
        case 4:
            std::sort(model.begin(), model.end());
            return "$a = sort($a);";
        case 5:
            model.erase(std::remove(model.begin(), model.end(), value), model.end());
            return "$a = intArrayRemove({" + number + "}, $a);";
        default:
            model.push_back(value);
            return "append $a " + number + ";";
    }
}

TEST(RandomScript, ChangesArraysLikeVectors) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        Random random(seed);
        RecordedOutput output;
        EchoCommands commands(output);
        Interpreter interpreter(commands, output);
        std::vector<int> model;
        std::string script = "proc append(int $list[], int $x) { $list[size($list)] = $x; }\nint $a[];\n";
        for (int step = 0; step < 80; ++step)
            script += changeArray(random, model) + "\n";
        ASSERT_TRUE(interpreter.run(script).ok) << script;
        ASSERT_EQ(*interpreter.globalVariable("$a"), Value(model)) << script;
    }
}

TEST(RandomScript, FindsTheSameFlagsInAnyOrder) {
    Syntax syntax;
    syntax.flag("n", "name", {ArgumentType::String})
        .flag("f", "force")
        .flag("i", "index", {ArgumentType::Int});
    syntax.multiUseFlag("p", "pair", {ArgumentType::Double, ArgumentType::Double})
        .objects(ObjectKind::Strings);
    const std::vector<std::vector<Value>> groups = {{"-n", "-f"}, {"-force"}, {"-index", -3}, {"-p", 1, 2},
                                                    {"-p", 1, 2}, {"object"}, {"object"}};
    std::mt19937 generator(3);
    std::vector<std::size_t> order = {0, 1, 2, 3, 4, 5, 6};
    for (int round = 0; round < 200; ++round) {
        std::shuffle(order.begin(), order.end(), generator);
        std::vector<Value> words;
        for (const std::size_t group : order)
            words.insert(words.end(), groups[group].begin(), groups[group].end());
        const ArgumentParseResult result = parseArguments(syntax, std::move(words), 24.0);
        ASSERT_EQ(result.error, "");
        EXPECT_EQ(result.arguments.text("n"), "-f");
        EXPECT_TRUE(result.arguments.isSet("f"));
        EXPECT_EQ(result.arguments.integer("i"), -3);
        EXPECT_EQ(result.arguments.uses("p"), 2);
        EXPECT_EQ(result.arguments.objectNames(), (std::vector<std::string>{"object", "object"}));
    }
}

}  // namespace
}  // namespace host::mel::test
