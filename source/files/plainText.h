#pragma once

#include <cstddef>
#include <string_view>

/// Plain text of the data files: lines of numbers with blanks between them. Text only: no host, no files.

/// Walks over the lines of a text.
class LineScanner {
  public:
    /// @param text  to stay alive as long as the scanner and its lines. Byte order marks that it begins with
    ///              are passed over: text that goes through several editors may get more than one
    explicit LineScanner(std::string_view text);

    /// Goes to the next line.
    /// @param line  without its end; blank lines are given, too
    /// @return false behind the last line
    bool next(std::string_view& line);

    /// Number of the last line given, counted from 1.
    int number() const { return number_; }

  private:
    std::string_view rest_;
    int number_ = 0;
};

/// Whether nothing stands in a line.
bool isBlankLine(std::string_view line);

/// Reads a line that holds an index and numbers, each behind a blank, and nothing else.
/// @param values  room for `count` numbers
/// @return false for a malformed line, which includes an index that is none and a number beyond single
///         precision
bool readEntry(std::string_view line, int& index, double* values, std::size_t count);
