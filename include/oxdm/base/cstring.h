#pragma once
// CString: the library's text type, a length-counted string of 8-bit
// characters. It may hold embedded zero bytes; the conversion to
// const char* always yields a zero-terminated buffer.
//
// Positions are int, 0-based. Find answers -1 when there is no match.
// Left, Mid and Right clamp their arguments to the text, as operators of a
// screen expect ("Left(100)" of a short text is the whole text).

#include <compare>
#include <cstdarg>
#include <iosfwd>
#include <string>
#include <string_view>

class CString {
public:
    CString() = default;
    CString(const char* text);  // NOLINT: implicit by design, like the original type
    CString(const char* text, int length);
    CString(char ch, int repeat = 1);
    CString(std::string text) : s_(std::move(text)) {}  // NOLINT
    CString(std::string_view text) : s_(text) {}        // NOLINT

    int GetLength() const { return static_cast<int>(s_.size()); }
    bool IsEmpty() const { return s_.empty(); }
    void Empty() { s_.clear(); }

    char GetAt(int index) const;
    void SetAt(int index, char ch);
    char operator[](int index) const { return GetAt(index); }

    // Ordinal comparison of bytes: <0, 0, >0 as strcmp.
    int Compare(const char* other) const;
    // Comparison that folds ASCII letters to one case first.
    int CompareNoCase(const char* other) const;

    int Find(char ch, int start = 0) const;
    int Find(const char* sub, int start = 0) const;
    int ReverseFind(char ch) const;
    int FindOneOf(const char* chars) const;

    CString Left(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Right(int count) const;

    CString& MakeUpper();
    CString& MakeLower();
    CString& TrimLeft();
    CString& TrimLeft(char target);
    CString& TrimLeft(const char* targets);
    CString& TrimRight();
    CString& TrimRight(char target);
    CString& TrimRight(const char* targets);
    CString& Trim() { return TrimRight().TrimLeft(); }

    // Replaces every occurrence; answers how many were replaced.
    int Replace(char from, char to);
    int Replace(const char* from, const char* to);
    int Insert(int index, char ch);
    int Insert(int index, const char* text);
    int Delete(int index, int count = 1);
    int Remove(char ch);

    // printf semantics.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void FormatV(const char* format, va_list args);
    void AppendFormat(const char* format, ...) __attribute__((format(printf, 2, 3)));

    CString& operator+=(const CString& other) { s_ += other.s_; return *this; }
    CString& operator+=(const char* other);
    CString& operator+=(char ch) { s_ += ch; return *this; }

    operator const char*() const { return s_.c_str(); }  // NOLINT
    const char* c_str() const { return s_.c_str(); }
    const std::string& str() const { return s_; }
    std::string_view view() const { return s_; }

    friend CString operator+(const CString& a, const CString& b) { return CString(a.s_ + b.s_); }
    friend CString operator+(const CString& a, const char* b) { CString r(a); r += b; return r; }
    friend CString operator+(const char* a, const CString& b) { CString r(a); r += b; return r; }
    friend CString operator+(const CString& a, char b) { CString r(a); r += b; return r; }
    friend CString operator+(char a, const CString& b) { return CString(a) + b; }

    friend bool operator==(const CString& a, const CString& b) { return a.s_ == b.s_; }
    friend bool operator==(const CString& a, const char* b) { return a.Compare(b) == 0; }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) { return a.s_ <=> b.s_; }
    friend std::strong_ordering operator<=>(const CString& a, const char* b) { return a.Compare(b) <=> 0; }

private:
    std::string s_;
};

std::ostream& operator<<(std::ostream& os, const CString& text);
