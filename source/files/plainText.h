#pragma once

#include <cstddef>
#include <string_view>

/// Plain text of the data files: lines of numbers, separated by blanks. Text only: no host, no files.

/// Reads a text line by line.
class LineScanner {
  public:
    /// @param text  must outlive the scanner and the lines that it returns. Byte order marks at the beginning
    ///              are skipped; text that went through several editors may have more than one
    explicit LineScanner(std::string_view text);

    /// Goes to the next line.
    /// @param line  without its line end; blank lines are returned, too
    /// @return false after the last line
    bool next(std::string_view& line);

    /// Number of the last line returned, counted from 1.
    int number() const { return number_; }

  private:
    std::string_view rest_;
    int number_ = 0;
};

/// Whether a line is empty or contains only blanks.
bool isBlankLine(std::string_view line);

/// Reads a line that contains an index and `count` numbers, each after a blank, and nothing else.
/// @param values  has room for `count` numbers
/// @return false for a malformed line, also if the index is not valid or a number is too large for single
///         precision
bool readEntry(std::string_view line, int& index, double* values, std::size_t count);
