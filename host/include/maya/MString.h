#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>
#include <memory>
#include <string>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A text, stored as UTF-8. Lengths and positions are bytes, unless a member says characters.
///
/// Numbers have at most ten significant digits. A whole number has no point, and no exponent below 1e15. A
/// null pointer counts as the empty text. The wide form is made when asWChar is called. So asWChar, unlike
/// other const members, must not be called on one string from two threads.
class OPENMAYA_EXPORT MString {
  public:
    MString();
    MString(const char* text);
    MString(const char* text, int length);
    MString(const wchar_t* text);
    MString(const wchar_t* text, int length);
    MString(const MString& other);
    ~MString();

    MString& operator=(const MString& other);
    MString& operator=(const char* text);
    MString& operator=(double value);

    MString& operator+=(const MString& other);
    MString& operator+=(const char* text);
    MString& operator+=(double value);
    MString& operator+=(int value);
    MString& operator+=(unsigned int value);
    MString& operator+=(float value);
    MString operator+(const MString& other) const;
    MString operator+(const char* text) const;
    MString operator+(double value) const;

    bool operator==(const MString& other) const;
    bool operator==(const char* text) const;
    bool operator!=(const MString& other) const;
    bool operator!=(const char* text) const;

    MStatus set(const char* text);
    MStatus set(const char* text, int length);
    MStatus set(double value);
    /// Fixed-point form with `precision` decimals.
    MStatus set(double value, int precision);
    MStatus setUTF8(const char* text);
    MStatus setWChar(const wchar_t* text);
    MStatus setWChar(const wchar_t* text, int length);
    void clear();

    const char* asChar() const;
    const char* asChar(int& length) const;
    const char* asUTF8() const;
    const char* asUTF8(int& length) const;
    const wchar_t* asWChar() const;
    const wchar_t* asWChar(int& length) const;

    unsigned int length() const;
    unsigned int numChars() const;

    /// Position of the first or last such character; -1 if there is none. The wide forms count characters.
    int index(char character) const;
    int indexW(wchar_t character) const;
    int rindex(char character) const;
    int rindexW(wchar_t character) const;

    /// From `start` to `end`, both included and counted from zero; clipped to the text; empty if reversed.
    MString substring(int start, int end) const;
    MString substringW(int start, int end) const;

    /// The pieces between separators, without empty ones. The content of `pieces` is replaced. Fails for the
    /// empty text.
    MStatus split(char separator, MStringArray& pieces) const;

    /// Only changes the letters A to Z.
    MString& toLowerCase();
    MString& toUpperCase();

    /// The number at the start of the text; 0 if there is none. The tests are true only if the whole text is
    /// a number.
    bool isShort() const;
    short asShort() const;
    bool isInt() const;
    int asInt() const;
    bool isUnsigned() const;
    unsigned int asUnsigned() const;
    bool isFloat() const;
    float asFloat() const;
    bool isDouble() const;
    double asDouble() const;

  private:
    std::string text_;
    mutable std::unique_ptr<std::wstring> wide_;
};

OPENMAYA_EXPORT MString operator+(const char* left, const MString& right);
OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MString& text);

OPENMAYA_MAJOR_NAMESPACE_CLOSE
