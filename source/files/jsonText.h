#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Writing and scanning the text of the data files: target data, weights, regions.
///
/// It looks like JSON, but is not general JSON: one member per line, indented with tabs, a blank after each
/// colon, strings without escapes, numbers as in numberText.h. The scanners also accept other blanks, and
/// skip everything that they do not expect. Text only: no host, no files.

/// Builds the text of a file: a line for each member, and a line for the end of each object. The writer adds
/// commas and tabs.
class JsonWriter {
  public:
    const std::string& text() const { return text_; }
    /// Empties the text, after the owner has written it to a file. So a file of many megabytes need not be in
    /// memory at once.
    void clear() { text_.clear(); }

    /// `{`, the outermost object.
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
    std::string lineStart_ = ",\n";  // start of a member after the first; one tab per open object
    bool isFirst_ = true;            // the innermost object is still empty
};

/// Reads the text of a file from beginning to end. Cost is linear in the length of any text.
class JsonScanner {
  public:
    /// @param text  must outlive the scanner and the quoted texts that it returns
    explicit JsonScanner(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

    /// Goes to the next character of structure: { } [ : or the double quote.
    /// @return this character, or 0 at the end of the text
    char next();

    /// After a double quote: the text up to the next double quote, which is passed, or up to the end of the
    /// text. There are no escapes.
    std::string_view readQuoted();

    /// After a colon: whether a value follows on this line. Read it with one of the functions below. A brace
    /// or a bracket is not a value; leave it to `next`. An opening one may also be on a later line.
    bool hasValue();

    /// After a colon: the text of the value up to the end of the line, without blanks, even those between
    /// quotes. A quoted value ends at its second quote, and the rest of the line is dropped. Otherwise
    /// everything is kept, for example a comma after the value.
    std::string readValue();

    /// After a colon: the number up to the next comma or line end. Blanks in it are ignored. 0 if it is not a
    /// number, infinity if it is too large for a double.
    double readNumberValue();

    /// After "[": the numbers between the commas, up to "]". Blanks and line ends in them are ignored. 0 for
    /// text that is not a number, infinity for a number too large for a double.
    /// @param numbers  replaced
    /// @return false if the text ended before the list
    bool readNumberList(std::vector<double>& numbers);

  private:
    double readListNumber();

    const char* at_;
    const char* end_;
};
