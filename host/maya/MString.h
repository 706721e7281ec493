// The host's string: bytes, no encoding conversion.
#pragma once

#include <maya/MTypes.h>

#include <ostream>
#include <string>

class MStringArray;

class MString {
public:
    MString() = default;
    MString(const char* text) : text_(text ? text : "") {}
    MString(const char* text, int length) : text_(text ? std::string(text, size_t(length)) : std::string()) {}
    MString(const std::string& text) : text_(text) {}

    const char* asChar() const { return text_.c_str(); }
    unsigned int length() const { return unsigned(text_.size()); }
    unsigned int numChars() const { return unsigned(text_.size()); }
    const std::string& str() const { return text_; }

    MString& operator=(const char* text) { text_ = text ? text : ""; return *this; }
    MString& operator+=(const MString& other) { text_ += other.text_; return *this; }
    MString& operator+=(const char* other) { text_ += other ? other : ""; return *this; }
    MString& operator+=(char c) { text_ += c; return *this; }
    MString& operator+=(int value) { text_ += std::to_string(value); return *this; }
    MString& operator+=(unsigned value) { text_ += std::to_string(value); return *this; }
    MString& operator+=(double value);

    bool operator==(const MString& other) const { return text_ == other.text_; }
    bool operator!=(const MString& other) const { return text_ != other.text_; }
    bool operator==(const char* other) const { return text_ == (other ? other : ""); }
    bool operator!=(const char* other) const { return !(*this == other); }
    bool operator<(const MString& other) const { return text_ < other.text_; }
    char operator[](unsigned index) const { return text_[index]; }

    // First and last index of a character, or -1.
    int index(char c) const;
    int rindex(char c) const;
    int indexW(const MString& text) const;
    // Characters start to end, both included.
    MString substring(int start, int end) const;
    MString substringW(int start, int end) const { return substring(start, end); }
    MString toLowerCase() const;
    MString toUpperCase() const;
    MStatus split(char separator, MStringArray& parts) const;

    bool isInt() const;
    bool isDouble() const;
    bool isFloat() const { return isDouble(); }
    int asInt() const;
    double asDouble() const;
    float asFloat() const { return float(asDouble()); }

    MString& set(const char* text) { text_ = text ? text : ""; return *this; }
    MString& set(double value, int precision = 6);
    MString& substitute(const MString& from, const MString& to);

private:
    std::string text_;
};

MString operator+(const MString& a, const MString& b);
MString operator+(const MString& a, const char* b);
MString operator+(const char* a, const MString& b);
std::ostream& operator<<(std::ostream& out, const MString& text);
