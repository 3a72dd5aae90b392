#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The text of the data files (target data, weights, regions) and the scanners that read it back.
///
/// It looks like JSON and is no general JSON: one member a line, indented with tabs, a blank after
/// each colon, strings without escapes, numbers as in numberText.h. The scanners take this layout
/// with other blanks, too; whatever they do not expect they pass over. Text only: no host, no
/// files.

/// Puts together the text of a file: a line for each member, and one for the end of each object. Commas and
/// tabs are the writer's own.
class JsonWriter {
  public:
    const std::string& text() const { return text_; }
    /// Starts anew with empty text, for an owner that has put the text in a file: a file of many
    /// megabytes need not be in memory at once.
    void clear() { text_.clear(); }

    /// `{`: the object around the whole.
    void openObject();
    /// `"key": {`
    void openObject(std::string_view key);
    void openObject(int index);
    /// `}` of the innermost object.
    void closeObject();

    /// `"key": "value"`. Both strings are empty afterwards.
    void writeStringMember(std::string&& key, std::string&& value);
    /// `"index": value`
    void writeIndexValue(int index, double value);
    /// `"index": [x, y, z]`
    void writeIndexPoint(int index, const double (&point)[3]);

  private:
    void startLine();

    std::string text_;
    std::string lineStart_ = ",\n";  // of a member behind another one: with a tab for each open object
    bool isFirst_ = true;            // nothing stands in the innermost object yet
};

/// Walks over the text of a file from front to back. Cost is linear in the text, whatever it holds.
class JsonScanner {
  public:
    /// @param text  to stay alive as long as the scanner and the quoted texts it gives
    explicit JsonScanner(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

    /// Passes to the next character that matters, one of { } [ : and the double quote.
    /// @return this character, or 0 at the end of the text
    char next();

    /// After a double quote: the text up to the next one, which is passed; there are no escapes. Up
    /// to the end when there is none.
    std::string_view readQuoted();

    /// After a colon: whether a value follows on this line, to be read with one of the calls below.
    /// A brace or a bracket does not: it is left for `next`, which takes one that opens on a line of its
    /// own, too.
    bool hasValue();

    /// After a colon: the value text up to the end of the line, without its blanks, even those
    /// between quotes. A quoted value ends at its second quote, and the rest of the line is
    /// dropped; everything else is kept, such as a comma after a value without quotes.
    std::string readValue();

    /// After a colon: the number up to the next comma or line end, blanks in it dropped; 0 when it
    /// is none, infinity beyond what a double can hold.
    double readNumberValue();

    /// After "[": the numbers between the commas up to "]", blanks and line ends in them dropped; 0
    /// for what is no number, infinity for one beyond what a double can hold.
    /// @param numbers  replaced
    /// @return false when the text ended before the list
    bool readNumberList(std::vector<double>& numbers);

  private:
    double readListNumber();

    const char* at_;
    const char* end_;
};
