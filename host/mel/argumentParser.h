#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mel/syntax.h"
#include "mel/value.h"

namespace host::mel {

/// A command line taken apart. Flags are named by their short or long name, with or without dash.
///
/// Values of flags and positional arguments already have their declared type: Boolean, Int and Unsigned are
/// Int values, Double is Float, String is String. Cost of an access: linear in the number of flags of the
/// command. The syntax has to outlive this.
class ParsedArguments {
  public:
    explicit ParsedArguments(const Syntax& syntax) : syntax_(&syntax), uses_(syntax.flags().size()) {}

    bool isQuery() const { return query_; }
    bool isEdit() const { return edit_; }

    bool isSet(std::string_view flag) const { return uses(flag) > 0; }
    int uses(std::string_view flag) const;
    /// Arguments of one use, in the order given; empty when there is no such use (or in query mode).
    const std::vector<Value>& values(std::string_view flag, int use = 0) const;
    /// Number of flags that were set (each once), -query and -edit apart.
    int flagsSet() const;

    /// First argument of the first use, or the fallback when the flag is not set.
    bool boolean(std::string_view flag, bool fallback = false) const;
    int integer(std::string_view flag, int fallback = 0) const;
    double number(std::string_view flag, double fallback = 0) const;
    std::string text(std::string_view flag, std::string_view fallback = {}) const;

    /// The positional arguments, as many as the syntax declares.
    const std::vector<Value>& arguments() const { return arguments_; }
    /// Objects in the order given. Arrays on the command line count as their elements. With
    /// ObjectKind::Strings all are String values, with ObjectKind::Values they are what the script wrote.
    const std::vector<Value>& objects() const { return objects_; }
    std::vector<std::string> objectNames() const;
    /// Whether an array without elements stood among the words: a command may take "these, of which there are
    /// none" for something else than "nothing was said".
    bool hasEmptyList() const { return hasEmptyList_; }

  private:
    friend class ArgumentParser;

    const Syntax* syntax_;
    std::vector<std::vector<std::vector<Value>>> uses_;  // by flag, by use
    std::vector<Value> arguments_;
    std::vector<Value> objects_;
    bool query_ = false;
    bool edit_ = false;
    bool hasEmptyList_ = false;
};

/// `error` is empty when the line fits the syntax; else it is the text to show.
struct ArgumentParseResult {
    ParsedArguments arguments;
    std::string error;

    bool ok() const { return error.empty(); }
};

/// True for a string that stands for a flag where a flag may stand: a dash followed by a letter or
/// underscore.
bool looksLikeFlag(const Value& word);

/// Takes a command line apart; flags may stand before, between and after the objects. Linear in the number of
/// words.
ArgumentParseResult parseArguments(const Syntax& syntax, std::vector<Value>&& words);

}  // namespace host::mel
