#include <algorithm>

#include "mel/builtinTables.h"
#include "mel/evaluator.h"
#include "mel/regex.h"

namespace host::mel {

namespace {

using Kind = Value::Kind;

/// Pieces between runs of separator characters; empty ones are skipped.
std::vector<std::string> pieces(std::string_view text, std::string_view separators) {
    std::vector<std::string> result;
    std::size_t start = text.find_first_not_of(separators);
    while (start != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(separators, start), text.size());
        result.emplace_back(text.substr(start, end - start));
        start = text.find_first_not_of(separators, end);
    }
    return result;
}

constexpr const char* kBlanks = " \t\r\n";

/// tokenize(text, [separators,] array): number of pieces. They replace the content of the array.
bool tokenize(BuiltinCall& call) {
    Value* array = call.arrayVariable(call.count - 1, Kind::StringArray);
    if (!array) return false;
    std::vector<std::string> found = pieces(call.text(0), call.count == 3 ? call.text(1) : kBlanks);
    call.result = static_cast<int>(found.size());
    *array = std::move(found);
    return true;
}

bool stringToStringArray(BuiltinCall& call) {
    call.result = pieces(call.text(0), call.text(1));
    return true;
}

bool badExpression(BuiltinCall& call) {
    return call.fail("Invalid regular expression \"" + call.text(0) + "\".");
}

/// match(expression, text): the part that matches, or "".
bool match(BuiltinCall& call) {
    const std::optional<Regex> regex = Regex::compile(call.text(0));
    if (!regex) return badExpression(call);
    const std::string text = call.text(1);
    const auto found = regex->search(text);
    call.result = found ? text.substr(found->first, found->second - found->first) : std::string();
    return true;
}

/// substitute(expression, text, replacement): replaces the first part that matches.
bool substitute(BuiltinCall& call) {
    const std::optional<Regex> regex = Regex::compile(call.text(0));
    if (!regex) return badExpression(call);
    std::string text = call.text(1);
    if (const auto found = regex->search(text))
        text.replace(found->first, found->second - found->first, call.text(2));
    call.result = std::move(text);
    return true;
}

/// substituteAllString(text, part, replacement): plain text. Replaces every occurrence.
bool substituteAllString(BuiltinCall& call) {
    const std::string text = call.text(0);
    const std::string part = call.text(1);
    const std::string replacement = call.text(2);
    std::string result;
    std::size_t at = 0;
    for (std::size_t found = 0; !part.empty() && (found = text.find(part, at)) != std::string::npos;) {
        result.append(text, at, found - at).append(replacement);
        at = found + part.size();
        if (result.size() > call.evaluator.options().sizeLimit) return call.fail("String too long.");
    }
    call.result = result.append(text, at);
    return true;
}

bool gmatch(BuiltinCall& call) {
    call.result = globMatches(call.text(0), call.text(1));
    return true;
}

bool startsWith(BuiltinCall& call) {
    const std::string part = call.text(1);
    call.result = call.text(0).compare(0, part.size(), part) == 0;
    return true;
}

bool endsWith(BuiltinCall& call) {
    const std::string text = call.text(0);
    const std::string part = call.text(1);
    call.result =
        text.size() >= part.size() && text.compare(text.size() - part.size(), part.size(), part) == 0;
    return true;
}

bool strip(BuiltinCall& call) {
    const std::string text = call.text(0);
    const std::size_t start = text.find_first_not_of(kBlanks);
    const std::size_t end = text.find_last_not_of(kBlanks);
    call.result = start == std::string::npos ? std::string() : text.substr(start, end - start + 1);
    return true;
}

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool toUpper(BuiltinCall& call) {
    std::string text = call.text(0);
    std::transform(text.begin(), text.end(), text.begin(), upper);
    call.result = std::move(text);
    return true;
}

bool toLower(BuiltinCall& call) {
    std::string text = call.text(0);
    std::transform(text.begin(), text.end(), text.begin(), lower);
    call.result = std::move(text);
    return true;
}

bool capitalizeString(BuiltinCall& call) {
    std::string text = call.text(0);
    if (!text.empty()) text[0] = upper(text[0]);
    call.result = std::move(text);
    return true;
}

/// substring(text, first, last), counted from 1, both included. Positions outside the text are left out.
bool substring(BuiltinCall& call) {
    const std::string text = call.text(0);
    const int first = std::max(call.argument(1).toInt(), 1);
    const int last = std::min(call.argument(2).toInt(), static_cast<int>(text.size()));
    call.result = first > last ? std::string()
                               : text.substr(static_cast<std::size_t>(first) - 1,
                                             static_cast<std::size_t>(last - first) + 1);
    return true;
}

std::size_t countArgument(BuiltinCall& call, std::size_t length) {
    return std::min(static_cast<std::size_t>(std::max(call.argument(1).toInt(), 0)), length);
}

bool startString(BuiltinCall& call) {
    const std::string text = call.text(0);
    call.result = text.substr(0, countArgument(call, text.size()));
    return true;
}

bool endString(BuiltinCall& call) {
    const std::string text = call.text(0);
    call.result = text.substr(text.size() - countArgument(call, text.size()));
    return true;
}

/// format -stringArg a -stringArg b "^1s and ^2s": puts the arguments in place of their numbers.
bool format(BuiltinCall& call) {
    std::vector<std::string> arguments;
    std::string pattern;
    for (std::size_t i = 0; i < call.count; ++i) {
        const std::string word = call.text(i);
        const bool flag = word == "-stringArg" || word == "-s";
        if (flag && i + 1 < call.count)
            arguments.push_back(call.text(++i));
        else
            pattern = word;
    }
    std::string result;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const bool place = pattern[i] == '^' && i + 2 < pattern.size() && pattern[i + 1] >= '1' &&
                           pattern[i + 1] <= '9' && pattern[i + 2] == 's';
        if (!place) {
            result += pattern[i];
            continue;
        }
        const auto number = static_cast<std::size_t>(pattern[i + 1] - '1');
        if (number < arguments.size()) result += arguments[number];
        i += 2;
    }
    call.result = std::move(result);
    return true;
}

}  // namespace

const std::vector<BuiltinFunction>& stringBuiltins() {
    static const std::vector<BuiltinFunction> kTable = {
        {"tokenize", 2, 3, tokenize},
        {"stringToStringArray", 2, 2, stringToStringArray},
        {"match", 2, 2, match},
        {"substitute", 3, 3, substitute},
        {"substituteAllString", 3, 3, substituteAllString},
        {"gmatch", 2, 2, gmatch},
        {"startsWith", 2, 2, startsWith},
        {"endsWith", 2, 2, endsWith},
        {"strip", 1, 1, strip},
        {"toupper", 1, 1, toUpper},
        {"tolower", 1, 1, toLower},
        {"capitalizeString", 1, 1, capitalizeString},
        {"substring", 3, 3, substring},
        {"startString", 2, 2, startString},
        {"endString", 2, 2, endString},
        {"format", 1, kAnyNumber, format},
    };
    return kTable;
}

}  // namespace host::mel
