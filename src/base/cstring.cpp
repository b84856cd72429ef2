#include "oxdm/base/cstring.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <ostream>

namespace {

bool IsSpace(char ch) { return std::isspace(static_cast<unsigned char>(ch)) != 0; }
char Lower(char ch) { return static_cast<char>(std::tolower(static_cast<unsigned char>(ch))); }

int Clamp(int value, int low, int high) { return std::max(low, std::min(value, high)); }

}  // namespace

CString::CString(const char* text) : s_(text ? text : "") {}

CString::CString(const char* text, int length) {
    if (text && length > 0) s_.assign(text, static_cast<size_t>(length));
}

CString::CString(char ch, int repeat) {
    if (repeat > 0) s_.assign(static_cast<size_t>(repeat), ch);
}

char CString::GetAt(int index) const {
    if (index < 0 || index >= GetLength()) return '\0';
    return s_[static_cast<size_t>(index)];
}

void CString::SetAt(int index, char ch) {
    if (index >= 0 && index < GetLength()) s_[static_cast<size_t>(index)] = ch;
}

int CString::Compare(const char* other) const {
    int r = std::strcmp(s_.c_str(), other ? other : "");
    return r < 0 ? -1 : (r > 0 ? 1 : 0);
}

int CString::CompareNoCase(const char* other) const {
    const char* a = s_.c_str();
    const char* b = other ? other : "";
    for (;; ++a, ++b) {
        char ca = Lower(*a), cb = Lower(*b);
        if (ca != cb) return static_cast<unsigned char>(ca) < static_cast<unsigned char>(cb) ? -1 : 1;
        if (ca == '\0') return 0;
    }
}

int CString::Find(char ch, int start) const {
    if (start < 0 || start >= GetLength()) return -1;
    auto pos = s_.find(ch, static_cast<size_t>(start));
    return pos == std::string::npos ? -1 : static_cast<int>(pos);
}

int CString::Find(const char* sub, int start) const {
    if (!sub || start < 0 || start > GetLength()) return -1;
    auto pos = s_.find(sub, static_cast<size_t>(start));
    return pos == std::string::npos ? -1 : static_cast<int>(pos);
}

int CString::ReverseFind(char ch) const {
    auto pos = s_.rfind(ch);
    return pos == std::string::npos ? -1 : static_cast<int>(pos);
}

int CString::FindOneOf(const char* chars) const {
    if (!chars) return -1;
    auto pos = s_.find_first_of(chars);
    return pos == std::string::npos ? -1 : static_cast<int>(pos);
}

CString CString::Left(int count) const {
    return CString(s_.substr(0, static_cast<size_t>(Clamp(count, 0, GetLength()))));
}

CString CString::Mid(int first) const { return Mid(first, GetLength()); }

CString CString::Mid(int first, int count) const {
    first = Clamp(first, 0, GetLength());
    count = Clamp(count, 0, GetLength() - first);
    return CString(s_.substr(static_cast<size_t>(first), static_cast<size_t>(count)));
}

CString CString::Right(int count) const {
    count = Clamp(count, 0, GetLength());
    return CString(s_.substr(static_cast<size_t>(GetLength() - count)));
}

CString& CString::MakeUpper() {
    for (char& ch : s_) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    return *this;
}

CString& CString::MakeLower() {
    for (char& ch : s_) ch = Lower(ch);
    return *this;
}

CString& CString::TrimLeft() {
    auto it = std::find_if_not(s_.begin(), s_.end(), IsSpace);
    s_.erase(s_.begin(), it);
    return *this;
}

CString& CString::TrimLeft(char target) {
    s_.erase(0, s_.find_first_not_of(target));
    return *this;
}

CString& CString::TrimLeft(const char* targets) {
    s_.erase(0, s_.find_first_not_of(targets ? targets : ""));
    return *this;
}

CString& CString::TrimRight() {
    auto it = std::find_if_not(s_.rbegin(), s_.rend(), IsSpace);
    s_.erase(it.base(), s_.end());
    return *this;
}

CString& CString::TrimRight(char target) {
    auto pos = s_.find_last_not_of(target);
    s_.erase(pos == std::string::npos ? 0 : pos + 1);
    return *this;
}

CString& CString::TrimRight(const char* targets) {
    auto pos = s_.find_last_not_of(targets ? targets : "");
    s_.erase(pos == std::string::npos ? 0 : pos + 1);
    return *this;
}

int CString::Replace(char from, char to) {
    int n = 0;
    for (char& ch : s_) {
        if (ch == from) { ch = to; ++n; }
    }
    return n;
}

int CString::Replace(const char* from, const char* to) {
    if (!from || !*from) return 0;
    const std::string needle(from), with(to ? to : "");
    int n = 0;
    for (size_t pos = s_.find(needle); pos != std::string::npos; pos = s_.find(needle, pos + with.size())) {
        s_.replace(pos, needle.size(), with);
        ++n;
    }
    return n;
}

int CString::Insert(int index, char ch) {
    s_.insert(static_cast<size_t>(Clamp(index, 0, GetLength())), 1, ch);
    return GetLength();
}

int CString::Insert(int index, const char* text) {
    if (text) s_.insert(static_cast<size_t>(Clamp(index, 0, GetLength())), text);
    return GetLength();
}

int CString::Delete(int index, int count) {
    if (index >= 0 && index < GetLength() && count > 0)
        s_.erase(static_cast<size_t>(index), static_cast<size_t>(count));
    return GetLength();
}

int CString::Remove(char ch) {
    auto it = std::remove(s_.begin(), s_.end(), ch);
    int n = static_cast<int>(s_.end() - it);
    s_.erase(it, s_.end());
    return n;
}

void CString::FormatV(const char* format, va_list args) {
    va_list copy;
    va_copy(copy, args);
    int n = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    if (n < 0) { s_.clear(); return; }
    std::string out(static_cast<size_t>(n) + 1, '\0');
    std::vsnprintf(out.data(), out.size(), format, args);
    out.resize(static_cast<size_t>(n));
    s_ = std::move(out);
}

void CString::Format(const char* format, ...) {
    va_list args;
    va_start(args, format);
    FormatV(format, args);
    va_end(args);
}

void CString::AppendFormat(const char* format, ...) {
    CString tail;
    va_list args;
    va_start(args, format);
    tail.FormatV(format, args);
    va_end(args);
    s_ += tail.s_;
}

CString& CString::operator+=(const char* other) {
    if (other) s_ += other;
    return *this;
}

std::ostream& operator<<(std::ostream& os, const CString& text) { return os << text.str(); }
