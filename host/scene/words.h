#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host::scene {

/// One word of a statement, still as it stands in the file.
struct Word {
    enum class Kind : unsigned char {
        End,     ///< there is no word left
        Bare,    ///< a number, a flag, yes, no, ...
        Quoted,  ///< a string in quotation marks, with them
        Sum,     ///< strings joined: ( "a" + "b" ), with the parentheses
        Mark,    ///< one of { } ,
    };
    Kind kind = Kind::End;
    std::string_view raw{};
    bool isDoubleByte = false;  ///< as for the scanner

    bool isEnd() const { return kind == Kind::End; }
    bool isText() const { return kind == Kind::Quoted || kind == Kind::Sum; }
    bool isBare(std::string_view word) const { return kind == Kind::Bare && raw == word; }
    /// A word that begins with a minus sign and a letter.
    bool isFlag() const;
    /// Whether it is one of the words for a switch that is on.
    bool isOn() const;
    /// The word without quotation marks, with escapes resolved and sums joined.
    std::string text() const;
};

/// Goes through the words of one statement.
class WordScanner {
  public:
    /// @param statement     a whole statement, from its keyword to its semicolon
    /// @param isDoubleByte  whether strings are in a double-byte code page
    explicit WordScanner(std::string_view statement, bool isDoubleByte = false);

    Word next();
    /// Where the next word's search begins, in the statement.
    std::size_t offset() const { return static_cast<std::size_t>(at_ - begin_); }
    /// The rest of the statement without its semicolon.
    std::string_view rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }

  private:
    void skipBlanks();
    const char* behindString(const char* quote) const;

    const char* begin_;
    const char* at_;
    const char* end_;
    bool isDoubleByte_;
};

/// A text as a string of a scene file: in quotation marks, with escapes. Nothing in it can end the string. In
/// a double-byte code page that holds for the characters of the page only (fitsDoubleByte).
std::string inQuotes(std::string_view text, bool isDoubleByte = false);

/// Whether each string in a statement consists of characters that a double-byte code page can have.
bool fitsDoubleByte(std::string_view statements);

}  // namespace host::scene
