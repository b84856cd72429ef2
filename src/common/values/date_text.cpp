#include "oxdm/common/values/date_text.h"

#include <cassert>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "calendar.h"
#include "oxdm/common/values/country.h"

namespace {

bool EqualNoCase(const std::string& a, const char* b, std::size_t length) {
    if (a.size() != length) return false;
    for (std::size_t i = 0; i < length; ++i) {
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i]))) {
            return false;
        }
    }
    return true;
}

// The index of a name typed in full or by its first three letters or more
// ("Jan", "Sept"), among name(first) ... name(last); -1 when it names nothing.
int FindName(const std::string& word, const char* (*name)(int), int first, int last) {
    if (word.size() < 3) return -1;
    for (int i = first; i <= last; ++i) {
        const std::size_t length = std::strlen(name(i));
        if (word.size() <= length && EqualNoCase(word, name(i), word.size())) return i;
    }
    return -1;
}

struct Token {
    bool digits;
    std::string text;
};

// Splits a typed date into runs of digits and runs of letters. Spaces, the
// country's separator, '/', '-', '.' and ',' separate them; any other
// character makes the text no date.
bool Tokenize(const char* text, char separator, std::vector<Token>* tokens) {
    for (const char* p = text; *p != '\0'; ++p) {
        const unsigned char ch = static_cast<unsigned char>(*p);
        const bool digit = std::isdigit(ch) != 0;
        if (digit || std::isalpha(ch)) {
            if (tokens->empty() || tokens->back().digits != digit || p == text ||
                !(std::isalnum(static_cast<unsigned char>(p[-1])))) {
                tokens->push_back(Token{digit, std::string()});
            }
            tokens->back().text += *p;
        } else if (!(ch == ' ' || ch == separator || ch == '/' || ch == '-' || ch == '.' || ch == ',')) {
            return false;
        }
    }
    return true;
}

int Number(const std::string& digits) {
    int n = 0;
    for (char ch : digits) n = n * 10 + (ch - '0');
    return n;
}

// A typed year: four digits as they are, one or two by the country's pivot;
// -1 for any other length.
int TypedYear(const std::string& digits, const x_country_def& country) {
    if (digits.size() == 4) return Number(digits);
    if (digits.size() == 1 || digits.size() == 2) {
        const int yy = Number(digits);
        return yy < country.century_pivot ? 2000 + yy : 1900 + yy;
    }
    return -1;
}

// Month, day and year as typed, before validation; 0 for a part not given.
struct TypedDate {
    int month = 0;
    int day = 0;
    int year = 0;
    bool thisYear = false;  // full date typed without a year
};

bool SmallNumber(const Token& token) { return token.digits && token.text.size() <= 2; }

// Reads the tokens of a date, after any day name, by the parts wanted.
bool ReadTokens(const std::vector<Token>& tokens, xd_date_parts parts, const x_country_def& country,
                TypedDate* out) {
    if (tokens.empty() || tokens.size() > 3) return false;
    // All digits in one run: MMDD, MMDDYY, MMDDYYYY (full); MMDD (month
    // and day); MMYY, MMYYYY (month and year).
    if (tokens.size() == 1) {
        const std::string& d = tokens[0].text;
        if (!tokens[0].digits) return false;
        if (parts == XD_MONTH_YEAR) {
            if (d.size() != 4 && d.size() != 6) return false;
            out->month = Number(d.substr(0, 2));
            out->year = TypedYear(d.substr(2), country);
            return true;
        }
        if (d.size() == 4 || (parts == XD_FULL_DATE && (d.size() == 6 || d.size() == 8))) {
            out->month = Number(d.substr(0, 2));
            out->day = Number(d.substr(2, 2));
            out->thisYear = d.size() == 4 && parts == XD_FULL_DATE;
            if (d.size() > 4) out->year = TypedYear(d.substr(4), country);
            return true;
        }
        return false;
    }
    // The month, by number or by name.
    if (tokens[0].digits) {
        if (!SmallNumber(tokens[0])) return false;
        out->month = Number(tokens[0].text);
    } else {
        out->month = FindName(tokens[0].text, oxvalues::MonthName, 1, 12);
        if (out->month < 1) return false;
    }
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        if (!tokens[i].digits) return false;
    }
    if (parts == XD_MONTH_YEAR) {
        if (tokens.size() != 2) return false;
        out->year = TypedYear(tokens[1].text, country);
        return true;
    }
    if (!SmallNumber(tokens[1])) return false;
    out->day = Number(tokens[1].text);
    if (tokens.size() == 3) {
        if (parts == XD_MONTH_DAY) return false;
        out->year = TypedYear(tokens[2].text, country);
    } else {
        out->thisYear = parts == XD_FULL_DATE;
    }
    return true;
}

}  // namespace

bool xd_leap_year(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

short xd_month_length(int month, int year) {
    assert(month >= 1 && month <= 12);
    static const short kLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && xd_leap_year(year) ? 29 : kLengths[month - 1];
}

bool xd_valid_date(const x_date_def* date) {
    assert(date != nullptr);
    if (date->year == 0 && date->month == 0 && date->day == 0) return true;
    if (date->month < 1 || date->month > 12 || date->year < 0 || date->year > 9999) return false;
    if (date->day == 0) return date->year >= 1;  // month and year
    return date->day >= 1 && date->day <= xd_month_length(date->month, date->year);
}

short xd_alpha_date(const x_date_def* date, char* text, short format, short year, short separator,
                    bool dayOfWeek) {
    assert(date != nullptr && text != nullptr);
    text[0] = '\0';
    const bool null = date->year == 0 && date->month == 0 && date->day == 0;
    if (null || !xd_valid_date(date)) return 0;
    x_country_def country;
    x_get_country_info(&country);
    if (format < 0 || format > 2) format = 0;
    if (year < 0 || year > 2) year = 0;
    const char sep = separator > 0 && separator < 128 ? static_cast<char>(separator) : country.date_separator;
    const bool hasDay = date->day != 0;
    const bool hasYear = date->year != 0 && year != 2;

    std::string out;
    char buffer[16];
    if (dayOfWeek && hasDay && date->year != 0) {
        out += oxvalues::DayName(oxvalues::WeekDayOfDays(oxvalues::DaysFromCivil(date->year, date->month, date->day)));
        out += ", ";
    }
    std::string yearText;
    if (hasYear) {
        std::snprintf(buffer, sizeof buffer, year == 1 ? "%02d" : "%04d", year == 1 ? date->year % 100 : date->year);
        yearText = buffer;
    }
    if (format == 0) {
        std::snprintf(buffer, sizeof buffer, "%02d", date->month);
        out += buffer;
        if (hasDay) {
            std::snprintf(buffer, sizeof buffer, "%c%02d", sep, date->day);
            out += buffer;
        }
        if (hasYear) out += sep + yearText;
    } else {
        const char* name = oxvalues::MonthName(date->month);
        out += format == 1 ? std::string(name, 3) : std::string(name);
        if (hasDay) out += " " + std::to_string(date->day);
        if (hasYear) out += (hasDay ? ", " : " ") + yearText;
    }
    assert(out.size() < XD_DATE_TEXT_SIZE);
    std::memcpy(text, out.c_str(), out.size() + 1);
    return static_cast<short>(out.size());
}

bool xd_parse_date(const char* text, x_date_def* date, xd_date_parts parts) {
    assert(text != nullptr && date != nullptr);
    x_country_def country;
    x_get_country_info(&country);
    std::vector<Token> tokens;
    if (!Tokenize(text, country.date_separator, &tokens)) return false;
    if (tokens.empty()) {
        *date = x_date_def{0, 0, 0};
        return true;
    }
    int weekDay = -1;
    if (parts == XD_FULL_DATE && !tokens[0].digits) {
        weekDay = FindName(tokens[0].text, oxvalues::DayName, 0, 6);
        if (weekDay >= 0) tokens.erase(tokens.begin());
    }
    TypedDate typed;
    if (!ReadTokens(tokens, parts, country, &typed)) return false;
    if (typed.thisYear) {
        long y = 0, m = 0, d = 0;
        oxvalues::Today(&y, &m, &d);
        typed.year = static_cast<int>(y);
    }
    if (typed.year < 0 || typed.month < 1 || typed.month > 12) return false;
    if (parts != XD_MONTH_DAY && typed.year < 1) return false;
    const x_date_def result{static_cast<short>(parts == XD_MONTH_DAY ? 0 : typed.year),
                            static_cast<short>(typed.month),
                            static_cast<short>(parts == XD_MONTH_YEAR ? 0 : typed.day)};
    if (parts != XD_MONTH_YEAR && result.day < 1) return false;
    if (!xd_valid_date(&result)) return false;
    if (weekDay >= 0 &&
        oxvalues::WeekDayOfDays(oxvalues::DaysFromCivil(result.year, result.month, result.day)) != weekDay) {
        return false;
    }
    *date = result;
    return true;
}

short xd_alpha_time(const x_time_def* time, char* text, short option) {
    assert(time != nullptr && text != nullptr);
    text[0] = '\0';
    if (time->hour < 0 || time->hour > 23 || time->minute < 0 || time->minute > 59 || time->second < 0 ||
        time->second > 59) {
        return 0;
    }
    x_country_def country;
    x_get_country_info(&country);
    if (option < 0 || option > 2) option = 0;
    const char sep = country.time_separator;
    const bool seconds = option == 1 || time->second != 0;
    int length = 0;
    if (option == 2) {
        length = std::snprintf(text, XD_TIME_TEXT_SIZE, "%02d%c%02d", time->hour, sep, time->minute);
    } else {
        const int hour12 = time->hour % 12 == 0 ? 12 : time->hour % 12;
        length = std::snprintf(text, XD_TIME_TEXT_SIZE, "%d%c%02d", hour12, sep, time->minute);
    }
    if (seconds) length += std::snprintf(text + length, XD_TIME_TEXT_SIZE - length, "%c%02d", sep, time->second);
    if (option != 2) {
        length += std::snprintf(text + length, XD_TIME_TEXT_SIZE - length, " %s",
                                time->hour < 12 ? country.am : country.pm);
    }
    return static_cast<short>(length);
}

namespace {

// Strips a trailing AM/PM marker ("a", "am", "a.m.", and the country's
// words, in any case) from text; answers 'a', 'p' or 0 for none.
char StripMarker(std::string* text, const x_country_def& country) {
    const std::string am(country.am), pm(country.pm);
    const std::string markers[] = {"a.m.", "p.m.", am, pm, "a", "p"};
    for (const std::string& marker : markers) {
        if (text->size() < marker.size()) continue;
        const std::string tail = text->substr(text->size() - marker.size());
        if (!EqualNoCase(tail, marker.c_str(), marker.size())) continue;
        // The marker must follow the digits, not be part of a word.
        const std::size_t before = text->size() - marker.size();
        if (before > 0 && std::isalpha(static_cast<unsigned char>((*text)[before - 1]))) continue;
        text->resize(before);
        while (!text->empty() && text->back() == ' ') text->pop_back();
        return static_cast<char>(std::tolower(static_cast<unsigned char>(marker[0])));
    }
    return 0;
}

bool AllDigits(const std::string& text) {
    if (text.empty()) return false;
    for (char ch : text) {
        if (!std::isdigit(static_cast<unsigned char>(ch))) return false;
    }
    return true;
}

}  // namespace

bool xd_parse_time(const char* text, x_time_def* time) {
    assert(text != nullptr && time != nullptr);
    x_country_def country;
    x_get_country_info(&country);
    std::string s(text);
    const std::size_t first = s.find_first_not_of(' ');
    if (first == std::string::npos) {
        *time = x_time_def{-1, 0, 0};
        return true;
    }
    s = s.substr(first, s.find_last_not_of(' ') - first + 1);
    const char marker = StripMarker(&s, country);

    // Hours, minutes and seconds, by separators or by position.
    std::vector<std::string> fields;
    if (s.find(country.time_separator) != std::string::npos) {
        std::size_t start = 0;
        for (;;) {
            const std::size_t next = s.find(country.time_separator, start);
            fields.push_back(s.substr(start, next - start));
            if (next == std::string::npos) break;
            start = next + 1;
        }
        if (fields.size() > 3 || fields[0].size() > 2) return false;
        for (std::size_t i = 1; i < fields.size(); ++i) {
            if (fields[i].size() != 2) return false;
        }
    } else {
        const std::size_t n = s.size();
        if (n == 0 || n > 6) return false;
        const std::size_t hourDigits = (n % 2 == 1) ? 1 : 2;
        fields.push_back(s.substr(0, hourDigits));
        for (std::size_t at = hourDigits; at < n; at += 2) fields.push_back(s.substr(at, 2));
    }
    for (const std::string& field : fields) {
        if (!AllDigits(field)) return false;
    }
    int hour = Number(fields[0]);
    const int minute = fields.size() > 1 ? Number(fields[1]) : 0;
    const int second = fields.size() > 2 ? Number(fields[2]) : 0;
    if (minute > 59 || second > 59) return false;
    if (marker != 0) {
        if (hour < 1 || hour > 12) return false;
        hour = (hour % 12) + (marker == 'p' ? 12 : 0);
    } else if (hour > 23) {
        return false;
    }
    *time = x_time_def{static_cast<short>(hour), static_cast<short>(minute), static_cast<short>(second)};
    return true;
}
