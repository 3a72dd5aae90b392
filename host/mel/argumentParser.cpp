#include "mel/argumentParser.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "mel/numberText.h"
#include "text/units.h"

namespace host::mel {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

std::optional<Value> toBoolean(const Value& word) {
    if (word.isNumber()) return Value(word.toBool());
    const std::string* text = word.getIf<std::string>();
    if (!text) return std::nullopt;
    for (const char* name : {"on", "true", "yes", "1"})
        if (*text == name) return Value(1);
    for (const char* name : {"off", "false", "no", "0"})
        if (*text == name) return Value(0);
    return std::nullopt;
}

/// Numbers may be given as text: function syntax and composed arguments quote them.
std::optional<Value> toNumber(const Value& word) {
    if (word.isNumber()) return word;
    const std::string* text = word.getIf<std::string>();
    const std::optional<ParsedNumber> number = text ? parseNumber(*text) : std::nullopt;
    if (!number) return std::nullopt;
    return number->isInt ? Value(number->integer) : Value(number->value);
}

std::optional<Value> toWholeNumber(const Value& word, bool negativeAllowed) {
    const std::optional<Value> number = toNumber(word);
    if (!number || number->toFloat() != std::floor(number->toFloat())) return std::nullopt;
    if (!negativeAllowed && number->toFloat() < 0) return std::nullopt;
    if (!fitsInt(number->toFloat())) return std::nullopt;
    return Value(number->toInt());
}

std::optional<Value> toType(const Value& word, ArgumentType type, double framesPerSecond) {
    switch (type) {
        case ArgumentType::Boolean:
            return toBoolean(word);
        case ArgumentType::Int:
            return toWholeNumber(word, true);
        case ArgumentType::Unsigned:
            return toWholeNumber(word, false);
        case ArgumentType::Double:
        case ArgumentType::Distance:
        case ArgumentType::Angle:
        case ArgumentType::Time: {
            const std::optional<double> number = numberOf(word, type, framesPerSecond);
            return number ? std::optional<Value>(*number) : std::nullopt;
        }
        case ArgumentType::String:
            return Value(word.toString());
    }
    return std::nullopt;
}

/// Whether a word is a number that is too large for the integer type of the argument.
bool isTooLarge(const Value& word, ArgumentType type) {
    const std::optional<Value> number = toNumber(word);
    return (type == ArgumentType::Int || type == ArgumentType::Unsigned) && number &&
           !fitsInt(number->toFloat());
}

const char* typePhrase(ArgumentType type) {
    switch (type) {
        case ArgumentType::Boolean:
            return "a boolean";
        case ArgumentType::Int:
            return "an integer";
        case ArgumentType::Unsigned:
            return "an unsigned integer";
        case ArgumentType::Double:
            return "a float";
        case ArgumentType::Distance:
            return "a distance";
        case ArgumentType::Angle:
            return "an angle";
        case ArgumentType::Time:
            return "a time";
        case ArgumentType::String:
            return "a string";
    }
    return "";
}

bool isModeFlag(const Syntax& syntax, const std::string& word, bool query) {
    if (!(query ? syntax.hasQuery() : syntax.hasEdit())) return false;
    // A command may use the short letter for a flag of its own.
    if (syntax.find(word) >= 0) return false;
    return query ? word == "-q" || word == "-query" : word == "-e" || word == "-edit";
}

/// Replaces array words by their elements, so that a list variable may be used instead of several words.
/// @param hasEmptyList  set if a word is an array without elements
std::vector<Value> flattened(std::vector<Value>&& words, bool& hasEmptyList) {
    std::size_t total = words.size();
    bool anyArray = false;
    for (const Value& word : words) {
        if (!word.isArray()) continue;
        anyArray = true;
        hasEmptyList = hasEmptyList || word.size() == 0;
        total += word.size() - 1;
    }
    if (!anyArray) return std::move(words);
    std::vector<Value> flat;
    flat.reserve(total);
    for (Value& word : words) {
        if (word.isArray())
            for (std::size_t i = 0; i < word.size(); ++i)
                flat.push_back(word.element(i));
        else
            flat.push_back(std::move(word));
    }
    return flat;
}

}  // namespace

bool looksLikeFlag(const Value& word) {
    if (word.isPlainText()) return false;
    const std::string* text = word.getIf<std::string>();
    return text && text->size() > 1 && (*text)[0] == '-' && isLetter((*text)[1]);
}

/// Fills a ParsedArguments word by word. The first word that does not fit ends it.
///
/// The objects stay in the list of words: each moves to the end of those before it. So a million of them take
/// no second list.
class ArgumentParser {
  public:
    ArgumentParser(const Syntax& syntax, std::vector<Value>&& words, double framesPerSecond)
        : syntax_(syntax), framesPerSecond_(framesPerSecond), parsed_(syntax) {
        words_ = flattened(std::move(words), parsed_.hasEmptyList_);
    }

    ArgumentParseResult run() {
        findModes();
        while (error_.empty() && at_ < words_.size()) {
            if (looksLikeFlag(words_[at_]) && !isValue(words_[at_]))
                takeFlag();
            else
                takeObject();
        }
        words_.resize(objectCount_);
        parsed_.objects_ = std::move(words_);
        if (error_.empty()) checkCounts();
        return {std::move(parsed_), std::move(error_)};
    }

  private:
    /// The mode decides which flags have arguments, so it must be known before the first flag is read. It is
    /// searched among the words that do not belong to a flag: with -query, flags have none.
    void findModes() {
        for (std::size_t i = 0; i < words_.size(); ++i) {
            if (!looksLikeFlag(words_[i])) continue;
            const std::string& text = *words_[i].getIf<std::string>();
            parsed_.query_ = parsed_.query_ || isModeFlag(syntax_, text, true);
            parsed_.edit_ = parsed_.edit_ || isModeFlag(syntax_, text, false);
            const int flag = syntax_.find(text);
            if (flag >= 0 && !parsed_.query_) i += argumentWordsAfter(i, flag);
        }
        if (parsed_.query_ && parsed_.edit_) error_ = "The query and edit flags cannot be used together.";
    }

    /// Number of words that the flag at `i` takes if it has arguments. A following -query does not count.
    std::size_t argumentWordsAfter(std::size_t i, int flag) const {
        const std::size_t count = syntax_.flags()[static_cast<std::size_t>(flag)].arguments.size();
        for (std::size_t k = 1; k <= count && i + k < words_.size(); ++k)
            if (looksLikeFlag(words_[i + k]) &&
                isModeFlag(syntax_, *words_[i + k].getIf<std::string>(), true))
                return k - 1;
        return count;
    }

    /// Whether a word that looks like a flag is a value: a text where one is expected, or a number.
    bool isValue(const Value& word) {
        if (syntax_.isTextNext() && isTextNext()) return true;
        const std::string& text = *word.getIf<std::string>();
        const bool isNumber = text == "-inf" || text == "-nan";
        return isNumber && syntax_.objectKind() == ObjectKind::Values && syntax_.find(text) < 0;
    }

    /// Asks the command, which judges by the objects before. Their copies are replaced in the end.
    bool isTextNext() {
        std::vector<Value>& copies = parsed_.objects_;
        while (copies.size() < objectCount_)
            copies.push_back(words_[copies.size()]);
        return syntax_.isTextNext()(parsed_);
    }

    void takeFlag() {
        const std::string& text = *words_[at_].getIf<std::string>();
        if (isModeFlag(syntax_, text, true) || isModeFlag(syntax_, text, false)) {
            ++at_;
            return;
        }
        const int index = syntax_.find(text);
        if (index < 0) return fail("Invalid flag '" + text + "'.");
        const Flag& flag = syntax_.flags()[static_cast<std::size_t>(index)];
        std::vector<std::vector<Value>>& uses = parsed_.uses_[static_cast<std::size_t>(index)];
        if (parsed_.query_ && !flag.queryable)
            return fail("Flag '" + text + "' cannot be used in query mode.");
        if (parsed_.edit_ && !flag.editable) return fail("Flag '" + text + "' cannot be used in edit mode.");
        if (!uses.empty() && !flag.multiUse)
            return fail("Flag '" + text + "' cannot be used more than once.");
        ++at_;
        uses.emplace_back();
        if (!parsed_.query_ || flag.queryWithArguments) takeFlagArguments(text, flag, uses.back());
    }

    void takeFlagArguments(const std::string& text, const Flag& flag, std::vector<Value>& values) {
        values.reserve(flag.arguments.size());
        for (const ArgumentType type : flag.arguments) {
            std::optional<Value> value;
            if (at_ < words_.size()) value = toType(words_[at_], type, framesPerSecond_);
            if (!value && at_ < words_.size() && isTooLarge(words_[at_], type))
                return fail("Flag '" + text + "': " + integerTooLarge(words_[at_].toString()));
            if (!value) return fail("Flag '" + text + "' must be passed " + typePhrase(type) + " argument.");
            values.push_back(std::move(*value));
            ++at_;
        }
    }

    void takeObject() {
        Value& word = words_[at_++];
        if (parsed_.arguments_.size() < syntax_.arguments().size()) {
            const ArgumentType type = syntax_.arguments()[parsed_.arguments_.size()];
            std::optional<Value> value = toType(word, type, framesPerSecond_);
            if (!value && isTooLarge(word, type)) return fail(integerTooLarge(word.toString()));
            if (!value) return fail("Argument '" + word.toString() + "' must be " + typePhrase(type) + ".");
            parsed_.arguments_.push_back(std::move(*value));
        } else if (syntax_.objectKind() == ObjectKind::None ||
                   objectCount_ >= static_cast<std::size_t>(syntax_.maximumObjects())) {
            fail("Too many objects or values.");
        } else if (syntax_.objectKind() == ObjectKind::Strings && !word.isString()) {
            keepObject(Value(word.toString()));
        } else {
            keepObject(std::move(word));
        }
    }

    void keepObject(Value&& object) {
        Value& kept = words_[objectCount_++];
        if (&kept != &object) kept = std::move(object);
    }

    void checkCounts() {
        if (parsed_.arguments_.size() < syntax_.arguments().size() && !parsed_.query_)
            return fail("Not enough objects or values.");
        if (parsed_.objects_.size() < static_cast<std::size_t>(syntax_.minimumObjects()))
            fail("Not enough objects or values.");
    }

    void fail(std::string error) { error_ = std::move(error); }

    const Syntax& syntax_;
    double framesPerSecond_;
    std::vector<Value> words_;
    ParsedArguments parsed_;
    std::size_t at_ = 0;
    std::size_t objectCount_ = 0;  // kept at the beginning of the words
    std::string error_;
};

std::optional<double> numberOf(const Value& word, ArgumentType type, double framesPerSecond) {
    if (const std::optional<Value> number = toNumber(word)) return number->toFloat();
    const std::string* text = word.getIf<std::string>();
    if (text == nullptr) return std::nullopt;
    if (type == ArgumentType::Distance) return text::readMeasure(*text, text::Quantity::Length);
    if (type == ArgumentType::Angle) return text::readMeasure(*text, text::Quantity::Angle);
    if (type != ArgumentType::Time) return std::nullopt;
    const std::optional<double> seconds = text::readMeasure(*text, text::Quantity::Time);
    return seconds ? std::optional<double>(*seconds * framesPerSecond) : std::nullopt;
}

ArgumentParseResult parseArguments(const Syntax& syntax, std::vector<Value>&& words, double framesPerSecond) {
    return ArgumentParser(syntax, std::move(words), framesPerSecond).run();
}

int ParsedArguments::uses(std::string_view flag) const {
    const int index = syntax_->find(flag);
    return index < 0 ? 0 : static_cast<int>(uses_[static_cast<std::size_t>(index)].size());
}

const std::vector<Value>& ParsedArguments::values(std::string_view flag, int use) const {
    static const std::vector<Value> kNone;
    const int index = syntax_->find(flag);
    if (index < 0 || use < 0 || use >= uses(flag)) return kNone;
    return uses_[static_cast<std::size_t>(index)][static_cast<std::size_t>(use)];
}

int ParsedArguments::flagsSet() const {
    int count = 0;
    for (const auto& uses : uses_)
        count += uses.empty() ? 0 : 1;
    return count;
}

bool ParsedArguments::boolean(std::string_view flag, bool fallback) const {
    const std::vector<Value>& found = values(flag);
    return found.empty() ? fallback : found[0].toBool();
}

int ParsedArguments::integer(std::string_view flag, int fallback) const {
    const std::vector<Value>& found = values(flag);
    return found.empty() ? fallback : found[0].toInt();
}

double ParsedArguments::number(std::string_view flag, double fallback) const {
    const std::vector<Value>& found = values(flag);
    return found.empty() ? fallback : found[0].toFloat();
}

std::string ParsedArguments::text(std::string_view flag, std::string_view fallback) const {
    const std::vector<Value>& found = values(flag);
    return found.empty() ? std::string(fallback) : found[0].toString();
}

std::vector<std::string> ParsedArguments::objectNames() const {
    std::vector<std::string> names;
    names.reserve(objects_.size());
    for (const Value& object : objects_)
        names.push_back(object.toString());
    return names;
}

}  // namespace host::mel
