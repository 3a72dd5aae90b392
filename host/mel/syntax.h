#pragma once

#include <climits>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace host::mel {

class ParsedArguments;

/// What a flag or a positional argument takes. Distances, angles and times are numbers, which may be given as
/// texts with a unit. Selection items are strings.
enum class ArgumentType { Boolean, Int, Unsigned, Double, Distance, Angle, Time, String };

/// One flag of a command. Names are without leading dash.
struct Flag {
    std::string shortName;
    std::string longName;
    std::vector<ArgumentType> arguments;  ///< at most six; none for a plain switch
    bool multiUse = false;
    bool queryable = true;            ///< allowed with -query (if the command has query mode at all)
    bool editable = true;             ///< allowed with -edit
    bool queryWithArguments = false;  ///< takes its arguments in query mode too
};

/// What a command does with the words that are neither flags nor their arguments.
enum class ObjectKind {
    None,     ///< none are allowed (except positional arguments)
    Strings,  ///< names: every word as text
    Values,   ///< words of any type, unchanged (setAttr, move)
};

/// What is allowed on a command line; `parseArguments` parses by it.
///
/// A command has positional arguments or objects, not both.
class Syntax {
  public:
    /// Adds a flag. A leading dash of either name is dropped. False, and nothing is added, if the short name
    /// does not have 1 to 3 characters, the long name has fewer than 4, one of them is taken, or there are
    /// more than six arguments.
    bool addFlag(Flag flag);
    /// Shorthand for chains in tables: `syntax.flag("n", "name", {ArgumentType::String}).flag(...)`. The
    /// names must be valid. A few flags of the host have no long name, which is then empty.
    Syntax& flag(std::string_view shortName, std::string_view longName,
                 std::vector<ArgumentType> arguments = {});
    Syntax& multiUseFlag(std::string_view shortName, std::string_view longName,
                         std::vector<ArgumentType> arguments = {});
    /// Changes a flag that was added before; false if there is none of that name.
    bool makeMultiUse(std::string_view name);
    bool makeQueryWithArguments(std::string_view name);

    void addArgument(ArgumentType type) { arguments_.push_back(type); }
    /// @param maximum  INT_MAX for any number
    Syntax& objects(ObjectKind kind, int minimum = 0, int maximum = INT_MAX);
    /// For a command that takes texts as values.
    /// @param isNext  whether the next object is such a text, judged by what was parsed before it; then it is
    ///                one even if it looks like a flag
    Syntax& textsFollow(std::function<bool(const ParsedArguments&)> isNext);
    /// Accept -q/-query and -e/-edit.
    Syntax& enableQuery(bool on = true);
    Syntax& enableEdit(bool on = true);

    const std::vector<Flag>& flags() const { return flags_; }
    const std::vector<ArgumentType>& arguments() const { return arguments_; }
    ObjectKind objectKind() const { return objectKind_; }
    int minimumObjects() const { return minimumObjects_; }
    int maximumObjects() const { return maximumObjects_; }
    /// Empty for a command without such texts.
    const std::function<bool(const ParsedArguments&)>& isTextNext() const { return isTextNext_; }
    bool hasQuery() const { return query_; }
    bool hasEdit() const { return edit_; }

    /// Index into `flags()` of a short or long name, with or without dash; -1 if there is none. Names must
    /// match exactly.
    int find(std::string_view name) const;

  private:
    std::vector<Flag> flags_;
    std::vector<ArgumentType> arguments_;
    ObjectKind objectKind_ = ObjectKind::None;
    int minimumObjects_ = 0;
    int maximumObjects_ = INT_MAX;
    std::function<bool(const ParsedArguments&)> isTextNext_;
    bool query_ = false;
    bool edit_ = false;
};

}  // namespace host::mel
