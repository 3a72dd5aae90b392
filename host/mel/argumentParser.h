#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mel/syntax.h"
#include "mel/value.h"

namespace host::mel {

/// A parsed command line. Flags are named by their short or long name, with or without dash.
///
/// Values of flags and positional arguments already have their declared type: Boolean, Int and Unsigned are
/// Int values, String is String, all others are Float. Distances are in centimetres, angles in degrees, times
/// in frames. Cost of an access: linear in the number of flags of the
/// command. The syntax must outlive this object.
class ParsedArguments {
  public:
    explicit ParsedArguments(const Syntax& syntax) : syntax_(&syntax), uses_(syntax.flags().size()) {}

    bool isQuery() const { return query_; }
    bool isEdit() const { return edit_; }

    bool isSet(std::string_view flag) const { return uses(flag) > 0; }
    int uses(std::string_view flag) const;
    /// Arguments of one use, in the given order; empty if there is no such use (or in query mode).
    const std::vector<Value>& values(std::string_view flag, int use = 0) const;
    /// Number of different flags that were set, without -query and -edit.
    int flagsSet() const;

    /// First argument of the first use, or the fallback if the flag is not set.
    bool boolean(std::string_view flag, bool fallback = false) const;
    int integer(std::string_view flag, int fallback = 0) const;
    double number(std::string_view flag, double fallback = 0) const;
    std::string text(std::string_view flag, std::string_view fallback = {}) const;

    /// The positional arguments, as many as the syntax declares.
    const std::vector<Value>& arguments() const { return arguments_; }
    /// Objects in the given order. Arrays on the command line count as their elements. With
    /// ObjectKind::Strings all are String values. With ObjectKind::Values they are what the script wrote.
    const std::vector<Value>& objects() const { return objects_; }
    std::vector<std::string> objectNames() const;
    /// Whether one of the words was an array without elements. A command may distinguish an empty list from
    /// no list.
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

/// `error` is empty if the line fits the syntax. Otherwise it is the text to show.
struct ArgumentParseResult {
    ParsedArguments arguments;
    std::string error;

    bool ok() const { return error.empty(); }
};

/// Whether a word looks like a flag: a string that starts with a dash and a letter or underscore.
bool looksLikeFlag(const Value& word);

/// A number as Double, Distance, Angle and Time take it. The last three may have a unit: "1in", "45deg",
/// "2sec".
/// @param framesPerSecond  of the scene, in whose frames times count
/// @return nothing if the word is no number of that type
std::optional<double> numberOf(const Value& word, ArgumentType type, double framesPerSecond);

/// Parses a command line. Flags may be before, between and after the objects. Linear in the number of words.
/// @param framesPerSecond  of the scene, in whose frames times count
ArgumentParseResult parseArguments(const Syntax& syntax, std::vector<Value>&& words, double framesPerSecond);

}  // namespace host::mel
